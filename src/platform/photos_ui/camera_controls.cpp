#include "platform/photos_ui/camera_controls.h"

#include "platform/ui/theme.h"

#include <QPainter>

namespace zelkam {

ShutterButton::ShutterButton(QWidget *parent) : QAbstractButton(parent)
{
    setAccessibleName(tr("Take photo"));
    setToolTip(tr("Take photo"));
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void ShutterButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : 0.4);
    painter.setPen(QPen(showsFocus(*this) ? accentColor(palette()) : QColor(Qt::white), 4));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QRectF(rect()).adjusted(3, 3, -3, -3));
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown() ? QColor(190, 190, 190) : QColor(Qt::white));
    painter.drawEllipse(QRectF(rect()).adjusted(8, 8, -8, -8));
}

CameraTextButton::CameraTextButton(const QString &text, const QString &iconName, QWidget *parent)
    : QAbstractButton(parent), m_iconName(iconName)
{
    QFont own = themeFont(TextRole::body, font());
    own.setWeight(QFont::Medium);
    setFont(own);
    setText(text);
    setAccessibleName(text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    if (!iconName.isEmpty())
        setToolTip(text);
    if (tintedIcon(iconName, metrics::icon, Qt::white, 1.0).isNull())
        m_iconName.clear();
}

QSize CameraTextButton::sizeHint() const
{
    const int words = fontMetrics().horizontalAdvance(text()) + 3 * metrics::grid;
    return {m_iconName.isEmpty() ? qMax(metrics::tapTarget, words) : 48,
            m_iconName.isEmpty() ? metrics::tapTarget : 48};
}

void CameraTextButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(!isEnabled() ? 0.4 : isDown() ? 0.6 : 1.0);
    if (m_iconName.isEmpty()) {
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 46));
        painter.drawEllipse(rect());
        const QPixmap icon = tintedIcon(m_iconName, metrics::icon, Qt::white, devicePixelRatioF());
        painter.drawPixmap(
            QPointF((width() - metrics::icon) / 2.0, (height() - metrics::icon) / 2.0), icon);
    }
    if (showsFocus(*this)) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Qt::white, 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), metrics::corner,
                                metrics::corner);
    }
}

} // namespace zelkam
