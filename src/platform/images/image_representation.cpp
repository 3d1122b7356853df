#include "platform/images/image_representation.h"

#include "platform/images/jpeg_encoding.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <QPainter>
#include <cmath>

namespace zelkam {

namespace {

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
    return encodeJpeg(onWhite(image), int(std::lround(quality * 100)));
}

std::optional<QByteArray> UIImagePNGRepresentation(const UIImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return QImageWriter(&buffer, "png").write(image.toQImage()) ? std::optional(buffer.data())
                                                                : std::nullopt;
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
