#pragma once

#include "toast/toast_shadow.h"

#include <QGraphicsEffect>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace zelkam {

/// The alpha and the shadow of a toast, in one: a widget holds a single graphics effect. It also
/// makes a child widget translucent as a whole, over a web view too.
///
/// It is never switched off, and its shadow is set before the view is on its host: for either Qt
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

    QRectF boundingRectFor(const QRectF &rect) const override;

protected:
    void draw(QPainter *painter) override;

private:
    double m_alpha = 1.0;
    std::optional<ToastShadow> m_shadow;
    QRectF m_shape;
    double m_cornerRadius = 0.0;
    QMarginsF m_margins;
    QImage m_picture;
};

} // namespace zelkam
