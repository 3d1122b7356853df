#include "toast/toast_presentation.h"

#include "toast/toast_accessible.h"
#include "toast/toast_effect.h"
#include "toast/toast_fade.h"
#include "toast/toast_host.h"
#include "toast/toast_keys.h"
#include "toast/toast_manager.h"
#include "toast/toast_tap_recognizer.h"
#include "toast/toast_turns.h"

#include <QCoreApplication>
#include <QVariant>

namespace zelkam {

namespace {

// On a toast: the host that it was presented on, and while it fades out a ToastArray of the hosts
// that hide it.
constexpr char presenterKey[] = "zelkam.toast.presenter";
constexpr char hidingKey[] = "zelkam.toast.hiding";

QWidget *presenterOf(const QWidget *toast)
{
    return toast->property(presenterKey).value<QPointer<QWidget>>();
}

std::shared_ptr<ToastCompletionWrapper> wrapperOf(const QWidget *toast)
{
    return toast->property(ToastKeys::completion).value<std::shared_ptr<ToastCompletionWrapper>>();
}

void call(const std::shared_ptr<ToastCompletionWrapper> &wrapper, bool didTap)
{
    if (wrapper && wrapper->completion)
        wrapper->completion(didTap);
}

ToastTimer *timerOf(const QWidget *toast)
{
    return toast->property(ToastKeys::timer).value<ToastTimer *>();
}

void stopTimer(const QWidget *toast)
{
    if (auto *timer = timerOf(toast))
        timer->stop();
}

void startTimer(QWidget *toast, ToastDuration duration)
{
    auto *timer = new ToastTimer(toast);
    QObject::connect(timer, &ToastTimer::timeout, timer, [timer] {
        runInTurn([timer = QPointer(timer)] {
            if (timer)
                ToastManager::shared().completion.toastTimerDidFinish(timer);
        });
    });
    toast->setProperty(ToastKeys::timer, QVariant::fromValue(timer));
    timer->start(toMilliseconds(duration.count()));
}

void presentNext(QWidget *host)
{
    const auto queue = ToastHost::of(host).queue();
    // Those that were deleted while they waited.
    while (!queue->isEmpty() && !queue->first())
        queue->removeFirst();
    QWidget *toast = queue->isEmpty() ? nullptr : queue->first().data();
    if (!toast)
        return;
    const QVariant duration = toast->property(ToastKeys::duration);
    const QVariant point = toast->property(ToastKeys::point);
    if (duration.metaType() != QMetaType::fromType<double>() ||
        point.metaType() != QMetaType::fromType<QPointF>())
        return;
    queue->removeFirst();
    presentToast(host, toast, ToastDuration(duration.toDouble()), point.toPointF());
}

// A toast that is deleted while it is shown has gone as if it had been hidden: the queue must not
// wait for it for ever. Deleting the host is another matter, then nobody is left to be told.
void watchForDeletion(QWidget *host, QWidget *toast)
{
    QObject::connect(toast, &QObject::destroyed, &ToastHost::of(host),
                     [host = QPointer(host), toast, wrapper = wrapperOf(toast)] {
                         if (!host)
                             return;
                         const auto active = ToastHost::of(host).activeToasts();
                         const auto isGone = [toast](const QPointer<QWidget> &view) {
                             return !view || view == toast;
                         };
                         if (active->removeIf(isGone) == 0)
                             return;
                         ToastHost::of(host).coverOldest();
                         QMetaObject::invokeMethod(
                             host,
                             [host, wrapper] {
                                 call(wrapper, false);
                                 if (host)
                                     presentNext(host);
                             },
                             Qt::QueuedConnection);
                     });
}

void finishDismissal(QWidget *toast, bool fromTap)
{
    stopTimer(toast);
    const auto hosts = toast->property(hidingKey).value<ToastArray>();
    toast->setProperty(hidingKey, QVariant());
    const QPointer presenter = presenterOf(toast);
    if (presenter)
        ToastHost::of(presenter).park(toast);
    for (const QPointer<QWidget> &host : hosts) {
        if (!host)
            continue;
        ToastHost::of(host).activeToasts()->removeOne(toast);
        ToastHost::of(host).coverOldest();
    }

    const QPointer guard(toast);
    call(wrapperOf(toast), fromTap);

    // A toast that was hidden through another host is still listed on its own, and lives as long.
    const bool isListed =
        guard && presenter && ToastHost::of(presenter).activeToasts()->contains(toast);
    if (guard && !isListed)
        guard->deleteLater();
    for (const QPointer<QWidget> &host : hosts) {
        if (host)
            presentNext(host);
    }
}

} // namespace

void presentToast(QWidget *host, QWidget *toast, ToastDuration duration, QPointF point)
{
    ToastManager &manager = ToastManager::shared();
    ToastHost &state = ToastHost::of(host);
    ToastEffect::of(toast)->setAlpha(0.0);

    auto *recognizer = new ToastTapRecognizer(toast, manager.isTapToDismissEnabled);
    if (manager.isTapToDismissEnabled) {
        toast->setAttribute(Qt::WA_TransparentForMouseEvents, false);
        QObject::connect(recognizer, &ToastTapRecognizer::tapped, recognizer, [recognizer] {
            ToastManager::shared().completion.handleToastTapped(recognizer);
        });
    }
    toast->setProperty(presenterKey, QVariant::fromValue(QPointer(host)));
    watchForDeletion(host, toast);

    state.activeToasts()->append(toast);
    state.addSubview(toast, point);
    state.coverOldest();
    announceToast(toast);
    fadeToast(toast, 1.0, FadeCurve::easeOut, [toast, duration] { startTimer(toast, duration); });
}

void dismissToast(QWidget *host, QWidget *toast, bool fromTap)
{
    stopTimer(toast);
    auto hosts = toast->property(hidingKey).value<ToastArray>();
    const bool isHiding = !hosts.isEmpty();
    const QPointer through = host ? host : presenterOf(toast);
    if (!hosts.contains(through))
        hosts.append(through);
    toast->setProperty(hidingKey, QVariant::fromValue(hosts));
    if (!isHiding) {
        fadeToast(toast, 0.0, FadeCurve::easeIn,
                  [toast, fromTap] { finishDismissal(toast, fromTap); });
    }
}

} // namespace zelkam
