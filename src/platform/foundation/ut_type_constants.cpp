#include "platform/foundation/ut_type_record.h"

namespace zelkam {

namespace {

using Record = UTTypeRecord;

constexpr Record itemRecord{u"public.item", {}, {}};
constexpr Record contentRecord{u"public.content", {}, {}};
constexpr Record dataRecord{u"public.data", {}, {&itemRecord}};
constexpr Record compositeRecord{u"public.composite-content", {}, {&contentRecord}};
constexpr Record directoryRecord{u"public.directory", {}, {&itemRecord}};
constexpr Record folderRecord{u"public.folder", u"inode/directory", {&directoryRecord}};
constexpr Record archiveRecord{u"public.archive", {}, {&dataRecord}};
constexpr Record zipRecord{u"public.zip-archive", u"application/zip", {&archiveRecord}};
constexpr Record imageRecord{u"public.image", {}, {&dataRecord, &contentRecord}};
constexpr Record pngRecord{u"public.png", u"image/png", {&imageRecord}};
constexpr Record jpegRecord{u"public.jpeg", u"image/jpeg", {&imageRecord}};
constexpr Record gifRecord{u"com.compuserve.gif", u"image/gif", {&imageRecord}};
constexpr Record heifStandardRecord{u"public.heif-standard", {}, {&imageRecord}};
constexpr Record heifRecord{u"public.heif", u"image/heif", {&heifStandardRecord}};
constexpr Record heicRecord{u"public.heic", u"image/heic", {&heifStandardRecord}};
constexpr Record avifRecord{u"public.avif", u"image/avif", {&heifStandardRecord}};
constexpr Record textRecord{u"public.text", {}, {&dataRecord, &contentRecord}};
constexpr Record plainTextRecord{u"public.plain-text", u"text/plain", {&textRecord}};
constexpr Record htmlRecord{u"public.html", u"text/html", {&textRecord}};
constexpr Record xmlRecord{u"public.xml", u"application/xml", {&textRecord}};
constexpr Record yamlRecord{u"public.yaml", u"application/x-yaml", {&textRecord}};
constexpr Record jsonRecord{u"public.json", u"application/json", {&textRecord}};
constexpr Record scriptRecord{u"com.netscape.javascript-source", u"text/javascript", {&textRecord}};
constexpr Record svgRecord{u"public.svg-image", u"image/svg+xml", {&imageRecord, &xmlRecord}};
constexpr Record pdfRecord{u"com.adobe.pdf", u"application/pdf", {&dataRecord, &compositeRecord}};
constexpr Record audiovisualRecord{
    u"public.audiovisual-content", {}, {&dataRecord, &contentRecord}};
constexpr Record movieRecord{u"public.movie", {}, {&audiovisualRecord}};
constexpr Record audioRecord{u"public.audio", {}, {&audiovisualRecord}};
constexpr Record mpeg4Record{u"public.mpeg-4", u"video/mp4", {&movieRecord}};
constexpr Record transportRecord{u"public.mpeg-2-transport-stream", u"video/mp2t", {&movieRecord}};
constexpr Record aviRecord{u"public.avi", u"video/x-msvideo", {&movieRecord}};
constexpr Record mp3Record{u"public.mp3", u"audio/mpeg", {&audioRecord}};
constexpr Record oggAudioRecord{u"org.xiph.ogg-audio", u"audio/ogg", {&audioRecord}};
constexpr Record playlistRecord{
    u"public.m3u-playlist", u"application/vnd.apple.mpegurl", {&textRecord}};

constexpr const Record *types[] = {
    &itemRecord,        &contentRecord, &dataRecord,         &compositeRecord, &directoryRecord,
    &folderRecord,      &archiveRecord, &zipRecord,          &imageRecord,     &pngRecord,
    &jpegRecord,        &gifRecord,     &heifStandardRecord, &heifRecord,      &heicRecord,
    &avifRecord,        &textRecord,    &plainTextRecord,    &htmlRecord,      &xmlRecord,
    &yamlRecord,        &jsonRecord,    &scriptRecord,       &svgRecord,       &pdfRecord,
    &audiovisualRecord, &movieRecord,   &audioRecord,        &mpeg4Record,     &transportRecord,
    &aviRecord,         &mp3Record,     &oggAudioRecord,     &playlistRecord,
};

// The database takes both HEIF kinds for one, has Qt's own translation files beside the transport
// stream, and lists several kinds of Ogg, JSON and playlists in no particular order. RFC 9239 gives
// scripts the MIME type that they have here, whatever the age of the database.
constexpr DeclaredExtension extensions[] = {
    {u"heic", &heicRecord},     {u"heif", &heifRecord},    {u"hif", &heifRecord},
    {u"avif", &avifRecord},     {u"ts", &transportRecord}, {u"js", &scriptRecord},
    {u"mjs", &scriptRecord},    {u"json", &jsonRecord},    {u"ogg", &oggAudioRecord},
    {u"m3u8", &playlistRecord},
};

} // namespace

std::span<const UTTypeRecord *const> declaredTypes()
{
    return types;
}

std::span<const DeclaredExtension> declaredExtensions()
{
    return extensions;
}

std::array<const UTTypeRecord *, 2> parentsByMimeName(QStringView mimeName, QStringView genericIcon,
                                                      bool isText, bool isXml, bool isZip)
{
    if (mimeName.startsWith(u"image/"))
        return {&imageRecord, isXml ? &xmlRecord : nullptr};
    if (mimeName.startsWith(u"audio/"))
        return {&audioRecord};
    if (mimeName.startsWith(u"video/"))
        return {&movieRecord};
    // Before the archives: most office documents are zip files, and nobody wants them for that.
    if (genericIcon.startsWith(u"x-office-"))
        return {&dataRecord, &compositeRecord};
    if (isXml)
        return {&xmlRecord};
    if (isText)
        return {&textRecord};
    if (isZip)
        return {&zipRecord};
    if (genericIcon == u"package-x-generic")
        return {&archiveRecord};
    return {&dataRecord};
}

constinit const UTType UTType::item(&itemRecord);
constinit const UTType UTType::content(&contentRecord);
constinit const UTType UTType::data(&dataRecord);
constinit const UTType UTType::compositeContent(&compositeRecord);
constinit const UTType UTType::directory(&directoryRecord);
constinit const UTType UTType::folder(&folderRecord);
constinit const UTType UTType::archive(&archiveRecord);
constinit const UTType UTType::zip(&zipRecord);
constinit const UTType UTType::image(&imageRecord);
constinit const UTType UTType::png(&pngRecord);
constinit const UTType UTType::jpeg(&jpegRecord);
constinit const UTType UTType::gif(&gifRecord);
constinit const UTType UTType::heif(&heifRecord);
constinit const UTType UTType::heic(&heicRecord);
constinit const UTType UTType::svg(&svgRecord);
constinit const UTType UTType::pdf(&pdfRecord);
constinit const UTType UTType::text(&textRecord);
constinit const UTType UTType::plainText(&plainTextRecord);
constinit const UTType UTType::html(&htmlRecord);
constinit const UTType UTType::xml(&xmlRecord);
constinit const UTType UTType::yaml(&yamlRecord);
constinit const UTType UTType::json(&jsonRecord);
constinit const UTType UTType::javaScript(&scriptRecord);
constinit const UTType UTType::audiovisualContent(&audiovisualRecord);
constinit const UTType UTType::movie(&movieRecord);
constinit const UTType UTType::audio(&audioRecord);
constinit const UTType UTType::mpeg4Movie(&mpeg4Record);
constinit const UTType UTType::mpeg2TransportStream(&transportRecord);
constinit const UTType UTType::avi(&aviRecord);
constinit const UTType UTType::mp3(&mp3Record);

} // namespace zelkam
