#include "toast/toast_host.h"

#include "toast/toast_fade.h"
#include "toast/toast_keys.h"

#include <QResizeEvent>
#include <QVariant>

#include <algorithm>

namespace zelkam {

static constexpr char hostKey[] = "zelkam.toast.host";
static constexpr char coveredKey[] = "zelkam.toast.covered"; // on a toast below too many others

ToastHost &ToastHost::of(QWidget *host)
{
    if (ToastHost *known = host->property(hostKey).value<QPointer<ToastHost>>())
        return *known;
    auto *made = new ToastHost(host);
    host->setProperty(hostKey, QVariant::fromValue(QPointer(made)));
    return *made;
}

ToastHost::ToastHost(QWidget *host) : QObject(host), m_host(host)
{
    host->installEventFilter(this);
}

static std::shared_ptr<ToastArray> attachedArray(const QWidget *host, const char *key)
{
    return host->property(key).value<std::shared_ptr<ToastArray>>();
}

static std::shared_ptr<ToastArray> arrayUnder(QWidget *host, const char *key)
{
    auto array = attachedArray(host, key);
    if (!array) {
        array = std::make_shared<ToastArray>();
        host->setProperty(key, QVariant::fromValue(array));
    }
    return array;
}

ToastHost::~ToastHost()
{
    ToastArray parked = m_dropped;
    for (const char *key : {ToastKeys::queue, ToastKeys::activeToasts}) {
        if (const auto array = attachedArray(m_host, key))
            parked += *array;
    }
    for (const QPointer<QWidget> &toast : std::as_const(parked)) {
        if (toast && !toast->parentWidget())
            delete toast;
    }
}

std::shared_ptr<ToastArray> ToastHost::activeToasts() const
{
    return arrayUnder(m_host, ToastKeys::activeToasts);
}

std::shared_ptr<ToastArray> ToastHost::queue() const
{
    return arrayUnder(m_host, ToastKeys::queue);
}

void ToastHost::addSubview(QWidget *view, QPointF center)
{
    view->setParent(m_host);
    moveToastCenter(view, center);
    m_placed.removeIf([](const Placed &placed) { return !placed.view; });
    m_placed.append({view, FlexibleMargins(center, toastFrame(view).size(), m_host->size())});
    view->show();
    view->raise();
}

void ToastHost::coverOldest()
{
    constexpr qsizetype mostDrawn = 16;
    const auto active = activeToasts();
    const qsizetype first = std::max<qsizetype>(active->size() - mostDrawn, 0);
    const auto isCovered = [](const QWidget *view) { return view->property(coveredKey).toBool(); };
    QWidget *above = nullptr;
    for (qsizetype i = active->size() - 1; i >= first; --i) {
        QWidget *view = active->at(i);
        if (view && isCovered(view))
            uncover(view, above);
        if (view && view->parentWidget() == m_host)
            above = view;
    }
    // The covered ones are the oldest, so the first that is met ends the walk.
    for (qsizetype i = first - 1; i >= 0; --i) {
        QWidget *view = active->at(i);
        if (view && isCovered(view))
            break;
        if (view && view->parentWidget() == m_host) {
            takeOff(view);
            view->setProperty(coveredKey, true);
            endFade(view);
        }
    }
}

void ToastHost::uncover(QWidget *view, QWidget *above)
{
    view->setProperty(coveredKey, false);
    view->setParent(m_host);
    for (const Placed &placed : std::as_const(m_placed)) {
        if (placed.view == view)
            moveToastCenter(view, placed.margins.center(toastFrame(view).size(), m_host->size()));
    }
    view->show();
    if (above)
        view->stackUnder(above);
}

void ToastHost::takeOff(QWidget *view)
{
    view->hide();
    // Not a child of some widget for all that wait: the widgets of a window form a ring, and Qt
    // walks round it each time one of them gets another parent.
    view->setParent(nullptr);
}

void ToastHost::park(QWidget *view)
{
    m_placed.removeIf([view](const Placed &placed) { return placed.view == view; });
    view->setProperty(coveredKey, false);
    takeOff(view);
}

void ToastHost::drop(const ToastArray &toasts)
{
    m_dropped += toasts;
    m_dropTimer.start(1, this);
}

void ToastHost::timerEvent(QTimerEvent *)
{
    constexpr qsizetype aTurn = 32;
    for (qsizetype left = std::min(aTurn, m_dropped.size()); left > 0; --left)
        delete m_dropped.takeLast();
    if (m_dropped.isEmpty())
        m_dropTimer.stop();
}

bool ToastHost::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_host && event->type() == QEvent::Resize) {
        const QSizeF size = static_cast<QResizeEvent *>(event)->size();
        for (const Placed &placed : std::as_const(m_placed)) {
            QWidget *view = placed.view.data();
            if (view && view->parentWidget() == m_host)
                moveToastCenter(view, placed.margins.center(toastFrame(view).size(), size));
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zelkam
