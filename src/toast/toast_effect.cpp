#include "toast/toast_effect.h"

#include <QPainter>

namespace zelkam {

ToastEffect *ToastEffect::of(QWidget *view)
{
    auto *effect = qobject_cast<ToastEffect *>(view->graphicsEffect());
    if (!effect) {
        effect = new ToastEffect;
        view->setGraphicsEffect(effect);
    }
    return effect;
}

void ToastEffect::setAlpha(double alpha)
{
    m_alpha = std::clamp(alpha, 0.0, 1.0);
    update();
}

void ToastEffect::setShadow(const ToastShadow &shadow, const QRectF &view, const QRectF &shape,
                            double cornerRadius)
{
    m_shadow = shadow;
    m_shape = shape;
    m_cornerRadius = cornerRadius;
    m_picture = {};
    extend(view, shadow.boundingRect(shape).toAlignedRect());
}

void ToastEffect::setOverhang(const QRectF &view, const QRectF &reach,
                              std::function<void(QPainter *)> draw)
{
    m_drawOverhang = std::move(draw);
    extend(view, reach);
}

void ToastEffect::extend(const QRectF &view, const QRectF &reach)
{
    m_margins = QMarginsF(std::max(m_margins.left(), view.left() - reach.left()),
                          std::max(m_margins.top(), view.top() - reach.top()),
                          std::max(m_margins.right(), reach.right() - view.right()),
                          std::max(m_margins.bottom(), reach.bottom() - view.bottom()));
    updateBoundingRect();
}

// Qt asks in the view's coordinates, and in those of its parent too.
QRectF ToastEffect::boundingRectFor(const QRectF &rect) const
{
    return rect.marginsAdded(m_margins);
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
    // Always through a pixmap: drawSource() misplaces a child when QWidget::render() calls it. The
    // view and its shadow fade as one picture.
    QPoint corner;
    QPixmap whole = sourcePixmap(Qt::LogicalCoordinates, &corner, PadToEffectiveBoundingRect);
    if (m_drawOverhang) {
        QPainter over(&whole);
        over.translate(-corner);
        m_drawOverhang(&over);
    }
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
