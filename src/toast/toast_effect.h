#pragma once

#include "toast/toast_shadow.h"

#include <QGraphicsEffect>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

namespace zelkam {

/// The alpha of a toast and what of it lies beyond its widget, in one: a widget holds a single
/// graphics effect. It also makes a child widget translucent as a whole, over a web view too.
///
/// It is never switched off, and its bounds are set before the view is on its host: for either Qt
/// would repaint the whole of the host.
class ToastEffect : public QGraphicsEffect
{
    Q_OBJECT
    Q_PROPERTY(double alpha READ alpha WRITE setAlpha)

public:
    /// The effect of the view; one is put in the place of any other effect that it has.
    static ToastEffect *of(QWidget *view);

    double alpha() const { return m_alpha; }
    void setAlpha(double alpha);

    /// Shadows the rounded rectangle `shape`; both are in the coordinates of the view, whose
    /// rectangle is `view`.
    void setShadow(const ToastShadow &shadow, const QRectF &view, const QRectF &shape,
                   double cornerRadius);

    /// Draws over the view with `draw`, which may reach as far as `reach`; both rectangles and the
    /// painter are in the coordinates of the view.
    void setOverhang(const QRectF &view, const QRectF &reach, std::function<void(QPainter *)> draw);

    QRectF boundingRectFor(const QRectF &rect) const override;

protected:
    void draw(QPainter *painter) override;

private:
    void extend(const QRectF &view, const QRectF &reach);

    double m_alpha = 1.0;
    std::optional<ToastShadow> m_shadow;
    QRectF m_shape;
    double m_cornerRadius = 0.0;
    QMarginsF m_margins;
    std::function<void(QPainter *)> m_drawOverhang;
    QImage m_picture;
};

} // namespace zelkam
