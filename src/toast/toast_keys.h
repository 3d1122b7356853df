#pragma once

namespace zelkam {

/// The names of the dynamic properties that hold a toast's state. Nothing is kept anywhere else:
/// a host or a toast that goes takes its state along.
///
/// On a host widget: `activeToasts` and `queue`, each a std::shared_ptr<ToastArray>, and
/// `activityView`, a QPointer<QWidget>. On a toast: `completion`, a
/// std::shared_ptr<ToastCompletionWrapper>; `timer`, a ToastTimer *, from the end of the fade-in;
/// while it waits in a queue also `duration`, a double in seconds, and `point`, a QPointF.
struct ToastKeys
{
    static constexpr char timer[] = "com.toast-swift.timer";
    static constexpr char duration[] = "com.toast-swift.duration";
    static constexpr char point[] = "com.toast-swift.point";
    static constexpr char completion[] = "com.toast-swift.completion";
    static constexpr char activeToasts[] = "com.toast-swift.activeToasts";
    static constexpr char activityView[] = "com.toast-swift.activityView";
    static constexpr char queue[] = "com.toast-swift.queue";
};

} // namespace zelkam
