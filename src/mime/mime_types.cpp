#include "mime/mime_types.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zelkam {

namespace {

constexpr MimeTypesRow rows[] = {
    {u"html", u"text/html"},
    {u"htm", u"text/html"},
    {u"shtml", u"text/html"},
    {u"css", u"text/css"},
    {u"xml", u"text/xml"},
    {u"gif", u"image/gif"},
    {u"jpeg", u"image/jpeg"},
    {u"jpg", u"image/jpeg"},
    {u"js", u"application/javascript"},
    {u"atom", u"application/atom+xml"},
    {u"rss", u"application/rss+xml"},
    {u"mml", u"text/mathml"},
    {u"txt", u"text/plain"},
    {u"jad", u"text/vnd.sun.j2me.app-descriptor"},
    {u"wml", u"text/vnd.wap.wml"},
    {u"htc", u"text/x-component"},
    {u"png", u"image/png"},
    {u"tif", u"image/tiff"},
    {u"tiff", u"image/tiff"},
    {u"wbmp", u"image/vnd.wap.wbmp"},
    {u"ico", u"image/x-icon"},
    {u"jng", u"image/x-jng"},
    {u"bmp", u"image/x-ms-bmp"},
    {u"svg", u"image/svg+xml"},
    {u"svgz", u"image/svg+xml"},
    {u"webp", u"image/webp"},
    {u"woff", u"application/font-woff"},
    {u"jar", u"application/java-archive"},
    {u"war", u"application/java-archive"},
    {u"ear", u"application/java-archive"},
    {u"json", u"application/json"},
    {u"hqx", u"application/mac-binhex40"},
    {u"doc", u"application/msword"},
    {u"pdf", u"application/pdf"},
    {u"ps", u"application/postscript"},
    {u"eps", u"application/postscript"},
    {u"ai", u"application/postscript"},
    {u"rtf", u"application/rtf"},
    {u"m3u8", u"application/vnd.apple.mpegurl"},
    {u"xls", u"application/vnd.ms-excel"},
    {u"eot", u"application/vnd.ms-fontobject"},
    {u"ppt", u"application/vnd.ms-powerpoint"},
    {u"wmlc", u"application/vnd.wap.wmlc"},
    {u"kml", u"application/vnd.google-earth.kml+xml"},
    {u"kmz", u"application/vnd.google-earth.kmz"},
    {u"7z", u"application/x-7z-compressed"},
    {u"cco", u"application/x-cocoa"},
    {u"jardiff", u"application/x-java-archive-diff"},
    {u"jnlp", u"application/x-java-jnlp-file"},
    {u"run", u"application/x-makeself"},
    {u"pl", u"application/x-perl"},
    {u"pm", u"application/x-perl"},
    {u"prc", u"application/x-pilot"},
    {u"pdb", u"application/x-pilot"},
    {u"rar", u"application/x-rar-compressed"},
    {u"rpm", u"application/x-redhat-package-manager"},
    {u"sea", u"application/x-sea"},
    {u"swf", u"application/x-shockwave-flash"},
    {u"sit", u"application/x-stuffit"},
    {u"tcl", u"application/x-tcl"},
    {u"tk", u"application/x-tcl"},
    {u"der", u"application/x-x509-ca-cert"},
    {u"pem", u"application/x-x509-ca-cert"},
    {u"crt", u"application/x-x509-ca-cert"},
    {u"xpi", u"application/x-xpinstall"},
    {u"xhtml", u"application/xhtml+xml"},
    {u"xspf", u"application/xspf+xml"},
    {u"zip", u"application/zip"},
    {u"epub", u"application/epub+zip"},
    {u"docx", u"application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {u"xlsx", u"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {u"pptx", u"application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    {u"mid", u"audio/midi"},
    {u"midi", u"audio/midi"},
    {u"kar", u"audio/midi"},
    {u"mp3", u"audio/mpeg"},
    {u"ogg", u"audio/ogg"},
    {u"m4a", u"audio/x-m4a"},
    {u"ra", u"audio/x-realaudio"},
    {u"3gpp", u"video/3gpp"},
    {u"3gp", u"video/3gpp"},
    {u"ts", u"video/mp2t"},
    {u"mp4", u"video/mp4"},
    {u"mpeg", u"video/mpeg"},
    {u"mpg", u"video/mpeg"},
    {u"mov", u"video/quicktime"},
    {u"webm", u"video/webm"},
    {u"flv", u"video/x-flv"},
    {u"m4v", u"video/x-m4v"},
    {u"mng", u"video/x-mng"},
    {u"asx", u"video/x-ms-asf"},
    {u"asf", u"video/x-ms-asf"},
    {u"wmv", u"video/x-ms-wmv"},
    {u"avi", u"video/x-msvideo"},
};

/// The longest extension that fits a key.
constexpr qsizetype maxExtension = 7;
constexpr int slotBits = 9;
constexpr size_t slotCount = size_t(1) << slotBits;

struct Slot
{
    std::uint64_t key = 0; ///< 0 in an empty slot: no extension has it
    QStringView mimeType;
};

/// The extension as eight bytes, in lower case, behind a 1 that tells the lengths apart; nothing
/// for what is too long or not ASCII.
constexpr std::optional<std::uint64_t> keyOf(QStringView extension)
{
    if (extension.size() > maxExtension)
        return std::nullopt;
    std::uint64_t key = 1;
    unsigned all = 0;
    for (qsizetype i = 0; i < extension.size(); ++i) {
        unsigned code = extension.utf16()[i];
        all |= code;
        code |= code >= 'A' && code <= 'Z' ? 0x20u : 0u;
        key = key << 8 | (code & 0xFFu);
    }
    if (all > 0x7F)
        return std::nullopt;
    return key;
}

constexpr size_t slotOf(std::uint64_t key, std::uint64_t multiplier)
{
    return static_cast<size_t>(key * multiplier >> (64 - slotBits));
}

/// Whether the multiplier sends each row to a slot of its own.
constexpr bool isPerfect(std::uint64_t multiplier)
{
    std::array<bool, slotCount> taken = {};
    for (const MimeTypesRow &row : rows) {
        bool &slot = taken[slotOf(*keyOf(row.extension), multiplier)];
        if (slot)
            return false;
        slot = true;
    }
    return true;
}

// Found by trying. A row that is added and meets another in its slot stops the compiler; then try
// on, for example with odd numbers from a random generator.
constexpr std::uint64_t multiplier = 0x1ad6753917d68e7du;
static_assert(isPerfect(multiplier));

constexpr std::array<Slot, slotCount> table = [] {
    std::array<Slot, slotCount> result = {};
    for (const MimeTypesRow &row : rows) {
        const std::uint64_t key = *keyOf(row.extension);
        result[slotOf(key, multiplier)] = {key, row.mimeType};
    }
    return result;
}();

} // namespace

std::span<const MimeTypesRow> mimeTypes()
{
    return rows;
}

std::optional<QString> mimeTypesValue(QStringView extension)
{
    auto key = keyOf(extension);
    if (!key && extension.size() <= maxExtension) {
        // A letter outside ASCII may have a lower case inside it: the Kelvin sign has.
        const QString lowered = extension.toString().toLower();
        key = keyOf(lowered);
    }
    if (!key)
        return std::nullopt;
    const Slot &slot = table[slotOf(*key, multiplier)];
    if (slot.key != *key || slot.mimeType.isEmpty())
        return std::nullopt;
    return QString::fromRawData(slot.mimeType.data(), slot.mimeType.size());
}

} // namespace zelkam
