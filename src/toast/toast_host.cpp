#include "toast/toast_host.h"

#include "toast/toast_keys.h"

#include <QResizeEvent>
#include <QVariant>

namespace zelkam {

static constexpr char hostKey[] = "zelkam.toast.host";

ToastHost &ToastHost::of(QWidget *host)
{
    if (const auto known = host->property(hostKey).value<QPointer<ToastHost>>())
        return *known;
    auto *made = new ToastHost(host);
    host->setProperty(hostKey, QVariant::fromValue(QPointer(made)));
    return *made;
}

ToastHost::ToastHost(QWidget *host) : QObject(host), m_host(host)
{
    host->installEventFilter(this);
}

ToastHost::~ToastHost() = default;

static std::shared_ptr<ToastArray> arrayUnder(QWidget *host, const char *key)
{
    auto array = host->property(key).value<std::shared_ptr<ToastArray>>();
    if (!array) {
        array = std::make_shared<ToastArray>();
        host->setProperty(key, QVariant::fromValue(array));
    }
    return array;
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

void ToastHost::park(QWidget *view)
{
    m_placed.removeIf([view](const Placed &placed) { return placed.view == view; });
    if (!m_waitingRoom)
        m_waitingRoom = std::make_unique<QWidget>();
    view->hide();
    view->setParent(m_waitingRoom.get());
}

bool ToastHost::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_host && event->type() == QEvent::Resize) {
        const QSizeF size = static_cast<QResizeEvent *>(event)->size();
        for (const Placed &placed : std::as_const(m_placed)) {
            if (placed.view && placed.view->parentWidget() == m_host)
                moveToastCenter(placed.view,
                                placed.margins.center(toastFrame(placed.view).size(), size));
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zelkam
