#include "toast/toast_motion.h"

#include <QStyle>
#include <QWidget>

namespace zelkam {

static std::optional<bool> &motionOverride()
{
    static std::optional<bool> reduced;
    return reduced;
}

bool isMotionReduced(const QWidget *host)
{
    if (motionOverride())
        return *motionOverride();
    return host->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, host) <= 0;
}

void setMotionReduced(std::optional<bool> reduced)
{
    motionOverride() = reduced;
}

} // namespace zelkam
