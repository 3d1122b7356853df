#pragma once

#include "toast/toast_shadow.h"

#include <QGraphicsEffect>
#include <QPointer>
#include <QWidget>

#include <optional>

namespace zelkam {

/// The alpha and the shadow of a toast, in one: a widget holds a single graphics effect. It also
/// makes a child widget translucent as a whole, over a web view too.
class ToastEffect : public QGraphicsEffect
{
    Q_OBJECT
    Q_PROPERTY(double alpha READ alpha WRITE setAlpha)

public:
    /// The effect of the view; one is put in the place of any other effect that it has.
    static ToastEffect *of(QWidget *view);

    double alpha() const { return m_alpha; }
    void setAlpha(double alpha);

    /// Shadows the rounded rectangle `shape` of the view's own coordinates.
    void setShadow(const ToastShadow &shadow, const QRectF &shape, double cornerRadius);
    const std::optional<ToastShadow> &shadow() const { return m_shadow; }

    QRectF boundingRectFor(const QRectF &rect) const override;

protected:
    void draw(QPainter *painter) override;

private:
    void switchOnIfNeeded();

    double m_alpha = 1.0;
    std::optional<ToastShadow> m_shadow;
    QRectF m_shape;
    double m_cornerRadius = 0.0;
    QImage m_picture;
};

} // namespace zelkam
