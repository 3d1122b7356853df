#include "platform/images/image_representation.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <QPainter>
#include <cmath>

namespace zelkam {

namespace {

std::optional<QByteArray> encode(const QImage &image, const char *format, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    if (!writer.write(image))
        return std::nullopt;
    return buffer.data();
}

QImage onWhite(const UIImage &image)
{
    const QImage &pixels = image.toQImage();
    if (!image.hasTransparency())
        return pixels.convertToFormat(QImage::Format_RGB32);
    QImage opaque(pixels.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    opaque.setColorSpace(pixels.colorSpace());
    QPainter painter(&opaque);
    painter.drawImage(QPoint(), pixels);
    return opaque;
}

} // namespace

std::optional<QByteArray> UIImageJPEGRepresentation(const UIImage &image, double compressionQuality)
{
    constexpr int longestEdge = 65535;
    if (image.size().width() > longestEdge || image.size().height() > longestEdge)
        return std::nullopt;
    // Written so that what is no number falls to 0.
    const double quality = compressionQuality > 0.0 ? std::fmin(compressionQuality, 1.0) : 0.0;
    return encode(onWhite(image), "jpeg", int(std::lround(quality * 100)));
}

std::optional<QByteArray> UIImagePNGRepresentation(const UIImage &image)
{
    constexpr int defaultQuality = -1;
    return encode(image.toQImage(), "png", defaultQuality);
}

std::optional<QSize> drawingContextSize(double width, double height)
{
    constexpr double mostPixels = 64.0 * 1024 * 1024; // of four bytes
    constexpr double longestEdge = 1 << 24;
    const double columns = std::ceil(width);
    const double rows = std::ceil(height);
    if (!(columns >= 1 && rows >= 1 && columns <= longestEdge && rows <= longestEdge) ||
        columns * rows > mostPixels)
        return std::nullopt;
    return QSize(int(columns), int(rows));
}

} // namespace zelkam
