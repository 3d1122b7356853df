#include "platform/images/svg/svg_image.h"

#include "platform/images/image_memory.h"
#include "platform/images/svg/drawing_budget.h"
#include "platform/images/svg/svg_guard.h"

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
    const QSize size = target(own).expandedTo({1, 1});
    // The drawing, and the one on white that a JPEG is made of.
    const qint64 bytes = 2 * 4 * qint64(size.width()) * size.height();
    if (bytes > ImageLimits().heldBytes)
        return std::nullopt;
    ImageMemoryShare memory;
    memory.reserve(bytes);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return std::nullopt;
    image.fill(Qt::transparent);
    DrawingBudget budget(image);
    QPainter painter(&budget);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    painter.end();
    if (budget.isSpent())
        return std::nullopt;
    image.setColorSpace(QColorSpace(QColorSpace::SRgb));
    return image;
}

} // namespace zelkam
