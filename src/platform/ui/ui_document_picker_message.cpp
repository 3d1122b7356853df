#include "platform/ui/ui_document_picker_message.h"

#include "platform/ui/theme.h"

#include <QPainter>
#include <QTextOption>
#include <QTimerEvent>

namespace zelkam {

namespace {

constexpr int tick = 40; // milliseconds
constexpr int hiddenTicks = 5;
constexpr int iconSize = 64;

} // namespace

void DocumentPickerMessage::showText(const QString &iconName, const QString &title,
                                     const QString &detail)
{
    m_timer.stop();
    m_iconName = iconName;
    m_title = title;
    m_detail = detail;
    setAccessibleName(title);
    setAccessibleDescription(detail);
    update();
}

void DocumentPickerMessage::showLoading(const QString &title)
{
    showText({}, title);
    m_ticks = 0;
    m_timer.start(tick, this);
}

void DocumentPickerMessage::setDetail(const QString &detail)
{
    m_detail = detail;
    update();
}

void DocumentPickerMessage::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    ++m_ticks;
    update();
}

void DocumentPickerMessage::hideEvent(QHideEvent *event)
{
    m_timer.stop();
    QWidget::hideEvent(event);
}

void DocumentPickerMessage::paintEvent(QPaintEvent *)
{
    const bool isLoading = m_iconName.isEmpty();
    if (isLoading && m_ticks < hiddenTicks)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // A little above the middle, where the eye takes the middle to be.
    const double middle = width() / 2.0;
    double y = qMax(2.0 * metrics::grid, height() * 0.42 - iconSize);
    if (!isLoading) {
        QColor color = secondaryTextColor(palette());
        color.setAlphaF(0.6F);
        painter.drawPixmap(QPointF(middle - iconSize / 2.0, y),
                           tintedIcon(m_iconName, iconSize, color, devicePixelRatioF()));
    } else {
        const QRectF ring(middle - 18, y + iconSize - 44, 36, 36);
        painter.setPen(QPen(separatorColor(palette()), 3));
        painter.drawEllipse(ring);
        painter.setPen(QPen(accentColor(palette()), 3, Qt::SolidLine, Qt::RoundCap));
        drawBusyArc(painter, ring, 90, m_ticks / 30.0);
    }
    y += iconSize + metrics::grid;
    const QRectF room(3 * metrics::grid, y, width() - 6 * metrics::grid, height() - y);
    // Within a word only where one fills a whole line, as a file's name may.
    QTextOption lines(Qt::AlignHCenter | Qt::AlignTop);
    lines.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.setFont(themeFont(TextRole::title, font()));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(room, m_title, lines);
    const double used = painter.boundingRect(room, m_title, lines).height();
    painter.setFont(themeFont(TextRole::caption, font()));
    painter.setPen(secondaryTextColor(palette()));
    painter.drawText(room.adjusted(0, used + metrics::grid / 2.0, 0, 0), m_detail, lines);
}

} // namespace zelkam
