#include "stage.h"

#include <QPainter>

Stage::Stage(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(280, 240);
}

void Stage::setTheme(const GalleryTheme &theme)
{
    m_theme = theme;
    update();
}

void Stage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_theme.stage);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto bar = [&](QRectF place, const QColor &color) {
        painter.setBrush(color);
        painter.drawRoundedRect(place, place.height() * 0.5, place.height() * 0.5);
    };
    constexpr double rowHeight = 72.0;
    int row = 0;
    for (double y = 16.0; y < height(); y += rowHeight + 8.0, ++row) {
        const QRectF card(16.0, y, width() - 32.0, rowHeight);
        painter.setBrush(m_theme.card);
        painter.drawRoundedRect(card, 10.0, 10.0);
        painter.setBrush(row % 3 == 0 ? m_theme.accent : m_theme.faint);
        painter.drawEllipse(QRectF(card.left() + 16.0, card.top() + 16.0, 40.0, 40.0));
        const double room = card.width() - 96.0;
        bar({card.left() + 72.0, card.top() + 20.0, room * (row % 2 == 0 ? 0.5 : 0.65), 12.0},
            m_theme.faint);
        bar({card.left() + 72.0, card.top() + 42.0, room * (row % 2 == 0 ? 0.9 : 0.75), 10.0},
            m_theme.faint);
    }
}
