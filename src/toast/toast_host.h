#pragma once

#include "toast/toast_placement.h"

#include <QBasicTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace zelkam {

using ToastArray = QList<QPointer<QWidget>>;

/// What a host widget knows of its toasts. Made with the first toast, a child of the host.
///
/// Owns the toasts that are on no screen: those in the queue, those that newer ones cover, and
/// those that have been removed but are still listed as active. They die with the host; nobody is
/// called back for them.
class ToastHost : public QObject
{
    Q_OBJECT

public:
    static ToastHost &of(QWidget *host);
    ~ToastHost() override;

    /// The toasts that are shown, and those that wait. Each is the array that the host holds under
    /// its key; an empty one is made and attached where there is none.
    std::shared_ptr<ToastArray> activeToasts() const;
    std::shared_ptr<ToastArray> queue() const;

    /// Makes the view a child of the host, on top of its siblings, and from now on keeps its
    /// relative place when the host changes its size.
    void addSubview(QWidget *view, QPointF center);

    /// Draws no more than the newest sixteen of the active toasts. The others lie below them and
    /// live on as they would; each would be one more picture in every frame. To be called whenever
    /// a toast has been added or removed.
    void coverOldest();

    /// Takes a view off the screen, or one that was never there into custody.
    void park(QWidget *view);

    /// Deletes toasts that were parked, a few in each turn of the event loop: there may be
    /// thousands, and a touch must not wait for them.
    void drop(const ToastArray &toasts);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    explicit ToastHost(QWidget *host);
    void uncover(QWidget *view, QWidget *above);
    static void takeOff(QWidget *view);

    struct Placed
    {
        QPointer<QWidget> view;
        FlexibleMargins margins;
    };

    QWidget *m_host;
    QList<Placed> m_placed;
    ToastArray m_dropped;
    QBasicTimer m_dropTimer;
};

} // namespace zelkam
