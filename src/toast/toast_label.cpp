#include "toast/toast_label.h"

#include <QPainter>

namespace zelkam {

ToastContent::ToastContent(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

bool ToastContent::hangsOver() const
{
    return !parentWidget()->rect().contains(geometry());
}

void ToastContent::paintEvent(QPaintEvent *)
{
    if (hangsOver())
        return;
    QPainter painter(this);
    draw(painter, rect());
}

ToastLabel::ToastLabel(const ToastText &text, const QColor &color, QWidget *parent)
    : ToastContent(parent), m_text(text), m_color(color)
{
}

void ToastLabel::draw(QPainter &painter, const QRect &rect) const
{
    painter.setPen(m_color);
    m_text.draw(painter, rect);
}

ToastImageView::ToastImageView(const QImage &image, QWidget *parent)
    : ToastContent(parent), m_image(image)
{
}

void ToastImageView::draw(QPainter &painter, const QRect &rect) const
{
    const double ratio = devicePixelRatioF();
    const QSize room = (QSizeF(size()) * ratio).toSize();
    const QSize fitted = m_image.size().scaled(room, Qt::KeepAspectRatio);
    if (fitted.isEmpty())
        return;
    if (m_scaled.size() != fitted) {
        m_scaled = m_image.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_scaled.setDevicePixelRatio(1.0);
    }
    const QSizeF shown = QSizeF(fitted) / ratio;
    QRectF target(QPointF(), shown);
    target.moveCenter(QRectF(rect).center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, m_scaled);
}

} // namespace zelkam
