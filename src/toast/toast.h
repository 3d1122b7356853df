#pragma once

#include "toast/toast_keys.h"
#include "toast/toast_manager.h"
#include "toast/toast_motion.h"
#include "toast/toast_position.h"
#include "toast/toast_style.h"
#include "toast/toast_view.h"

#include <QImage>
#include <QPointF>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

/// Toasts: short messages in a bubble over any widget, which go by themselves or by a tap.
///
///     zelkam::makeToast(window, tr("Saved"));
///
/// All operations belong to the main thread and take the host widget first. A host may be any
/// widget that does not lay out each child by itself, as QSplitter does; a null host is ignored.
/// The toast becomes a child of the host and lies on top of its siblings at that moment. It keeps
/// its relative place when the host is resized. Default arguments come from
/// ToastManager::shared() at the time of the call.
///
/// A completion is called from the event loop, once, after the toast has left the screen, with
/// whether a tap sent it away. It may show toasts, hide them, or delete the host. It is not called
/// for a toast that is dropped from the queue or whose host is deleted.
namespace zelkam {

/// Shows a bubble with what is given of `message`, `title` and `image`. `duration` is the time
/// between its fade-in and its fade-out. When all three are absent nothing is shown and standard
/// output has a line that says so.
void makeToast(QWidget *host, const std::optional<QString> &message,
               ToastDuration duration = ToastManager::shared().duration,
               ToastPosition position = ToastManager::shared().position,
               const std::optional<QString> &title = std::nullopt,
               const std::optional<QImage> &image = std::nullopt,
               const ToastStyle &style = ToastManager::shared().style,
               ToastCallback completion = nullptr);

/// The same with the bubble's centre at `point`, in the host's coordinates.
void makeToast(QWidget *host, const std::optional<QString> &message, ToastDuration duration,
               QPointF point, const std::optional<QString> &title = std::nullopt,
               const std::optional<QImage> &image = std::nullopt,
               const ToastStyle &style = ToastManager::shared().style,
               ToastCallback completion = nullptr);

/// Shows a widget of the caller's as a toast, or queues it: where the queue is on and the host
/// shows a toast. Takes it over and deletes it when it has gone. The widget's graphics effect is
/// replaced. If its size has not been set, it takes its sizeHint(). Of more than sixteen toasts
/// the oldest are hidden while newer ones lie on them.
///
/// The widget may be deleted at any time: while it is shown that counts as a time-out, and while it
/// waits it drops out of the queue.
void showToast(QWidget *host, std::unique_ptr<QWidget> toast,
               ToastDuration duration = ToastManager::shared().duration,
               ToastPosition position = ToastManager::shared().position,
               ToastCallback completion = nullptr);
void showToast(QWidget *host, std::unique_ptr<QWidget> toast, ToastDuration duration, QPointF point,
               ToastCallback completion = nullptr);

/// Hides the toast that has been shown longest.
void hideToast(QWidget *host);

/// Hides `toast` if it is one of the host's active toasts.
void hideToast(QWidget *host, QWidget *toast);

/// Hides all toasts of the host, on request with its activity bubble and without those that wait.
void hideAllToasts(QWidget *host, bool includeActivity = false, bool clearQueue = true);

/// Shows the host's activity bubble, for work of unknown length: a spinner that stays until it is
/// hidden, of the shared style at this moment. One that is there already, or on its way out, is
/// neither replaced nor moved.
void makeToastActivity(QWidget *host, ToastPosition position = ToastPosition::center);

/// The same with the bubble's centre at `point`, in the host's coordinates.
void makeToastActivity(QWidget *host, QPointF point);

/// Fades the activity bubble out and removes it, if there is one.
void hideToastActivity(QWidget *host);

/// Drops the toasts that wait. Their completions are not called.
void clearToastQueue(QWidget *host);

} // namespace zelkam
