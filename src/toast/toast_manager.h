#pragma once

#include "toast/toast_completion.h"
#include "toast/toast_position.h"
#include "toast/toast_style.h"

namespace zelkam {

/// The defaults of all toasts of the process. A change takes effect at the next read; placement,
/// fade times and the activity bubble read `style` when they run, so they follow later changes
/// even for a toast that is on screen.
///
/// Made on first use, from any thread; its fields belong to the main thread.
class ToastManager
{
    Q_DISABLE_COPY_MOVE(ToastManager)

public:
    static ToastManager &shared();

    Completion completion;
    ToastStyle style;
    /// Whether a tap sends a toast away. Read when the toast is shown.
    bool isTapToDismissEnabled = true;
    /// Whether a toast waits until the earlier ones of its host have gone.
    bool isQueueEnabled = false;
    /// The time between fade-in and fade-out.
    ToastDuration duration = ToastDuration(3.0);
    ToastPosition position = ToastPosition::bottom;

private:
    ToastManager() = default;
};

} // namespace zelkam
