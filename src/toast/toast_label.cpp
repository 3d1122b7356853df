#include "toast/toast_label.h"

#include <QPainter>

namespace zelkam {

ToastLabel::ToastLabel(const ToastText &text, const QColor &color, QWidget *parent)
    : QWidget(parent), m_text(text), m_color(color)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ToastLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(m_color);
    m_text.draw(painter, rect());
}

ToastImageView::ToastImageView(const QImage &image, QWidget *parent)
    : QWidget(parent), m_image(image)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ToastImageView::paintEvent(QPaintEvent *)
{
    const double ratio = devicePixelRatioF();
    const QSize room = (QSizeF(size()) * ratio).toSize();
    const QSize fitted = m_image.size().scaled(room, Qt::KeepAspectRatio);
    if (fitted.isEmpty())
        return;
    QPainter painter(this);
    if (m_scaled.size() != fitted) {
        m_scaled = m_image.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_scaled.setDevicePixelRatio(1.0);
    }
    const QSizeF shown = QSizeF(fitted) / ratio;
    const QPointF corner((width() - shown.width()) * 0.5, (height() - shown.height()) * 0.5);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(corner, shown), m_scaled);
}

} // namespace zelkam
