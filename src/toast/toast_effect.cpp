#include "toast/toast_effect.h"

#include <QPainter>

namespace zelkam {

ToastEffect *ToastEffect::of(QWidget *view)
{
    auto *effect = qobject_cast<ToastEffect *>(view->graphicsEffect());
    if (!effect) {
        effect = new ToastEffect;
        effect->switchOnIfNeeded();
        view->setGraphicsEffect(effect);
    }
    return effect;
}

void ToastEffect::setAlpha(double alpha)
{
    m_alpha = std::clamp(alpha, 0.0, 1.0);
    switchOnIfNeeded();
    update();
}

void ToastEffect::setShadow(const ToastShadow &shadow, const QRectF &shape, double cornerRadius)
{
    m_shadow = shadow;
    m_shape = shape;
    m_cornerRadius = cornerRadius;
    m_picture = {};
    switchOnIfNeeded();
    updateBoundingRect();
}

// An opaque view without a shadow is drawn straight to the window, so that what moves in it
// repaints itself and nothing else.
void ToastEffect::switchOnIfNeeded()
{
    setEnabled(m_alpha < 1.0 || m_shadow);
}

QRectF ToastEffect::boundingRectFor(const QRectF &rect) const
{
    return m_shadow ? rect | QRectF(m_shadow->boundingRect(m_shape).toAlignedRect()) : rect;
}

void ToastEffect::draw(QPainter *painter)
{
    if (m_alpha <= 0.0)
        return;
    const double ratio = painter->device()->devicePixelRatio();
    QRect shadowRect;
    if (m_shadow) {
        shadowRect = m_shadow->boundingRect(m_shape).toAlignedRect();
        if (m_picture.isNull() || !qFuzzyCompare(m_picture.devicePixelRatio(), ratio))
            m_picture = m_shadow->render(m_shape, m_cornerRadius, ratio);
    }
    if (m_alpha >= 1.0) {
        if (m_shadow)
            painter->drawImage(shadowRect.topLeft(), m_picture);
        drawSource(painter);
        return;
    }

    // Below full alpha the view and its shadow fade as one picture.
    QPoint corner;
    QPixmap whole = sourcePixmap(Qt::LogicalCoordinates, &corner, PadToEffectiveBoundingRect);
    if (m_shadow) {
        QPainter under(&whole);
        under.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        under.drawImage(shadowRect.topLeft() - corner, m_picture);
    }
    painter->save();
    painter->setOpacity(painter->opacity() * m_alpha);
    painter->drawPixmap(corner, whole);
    painter->restore();
}

} // namespace zelkam
