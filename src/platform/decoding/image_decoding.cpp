#include "platform/decoding/image_decoding.h"

#include "platform/decoding/color_profile.h"
#include "platform/decoding/heif/heif_picture.h"
#include "platform/decoding/image_orientation.h"
#include "platform/decoding/image_wholeness.h"
#include "platform/decoding/unusual_image.h"
#include "platform/images/image_scaling.h"
#include "platform/images/picture_kind.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

namespace zelkam {

namespace {

bool isSound(const QByteArray &data, const QByteArray &format)
{
    if (format == "jpeg")
        return jpegIsWhole(data);
    if (format == "bmp")
        return bmpIsWhole(data);
    if (format == "gif")
        return gifIsWhole(data);
    if (format == "ico")
        return icoIsModest(data);
    return !format.isEmpty();
}

/// A QImage cannot forget its text; so another one takes over the pixels of an image that has some.
QImage withoutMetadata(QImage image)
{
    if (image.textKeys().isEmpty())
        return image;
    auto *const source = new QImage(std::move(image));
    QImage bare(
        source->bits(), source->width(), source->height(), source->bytesPerLine(), source->format(),
        [](void *pixels) { delete static_cast<QImage *>(pixels); }, source);
    bare.setColorTable(source->colorTable());
    bare.setColorSpace(source->colorSpace());
    return bare;
}

/// Whether the image's own size is one to decode; then `wanted` is the size to decode at.
bool choose(QSize own, const ImageTarget &target, QSize &wanted)
{
    const QSize chosen = own.isEmpty() ? QSize() : target(own);
    wanted = chosen.expandedTo({1, 1});
    return chosen.isValid() && qint64(own.width()) * own.height() <= mostStoredPixels;
}

QImage readHeif(const QByteArray &data, const ImageTarget &target, bool hurried)
{
    const auto picture = HeifPicture::open(data);
    QSize wanted;
    if (!picture || !choose(picture->size(), target, wanted))
        return {};
    const auto small = hurried ? picture->thumbnail(wanted) : std::nullopt;
    return (small ? *small : *picture).decode(wanted);
}

QImage readRaster(const QByteArray &data, const QByteArray &format, const ImageTarget &target)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    const auto transformation = exifTransformation(data, format).value_or(reader.transformation());
    // What is read is scaled first and turned then.
    const bool onItsSide = transformation & QImageIOHandler::TransformationRotate90;
    QSize wanted;
    if (!choose(onItsSide ? size.transposed() : size, target, wanted))
        return {};
    // Others would scale without smoothing.
    const QSize read = onItsSide ? wanted.transposed() : wanted;
    if (read != size && format == "jpeg")
        reader.setScaledSize(read);
    auto unusual = readUnusualImage(data, format, read);
    QImage image = unusual ? std::move(*unusual) : reader.read();
    if (image.isNull())
        return {};
    image = transformedImage(withoutMetadata(std::move(image)), transformation);
    return image.size() == wanted ? image : stretchedImage(std::move(image), wanted);
}

} // namespace

std::optional<QImage> decodeImage(const QByteArray &data, const ImageTarget &target, bool hurried)
{
    const QByteArray format = rasterFormat(data);
    if (!isSound(data, format))
        return std::nullopt;
    const bool isHeif = format == "heic" || format == "avif";
    QImage image = isHeif ? readHeif(data, target, hurried) : readRaster(data, format, target);
    return image.isNull() ? std::nullopt : std::optional(imageInSrgb(std::move(image)));
}

} // namespace zelkam
