#include "toast/toast_spinner.h"

#include "toast/toast_motion.h"

#include <QPainter>
#include <QPen>

#include <cmath>

namespace zelkam {

static constexpr int spokes = 12;
static constexpr double diameter = 37.0;

ToastSpinner::ToastSpinner(const QColor &color, QWidget *parent) : QWidget(parent), m_color(color)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // Two turns, which are one pulse.
    m_turns.setStartValue(0.0);
    m_turns.setEndValue(2.0);
    m_turns.setDuration(2000);
    m_turns.setLoopCount(-1);
    connect(&m_turns, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

void ToastSpinner::setCenter(QPointF center)
{
    const QPointF half(diameter * 0.5, diameter * 0.5);
    setGeometry(QRectF(center - half, center + half).toAlignedRect());
}

void ToastSpinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() * 0.5, height() * 0.5);
    const double turns = m_turns.currentValue().toDouble();
    const double head = m_pulses ? spokes - 1.0 : turns * spokes;
    painter.setOpacity(m_pulses ? pulseOpacity(turns) : 1.0);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        // The head is between two spokes most of the time: each fades by how long ago it passed.
        double age = std::fmod(head - spoke + spokes, double(spokes)) / spokes;
        const double rise = 1.0 / spokes;
        if (age > 1.0 - rise)
            age = (1.0 - age) / rise * (1.0 - rise);
        QColor color = m_color;
        color.setAlphaF(m_color.alphaF() * float(1.0 - 0.82 * age));
        painter.setPen(QPen(color, 3.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0.0, -9.5), QPointF(0.0, -16.5));
        painter.rotate(360.0 / spokes);
    }
}

void ToastSpinner::showEvent(QShowEvent *)
{
    m_pulses = isMotionReduced(this);
    m_turns.start();
}

void ToastSpinner::hideEvent(QHideEvent *)
{
    m_turns.stop();
}

} // namespace zelkam
