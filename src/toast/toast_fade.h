#pragma once

#include <functional>

class QWidget;

namespace zelkam {

enum class FadeCurve { easeOut, easeIn };

/// Fades the view from its present alpha to `alpha`, in the time that the shared style gives.
///
/// `completion` is called once, from the event loop: when the fade is at its end, or when a later
/// fade of the same view has taken its place. It is not called for a view that is deleted.
void fadeToast(QWidget *view, double alpha, FadeCurve curve, std::function<void()> completion);

/// Milliseconds for Qt's timers and animations: never negative, never beyond their range.
int toMilliseconds(double seconds);

} // namespace zelkam
