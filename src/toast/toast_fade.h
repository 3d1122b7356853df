#pragma once

#include <functional>

class QWidget;

namespace zelkam {

enum class FadeCurve { easeOut, easeIn };

/// Fades the view from its present alpha to `alpha`, in the time that the shared style gives.
///
/// `completion` is called once, from the event loop: when the fade is at its end, or when a later
/// fade of the same view has taken its place. It is not called for a view that is deleted. Those of
/// all views are called in order, a few in each turn of the event loop: thousands may end at once.
void fadeToast(QWidget *view, double alpha, FadeCurve curve, std::function<void()> completion);

/// Brings the fade of the view to its end now, if there is one.
void endFade(QWidget *view);

/// Milliseconds for Qt's timers and animations: never negative, never beyond their range.
int toMilliseconds(double seconds);

} // namespace zelkam
