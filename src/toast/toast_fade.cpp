#include "toast/toast_fade.h"

#include "toast/toast_effect.h"
#include "toast/toast_manager.h"
#include "toast/toast_motion.h"
#include "toast/toast_turns.h"

#include <QCoreApplication>
#include <QPointer>
#include <QPropertyAnimation>

#include <cmath>
#include <limits>

namespace zelkam {

int toMilliseconds(double seconds)
{
    const double milliseconds = std::round(seconds * 1000.0);
    if (!(milliseconds > 0.0))
        return 0;
    constexpr int most = std::numeric_limits<int>::max();
    return milliseconds < most ? int(milliseconds) : most;
}

static QEasingCurve easing(FadeCurve curve)
{
    QEasingCurve easing(QEasingCurve::BezierSpline);
    if (curve == FadeCurve::easeOut)
        easing.addCubicBezierSegment({0.0, 0.0}, {0.58, 1.0}, {1.0, 1.0});
    else
        easing.addCubicBezierSegment({0.42, 0.0}, {1.0, 1.0}, {1.0, 1.0});
    return easing;
}

static QPropertyAnimation *fadeOf(ToastEffect *effect)
{
    for (auto *fade : effect->findChildren<QPropertyAnimation *>(Qt::FindDirectChildrenOnly)) {
        if (fade->state() != QAbstractAnimation::Stopped)
            return fade;
    }
    return nullptr;
}

void endFade(QWidget *view)
{
    if (QPropertyAnimation *running = fadeOf(ToastEffect::of(view)))
        running->setCurrentTime(running->duration());
}

void fadeToast(QWidget *view, double alpha, FadeCurve curve, std::function<void()> completion)
{
    ToastEffect *effect = ToastEffect::of(view);
    if (QPropertyAnimation *running = fadeOf(effect))
        running->stop();

    // Always a trip through the event loop: a callback may delete the host, and a queue may be
    // thousands long.
    const auto end = [view = QPointer(view), completion = std::move(completion)] {
        runInTurn([view, completion] {
            if (view)
                completion();
        });
    };
    const double seconds = ToastManager::shared().style.fadeDuration.count();
    const int duration = isMotionReduced(view) || view->isHidden() ? 0 : toMilliseconds(seconds);
    if (duration == 0) {
        effect->setAlpha(alpha);
        end();
        return;
    }
    auto *fade = new QPropertyAnimation(effect, "alpha", effect);
    fade->setDuration(duration);
    fade->setEasingCurve(easing(curve));
    fade->setStartValue(effect->alpha());
    fade->setEndValue(alpha);
    // stateChanged, as finished says nothing of a fade that was cut short.
    QObject::connect(fade, &QAbstractAnimation::stateChanged, qApp,
                     [end](QAbstractAnimation::State state) {
                         if (state == QAbstractAnimation::Stopped)
                             end();
                     });
    fade->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace zelkam
