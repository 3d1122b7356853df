#include "platform/images/picture.h"

#include "platform/foundation/regular_file.h"
#include "platform/images/image_decoding.h"
#include "platform/images/svg/svg_image.h"

namespace zelkam {

namespace {

constexpr qint64 largestVectorFile = 4LL << 20;

bool looksLikeSvg(const QByteArray &data)
{
    return data.size() <= largestVectorFile && data.left(4096).contains("<svg");
}

std::optional<UIImage> fromDecoded(const std::optional<QImage> &image)
{
    return image ? UIImage::fromQImage(*image) : std::nullopt;
}

std::optional<UIImage> drawVector(const QByteArray &data, const ImageTarget &target)
{
    return looksLikeSvg(data) ? fromDecoded(drawSvg(data, target)) : std::nullopt;
}

} // namespace

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

std::optional<UIImage> decodePicture(const QByteArray &data)
{
    if (rasterFormat(data).isEmpty())
        return drawVector(data, [](QSize own) { return own; });
    return fromDecoded(decodeImage(data));
}

std::optional<UIImage> decodePicture(const QByteArray &data, QSize stretchedTo)
{
    if (rasterFormat(data).isEmpty())
        return drawVector(data, [stretchedTo](QSize) { return stretchedTo; });
    return fromDecoded(decodeImageTo(data, [stretchedTo](QSize) { return stretchedTo; }));
}

std::optional<UIImage> decodePictureForThumbnail(const QByteArray &data,
                                                 const std::function<QSize(QSize)> &target)
{
    if (rasterFormat(data).isEmpty())
        return drawVector(data, target);
    constexpr bool hurried = true;
    return fromDecoded(decodeImageTo(data, target, hurried));
}

std::optional<QByteArray> readPictureFile(const QString &path)
{
    const auto file = RegularFile::open(path);
    return file && file->size() <= largestPictureFile ? file->readAll() : std::nullopt;
}

} // namespace zelkam
