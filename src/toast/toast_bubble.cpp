#include "toast/toast_bubble.h"

#include "toast/toast_accessible.h"
#include "toast/toast_effect.h"

#include <QPainter>

namespace zelkam {

ToastBubble::ToastBubble(const QColor &background, double cornerRadius)
    : m_background(background), m_cornerRadius(cornerRadius)
{
    makeBubblesAccessible();
}

QPoint ToastBubble::setFrame(const QRectF &frame, const QRectF &contents)
{
    const QRect all = (frame.normalized() | contents).toAlignedRect();
    m_frame = frame.normalized().translated(-all.topLeft());
    resize(all.size());
    return all.topLeft();
}

double ToastBubble::cornerRadius() const
{
    return std::clamp(m_cornerRadius, 0.0, std::min(m_frame.width(), m_frame.height()) * 0.5);
}

void ToastBubble::setShadow(ToastShadow shadow)
{
    shadow.opacity *= double(m_background.alphaF());
    ToastEffect::of(this)->setShadow(shadow, rect(), m_frame, cornerRadius());
}

void ToastBubble::setAnnouncement(const QString &title, const QString &message, bool isBusy)
{
    setAccessibleName(title.isEmpty() ? message : title);
    setAccessibleDescription(title.isEmpty() ? QString() : message);
    m_isBusy = isBusy;
}

void ToastBubble::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_background);
    painter.drawRoundedRect(m_frame, cornerRadius(), cornerRadius());
}

} // namespace zelkam
