#include "toast/toast_motion.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>

#include <cmath>

namespace zelkam {

static std::optional<bool> &motionOverride()
{
    static std::optional<bool> reduced;
    return reduced;
}

bool isMotionReduced(const QWidget *widget)
{
    if (motionOverride())
        return *motionOverride();
    const QStyle *style = widget ? widget->style() : QApplication::style();
    return style->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, widget) <= 0;
}

void setMotionReduced(std::optional<bool> reduced)
{
    motionOverride() = reduced;
}

double pulseOpacity(double turns)
{
    return 0.65 + 0.35 * std::cos(turns * M_PI);
}

} // namespace zelkam
