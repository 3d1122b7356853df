#include "toast/toast_shadow.h"

#include <QPainter>

#include <cmath>
#include <vector>

namespace zelkam {

double ToastShadow::extent() const
{
    return radius > 0.0 ? std::ceil(radius * 3.0) : 0.0;
}

QRectF ToastShadow::boundingRect(const QRectF &shape) const
{
    const double reach = extent();
    return shape.translated(offset).adjusted(-reach, -reach, reach, reach);
}

// One pass of a moving average over a line of `count` bytes that lie `step` apart.
static void boxBlur(uchar *line, int count, int step, int width, std::vector<uchar> &copy)
{
    copy.resize(size_t(count));
    for (int i = 0; i < count; ++i)
        copy[size_t(i)] = line[i * step];
    const int before = width / 2;
    const int after = width - 1 - before;
    const auto at = [&](int i) { return i < 0 || i >= count ? 0 : int(copy[size_t(i)]); };
    int sum = 0;
    for (int i = -before; i <= after; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        line[i * step] = uchar((sum + width / 2) / width);
        sum += at(i + after + 1) - at(i - before);
    }
}

// Three box filters in a row come within a few percent of the normal distribution. Their width is
// odd: one of even width would move the picture by half a pixel.
static void gaussianBlur(QImage &mask, double deviation)
{
    const int width = int(std::floor(deviation * 3.0 * std::sqrt(2.0 * M_PI) / 4.0 + 0.5)) | 1;
    std::vector<uchar> copy;
    const int stride = int(mask.bytesPerLine());
    uchar *bits = mask.bits();
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < mask.height(); ++y)
            boxBlur(bits + y * stride, mask.width(), 1, width, copy);
        for (int x = 0; x < mask.width(); ++x)
            boxBlur(bits + x, mask.height(), stride, width, copy);
    }
}

static void drawShape(QPainter &painter, const QRectF &shape, double cornerRadius, QPoint origin,
                      double devicePixelRatio)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.scale(devicePixelRatio, devicePixelRatio);
    painter.translate(-origin);
    painter.drawRoundedRect(shape, cornerRadius, cornerRadius);
}

QImage ToastShadow::render(const QRectF &shape, double cornerRadius, double devicePixelRatio) const
{
    const QRect bounds = boundingRect(shape).toAlignedRect();
    const QSize pixels = (QSizeF(bounds.size()) * devicePixelRatio).toSize();
    QImage mask(pixels, QImage::Format_Alpha8);
    mask.fill(Qt::transparent);
    {
        QPainter painter(&mask);
        drawShape(painter, shape.translated(offset), cornerRadius, bounds.topLeft(),
                  devicePixelRatio);
    }
    if (radius > 0.0)
        gaussianBlur(mask, radius * devicePixelRatio);

    QImage shadow(pixels, QImage::Format_ARGB32_Premultiplied);
    QColor fill = color;
    fill.setAlphaF(float(std::clamp(opacity, 0.0, 1.0)) * color.alphaF());
    shadow.fill(fill);
    QPainter painter(&shadow);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);

    // Nothing below the shape: a translucent bubble keeps the colour that its style gives it.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    drawShape(painter, shape, cornerRadius, bounds.topLeft(), devicePixelRatio);
    painter.end();
    shadow.setDevicePixelRatio(devicePixelRatio);
    return shadow;
}

} // namespace zelkam
