#include "toast/toast.h"

#include "toast/toast_host.h"
#include "toast/toast_placement.h"
#include "toast/toast_presentation.h"

#include <QVariant>

#include <cstdio>

namespace zelkam {

// Where a toast goes: a position is turned into a point only once the bubble has a size.
template<typename Place>
static void buildAndShow(QWidget *host, const std::optional<QString> &message,
                         ToastDuration duration, Place place, const std::optional<QString> &title,
                         const std::optional<QImage> &image, const ToastStyle &style,
                         ToastCallback completion, const char *missingText)
{
    if (!host)
        return;
    ToastViewResult toast = toastViewForMessage(host, message, title, image, style);
    if (toast) {
        showToast(host, std::move(toast.view), duration, place, std::move(completion));
    } else if (toast.error == ToastError::missingParameters) {
        std::puts(missingText);
        std::fflush(stdout);
    }
}

void makeToast(QWidget *host, const std::optional<QString> &message, ToastDuration duration,
               ToastPosition position, const std::optional<QString> &title,
               const std::optional<QImage> &image, const ToastStyle &style,
               ToastCallback completion)
{
    buildAndShow(host, message, duration, position, title, image, style, std::move(completion),
                 "Error: message, title, and image are all nil");
}

void makeToast(QWidget *host, const std::optional<QString> &message, ToastDuration duration,
               QPointF point, const std::optional<QString> &title,
               const std::optional<QImage> &image, const ToastStyle &style,
               ToastCallback completion)
{
    buildAndShow(host, message, duration, point, title, image, style, std::move(completion),
                 "Error: message, title, and image cannot all be nil");
}

static void giveSize(QWidget *toast)
{
    if (!toast->testAttribute(Qt::WA_Resized))
        toast->adjustSize();
}

void showToast(QWidget *host, std::unique_ptr<QWidget> toast, ToastDuration duration,
               ToastPosition position, ToastCallback completion)
{
    if (!host || !toast)
        return;
    giveSize(toast.get());
    const QPointF center = centerPoint(position, toast.get(), host);
    showToast(host, std::move(toast), duration, center, std::move(completion));
}

static void enqueue(QWidget *host, QWidget *toast, ToastDuration duration, QPointF point)
{
    toast->setProperty(ToastKeys::duration, duration.count());
    toast->setProperty(ToastKeys::point, point);
    ToastHost &state = ToastHost::of(host);
    state.park(toast);
    state.queue()->append(toast);
}

void showToast(QWidget *host, std::unique_ptr<QWidget> toast, ToastDuration duration, QPointF point,
               ToastCallback completion)
{
    if (!host || !toast)
        return;
    giveSize(toast.get());
    ToastManager &manager = ToastManager::shared();
    const auto wrapper = std::make_shared<ToastCompletionWrapper>(std::move(completion));
    toast->setProperty(ToastKeys::completion, QVariant::fromValue(wrapper));
    // From here on the host owns it, as a child or in its queue.
    QWidget *view = toast.release();
    if (manager.isQueueEnabled && !ToastHost::of(host).activeToasts()->isEmpty())
        enqueue(host, view, duration, point);
    else
        presentToast(host, view, duration, point);
    manager.completion.toastView = host;
}

void hideToast(QWidget *host)
{
    if (!host)
        return;
    const auto active = ToastHost::of(host).activeToasts();
    if (!active->isEmpty())
        hideToast(host, active->first());
}

void hideToast(QWidget *host, QWidget *toast)
{
    if (host && toast && ToastHost::of(host).activeToasts()->contains(toast))
        dismissToast(host, toast, false);
}

void hideAllToasts(QWidget *host, bool includeActivity, bool clearQueue)
{
    if (!host)
        return;
    if (clearQueue)
        clearToastQueue(host);
    const ToastArray snapshot = *ToastHost::of(host).activeToasts();
    for (const QPointer<QWidget> &toast : snapshot) {
        if (toast)
            dismissToast(host, toast, false);
    }
    if (includeActivity)
        hideToastActivity(host);
}

void clearToastQueue(QWidget *host)
{
    if (!host)
        return;
    const auto queue = ToastHost::of(host).queue();
    ToastHost::of(host).drop(std::exchange(*queue, {}));
}

} // namespace zelkam
