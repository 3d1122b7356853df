#pragma once

#include "toast/toast_timer.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace zelkam {

class ToastTapRecognizer;

/// Called once when a toast has gone, with whether a tap sent it away.
using ToastCallback = std::function<void(bool didTap)>;

/// What hangs on a toast under ToastKeys::completion.
class ToastCompletionWrapper
{
public:
    explicit ToastCompletionWrapper(ToastCallback callback) : completion(std::move(callback)) {}

    const ToastCallback completion;
};

/// The target of the timers and taps of every toast.
///
/// Both find their host in `toastView`, the host that showed or queued a toast last, whichever
/// host the toast lies on. So of two hosts with toasts only the later one's time out, and a tap on
/// the earlier one's hides it through the later host. Hosts that take turns call hideToast(). Once
/// the later host has been deleted, a tap hides a toast through the host that it lies on.
///
/// Main thread only.
class Completion
{
public:
    Completion() = default;
    Q_DISABLE_COPY_MOVE(Completion)

    /// Empty before the first toast, and again once that host is deleted.
    QPointer<QWidget> toastView;

    /// Hides the recognizer's toast.
    void handleToastTapped(ToastTapRecognizer *recognizer);

    /// Hides the timer's toast, if it is one of the active toasts of the host.
    void toastTimerDidFinish(ToastTimer *timer);
};

} // namespace zelkam
