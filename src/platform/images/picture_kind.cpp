#include "platform/images/picture_kind.h"

#include <QByteArrayList>
#include <QtEndian>

namespace zelkam {

namespace {

/// heic or avif, by a file type box of the still-image brands (ISO/IEC 23008-12); else empty.
QByteArray heifFormat(const QByteArray &head)
{
    if (head.size() < 12 || head.mid(4, 4) != "ftyp")
        return {};
    const QByteArray major = head.mid(8, 4);
    static const QByteArrayList coded{"heic", "heix", "heim", "heis"};
    if (major == "avif" || coded.contains(major))
        return major == "avif" ? major : coded.first();
    // The general brands tell nothing about the coding; the compatible ones behind them do.
    if (major != "mif1" && major != "msf1")
        return {};
    const auto boxEnd = qMin<qsizetype>(head.size(), qFromBigEndian<quint32>(head.constData()));
    for (qsizetype at = 16; at + 4 <= boxEnd; at += 4) {
        const QByteArray brand = head.mid(at, 4);
        if (brand == "avif" || coded.contains(brand))
            return brand == "avif" ? brand : coded.first();
    }
    return coded.first();
}

/// Two letters alone would make an image of many a text.
bool isBmp(const QByteArray &head)
{
    return head.size() >= 15 && head.startsWith("BM") && head.mid(6, 4) == QByteArray(4, '\0') &&
           QByteArray("\x0c\x28\x34\x38\x40\x6c\x7c").contains(head.at(14));
}

} // namespace

QByteArray rasterFormat(const QByteArray &head)
{
    if (head.startsWith("\xff\xd8\xff"))
        return "jpeg";
    if (head.startsWith("\x89PNG\r\n\x1a\n"))
        return "png";
    if (head.startsWith("GIF87a") || head.startsWith("GIF89a"))
        return "gif";
    if (isBmp(head))
        return "bmp";
    if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP")
        return "webp";
    if (head.startsWith(QByteArray("II*\0", 4)) || head.startsWith(QByteArray("MM\0*", 4)))
        return "tiff";
    if (head.startsWith(QByteArray("\0\0\1\0", 4)))
        return "ico";
    return heifFormat(head);
}

bool looksLikeSvg(const QByteArray &data)
{
    constexpr qint64 largest = 8LL << 20;
    return data.size() <= largest && data.left(4096).contains("<svg");
}

std::optional<QString> pictureTypeIdentifier(const QByteArray &data)
{
    struct Type
    {
        const char *format;
        const char *identifier;
    };
    static constexpr Type types[] = {
        {"jpeg", "public.jpeg"},          {"png", "public.png"},
        {"gif", "com.compuserve.gif"},    {"bmp", "com.microsoft.bmp"},
        {"webp", "org.webmproject.webp"}, {"tiff", "public.tiff"},
        {"ico", "com.microsoft.ico"},     {"heic", "public.heic"},
        {"avif", "public.avif"},
    };
    const QByteArray format = rasterFormat(data);
    for (const Type &type : types) {
        if (format == type.format)
            return QLatin1String(type.identifier);
    }
    return looksLikeSvg(data) ? std::optional(QStringLiteral("public.svg-image")) : std::nullopt;
}

} // namespace zelkam
