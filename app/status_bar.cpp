#include "app/status_bar.h"

#include "platform/ui/theme.h"

#include <QPainter>
#include <QVariantAnimation>

namespace zelkam {

namespace {
constexpr int markSize = 14;
} // namespace

StatusBar::StatusBar(QWidget *parent) : QWidget(parent), m_turn(new QVariantAnimation(this))
{
    setFixedHeight(height);
    // Two turns: where motion is reduced, one pulse.
    m_turn->setStartValue(0.0);
    m_turn->setEndValue(2.0);
    m_turn->setDuration(2000);
    m_turn->setLoopCount(-1);
    connect(m_turn, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

void StatusBar::setPageName(const QString &name)
{
    m_pageName = name;
    setAccessibleName(name);
    update();
}

void StatusBar::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    setAccessibleDescription(active ? tr("The network is in use") : QString());
    if (active)
        m_turn->start();
    else
        m_turn->stop();
    update();
}

void StatusBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Window));

    const int margin = 2 * metrics::grid;
    painter.setFont(themeFont(TextRole::caption, font()));
    painter.setPen(secondaryTextColor(palette()));
    const QRect middle = rect().adjusted(margin + markSize, 0, -margin - markSize, 0);
    painter.drawText(middle, Qt::AlignCenter,
                     painter.fontMetrics().elidedText(m_pageName, Qt::ElideMiddle, middle.width()));
    if (!m_active)
        return;
    const QRectF mark(width() - margin - markSize, (height - markSize) / 2.0, markSize, markSize);
    QPen pen(accentColor(palette()), 2);
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    drawBusyArc(painter, mark, 270, m_turn->currentValue().toDouble());
}

} // namespace zelkam
