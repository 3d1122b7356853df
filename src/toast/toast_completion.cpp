#include "toast/toast_completion.h"

#include "toast/toast_host.h"
#include "toast/toast_presentation.h"
#include "toast/toast_tap_recognizer.h"

namespace zelkam {

void Completion::handleToastTapped(ToastTapRecognizer *recognizer)
{
    dismissToast(toastView, recognizer->view(), true);
}

void Completion::toastTimerDidFinish(ToastTimer *timer)
{
    QWidget *toast = timer->userInfo();
    if (toastView && toast && ToastHost::of(toastView).activeToasts()->contains(toast))
        dismissToast(toastView, toast, false);
}

} // namespace zelkam
