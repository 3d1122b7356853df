#include "toast/toast.h"

#include "toast/toast_accessible.h"
#include "toast/toast_bubble.h"
#include "toast/toast_effect.h"
#include "toast/toast_fade.h"
#include "toast/toast_host.h"
#include "toast/toast_spinner.h"
#include "toast/toast_tap_recognizer.h"

#include <QCoreApplication>
#include <QVariant>

#include <type_traits>

namespace zelkam {

namespace {

constexpr char hidingKey[] = "zelkam.toast.hiding";

QWidget *activityViewOf(const QWidget *host)
{
    return host->property(ToastKeys::activityView).value<QPointer<QWidget>>();
}

ToastBubble *createToastActivityView()
{
    const ToastStyle &style = ToastManager::shared().style;
    auto *view = new ToastBubble(style.activityBackgroundColor, style.cornerRadius);
    const QRectF frame(QPointF(0.0, 0.0), style.activitySize);
    view->setFrame(frame);
    if (style.displayShadow) {
        view->setShadow({style.shadowColor, double(style.shadowOpacity), style.shadowRadius,
                         QPointF(style.shadowOffset.width(), style.shadowOffset.height())});
    }
    auto *spinner = new ToastSpinner(style.activityIndicatorColor, view);
    spinner->setCenter(view->frame().center());
    view->setAnnouncement({}, QCoreApplication::translate("ToastActivityView", "In progress"),
                          true);
    new ToastTapRecognizer(view, false);
    return view;
}

// `place` is a position or a point.
template<typename Place>
void showActivity(QWidget *host, Place place)
{
    if (!host || activityViewOf(host))
        return;
    ToastBubble *view = createToastActivityView();
    QPointF center;
    if constexpr (std::is_same_v<Place, ToastPosition>)
        center = centerPoint(place, view, host);
    else
        center = place;
    ToastEffect::of(view)->setAlpha(0.0);
    host->setProperty(ToastKeys::activityView, QVariant::fromValue(QPointer<QWidget>(view)));
    ToastHost::of(host).addSubview(view, center);
    announceToast(view);
    fadeToast(view, 1.0, FadeCurve::easeOut, [] {});
}

} // namespace

void makeToastActivity(QWidget *host, ToastPosition position)
{
    showActivity(host, position);
}

void makeToastActivity(QWidget *host, QPointF point)
{
    showActivity(host, point);
}

void hideToastActivity(QWidget *host)
{
    QWidget *view = host ? activityViewOf(host) : nullptr;
    if (!view || view->property(hidingKey).toBool())
        return;
    view->setProperty(hidingKey, true);
    fadeToast(view, 0.0, FadeCurve::easeIn, [host = QPointer(host), view] {
        view->hide();
        view->deleteLater();
        if (host)
            host->setProperty(ToastKeys::activityView, QVariant());
    });
}

} // namespace zelkam
