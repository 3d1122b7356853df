#include "mime/mime_types.h"

#include <QString>
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

constexpr qsizetype maxExtension = 8;
constexpr int slotBits = 9;
constexpr size_t slotCount = size_t(1) << slotBits;

/// Up to eight letters in lower case, each in 16 bits: the first four and the last four, which
/// overlap in a shorter extension. The length stands in the highest byte, which no ASCII letter
/// reaches; an empty slot has a length of 0.
struct Key
{
    std::uint64_t first = 0;
    std::uint64_t last = 0;

    friend constexpr bool operator==(const Key &, const Key &) = default;
};

struct Slot
{
    Key key;
    QStringView mimeType;
};

/// Compilers make one load of this.
constexpr std::uint64_t twoLetters(const char16_t *text)
{
    return std::uint64_t(text[0]) | std::uint64_t(text[1]) << 16;
}

constexpr std::uint64_t fourLetters(const char16_t *text)
{
    return twoLetters(text) | std::uint64_t(text[2]) << 32 | std::uint64_t(text[3]) << 48;
}

constexpr std::uint64_t inEachLetter(std::uint64_t value)
{
    return value * 0x0001000100010001u;
}

/// Four ASCII letters in lower case, without a branch. The sums set the bit above ASCII in what is
/// at least an "A", and in what is beyond a "Z".
constexpr std::uint64_t lowered(std::uint64_t letters)
{
    const std::uint64_t capitals = (letters + inEachLetter(0x80 - 'A')) &
                                   ~(letters + inEachLetter(0x7F - 'Z')) & inEachLetter(0x80);
    return letters | capitals >> 2;
}

/// The key of an empty slot for what is empty, too long or not ASCII.
constexpr Key keyOf(QStringView extension)
{
    const qsizetype size = extension.size();
    if (size == 0 || size > maxExtension)
        return {};
    const char16_t *text = extension.utf16();
    Key key;
    if (size >= 4)
        key = {fourLetters(text), fourLetters(text + size - 4)};
    else if (size >= 2)
        key.first = twoLetters(text) | twoLetters(text + size - 2) << 32;
    else
        key.first = text[0];
    if (((key.first | key.last) & ~inEachLetter(0x7F)) != 0)
        return {};
    return Key{lowered(key.first) | std::uint64_t(size) << 56, lowered(key.last)};
}

constexpr size_t slotOf(const Key &key, std::uint64_t multiplier)
{
    const std::uint64_t both = key.first + key.last * 0x9e3779b97f4a7c15u;
    return static_cast<size_t>(both * multiplier >> (64 - slotBits));
}

/// Whether the multiplier sends each row to a slot of its own.
constexpr bool isPerfect(std::uint64_t multiplier)
{
    std::array<bool, slotCount> taken = {};
    for (const MimeTypesRow &row : rows) {
        bool &slot = taken[slotOf(keyOf(row.extension), multiplier)];
        if (slot)
            return false;
        slot = true;
    }
    return true;
}

// Found by trying. A row that is added and meets another in its slot stops the compiler; then try
// on, for example with odd numbers from a random generator.
constexpr std::uint64_t multiplier = 0x4f460f3c30102e51u;
static_assert(isPerfect(multiplier));

constexpr std::array<Slot, slotCount> table = [] {
    std::array<Slot, slotCount> result = {};
    for (const MimeTypesRow &row : rows) {
        const Key key = keyOf(row.extension);
        result[slotOf(key, multiplier)] = {key, row.mimeType};
    }
    return result;
}();

} // namespace

std::span<const MimeTypesRow> mimeTypes()
{
    return rows;
}

QStringView mimeTypesValue(QStringView extension)
{
    const Key key = keyOf(extension);
    const Slot &slot = table[slotOf(key, multiplier)];
    if (slot.key == key && key != Key())
        return slot.mimeType;
    if (key != Key())
        return {};
    // A letter outside ASCII may have a lower case inside it: the Kelvin sign has.
    const QString text = extension.toString().toLower();
    return text == extension ? QStringView() : mimeTypesValue(text);
}

} // namespace zelkam
