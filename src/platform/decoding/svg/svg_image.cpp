#include "platform/decoding/svg/svg_image.h"

#include "platform/decoding/svg/svg_guard.h"

#include <QColorSpace>
#include <QPainter>
#include <QSvgRenderer>

namespace zelkam {

std::optional<QImage> drawSvg(const QByteArray &data, const ImageTarget &target)
{
    const auto svg = harmlessSvg(data);
    QSvgRenderer renderer;
    if (!svg || !renderer.load(*svg))
        return std::nullopt;
    const QSize unsized(512, 512);
    const QSize own = renderer.defaultSize().isEmpty() ? unsized : renderer.defaultSize();
    const QSize chosen = target(own);
    if (!chosen.isValid())
        return std::nullopt;
    const QSize size = chosen.expandedTo({1, 1});
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return std::nullopt;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    painter.end();
    image.setColorSpace(QColorSpace(QColorSpace::SRgb));
    return image;
}

} // namespace zelkam
