#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>

namespace zelkam {

/// A blurred shadow of a rounded rectangle.
struct ToastShadow
{
    QColor color;
    double opacity = 0.0;
    /// The standard deviation of the blur.
    double radius = 0.0;
    QPointF offset;

    /// How far the blur reaches beyond the shape.
    double extent() const;

    /// What the shadow of `shape` can touch.
    QRectF boundingRect(const QRectF &shape) const;

    /// The shadow as a picture of boundingRect(), which is to be aligned to whole points.
    QImage render(const QRectF &shape, double cornerRadius, double devicePixelRatio) const;
};

} // namespace zelkam
