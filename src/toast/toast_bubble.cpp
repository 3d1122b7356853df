#include "toast/toast_bubble.h"

#include "toast/toast_accessible.h"
#include "toast/toast_effect.h"
#include "toast/toast_label.h"

#include <QPainter>

namespace zelkam {

ToastBubble::ToastBubble(const QColor &background, double cornerRadius)
    : m_background(background), m_cornerRadius(cornerRadius)
{
    makeBubblesAccessible();
}

QPoint ToastBubble::setFrame(const QRectF &frame)
{
    const QRect all = frame.normalized().toAlignedRect();
    m_frame = frame.normalized().translated(-all.topLeft());
    resize(all.size());
    return all.topLeft();
}

void ToastBubble::setOverhang()
{
    QRect contents;
    const auto children = findChildren<ToastContent *>();
    for (const ToastContent *child : children)
        contents |= child->geometry();
    if (rect().contains(contents))
        return;
    ToastEffect::of(this)->setOverhang(rect(), contents, [children](QPainter *painter) {
        for (const ToastContent *child : children) {
            if (child->hangsOver())
                child->draw(*painter, child->geometry());
        }
    });
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
