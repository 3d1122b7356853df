#include "platform/decoding/image_decoding.h"

#include "platform/decoding/color_profile.h"
#include "platform/decoding/heif/heif_picture.h"
#include "platform/decoding/image_orientation.h"
#include "platform/decoding/unusual_image.h"
#include "platform/images/image_scaling.h"
#include "platform/images/picture_kind.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

namespace zelkam {

namespace {

/// A file in the hands of Qt's readers. Some of them fill what is missing and call it done.
class Source : public QBuffer
{
public:
    explicit Source(const QByteArray &data)
    {
        setData(data);
        open(QIODevice::ReadOnly);
    }

    /// The reader of GIFs takes half a frame for one at the end, and only there.
    bool atEnd() const override { return false; }

    /// Whether all that the last image needed was there.
    bool wasWhole(const QByteArray &format) const
    {
        if (format == "jpeg") // its reader goes back to where the image has ended
            return data().mid(pos() - 2, 2) == "\xff\xd9";
        return format != "bmp" || !m_isShort;
    }

protected:
    qint64 readData(char *to, qint64 size) override
    {
        const qint64 taken = QBuffer::readData(to, size);
        m_isShort = taken < size;
        return taken;
    }

private:
    bool m_isShort = false; ///< of what was asked for last
};

std::optional<QImage> readUnusual(const QByteArray &data, const QByteArray &format, QSize atLeast)
{
    if (format == "jpeg")
        return readCmykJpeg(data, atLeast);
    if (format == "png")
        return readUnusualPng(data);
    return format == "tiff" ? readUnusualTiff(data) : std::nullopt;
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

QImage readRaster(const QByteArray &data, const QByteArray &format, const ImageTarget &target)
{
    Source source(data);
    QImageReader reader(&source, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    const auto transformation = exifTransformation(data, format).value_or(reader.transformation());
    // What is read is scaled first and turned then.
    const bool onItsSide = transformation & QImageIOHandler::TransformationRotate90;
    const QSize wanted = target(onItsSide ? size.transposed() : size);
    if (!wanted.isValid())
        return {};
    // Others would scale without smoothing.
    const QSize read = onItsSide ? wanted.transposed() : wanted;
    if (read != size && format == "jpeg")
        reader.setScaledSize(read);
    auto unusual = readUnusual(data, format, read);
    QImage image = unusual ? std::move(*unusual) : reader.read();
    // The directory of an icon file can name a small image and mean a PNG of any size.
    constexpr QSize largestIcon(1024, 1024);
    const bool isNoIcon = format == "ico" && image.size() != image.size().boundedTo(largestIcon);
    if (image.isNull() || isNoIcon || (!unusual && !source.wasWhole(format)))
        return {};
    image = transformedImage(withoutMetadata(std::move(image)), transformation);
    return image.size() == wanted ? image : stretchedImage(std::move(image), wanted);
}

} // namespace

std::optional<QImage> decodeImage(const QByteArray &data, const ImageTarget &target, bool hurried)
{
    const ImageTarget bounded = [&target](QSize own) {
        const QSize chosen = own.isEmpty() ? QSize() : target(own);
        const bool isTooLarge = qint64(own.width()) * own.height() > mostStoredPixels;
        return chosen.isValid() && !isTooLarge ? chosen.expandedTo({1, 1}) : QSize();
    };
    const QByteArray format = rasterFormat(data);
    QImage image;
    if (format == "heic" || format == "avif")
        image = readHeif(data, bounded, hurried);
    else if (!format.isEmpty())
        image = readRaster(data, format, bounded);
    return image.isNull() ? std::nullopt : std::optional(imageInSrgb(std::move(image)));
}

} // namespace zelkam
