#include "toast/toast_timer.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace zelkam {

/// The one timer of Qt's. A child of the application object, so that it goes with the event loop.
class ToastClock : public QObject
{
public:
    using Time = std::chrono::steady_clock;

    static ToastClock &shared()
    {
        static QPointer<ToastClock> clock;
        if (!clock)
            clock = new ToastClock;
        return *clock;
    }

    // It outlives the clock, as a toast may outlive the application object.
    static ToastTimer::Deadlines &deadlines()
    {
        static auto &deadlines = *new ToastTimer::Deadlines;
        return deadlines;
    }

    void set()
    {
        if (deadlines().empty()) {
            m_timer.stop();
            return;
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadlines().begin()->first - Time::now());
        m_timer.start(int(std::max<qint64>(left.count(), 0)), Qt::PreciseTimer, this);
    }

protected:
    void timerEvent(QTimerEvent *) override
    {
        const auto now = Time::now();
        while (!deadlines().empty() && deadlines().begin()->first <= now) {
            ToastTimer *timer = deadlines().begin()->second;
            timer->stop();
            emit timer->timeout();
        }
        set();
    }

private:
    ToastClock() : QObject(qApp) {}

    QBasicTimer m_timer;
};

ToastTimer::ToastTimer(QWidget *toast) : QObject(toast) {}

ToastTimer::~ToastTimer()
{
    stop();
}

void ToastTimer::start(int milliseconds)
{
    stop();
    m_interval = milliseconds;
    const auto end = ToastClock::Time::now() + std::chrono::milliseconds(milliseconds);
    m_deadline = ToastClock::deadlines().emplace(end, this);
    m_isActive = true;
    if (m_deadline == ToastClock::deadlines().begin())
        ToastClock::shared().set();
}

void ToastTimer::stop()
{
    // The clock may go off for nobody then, and sets itself anew.
    if (std::exchange(m_isActive, false))
        ToastClock::deadlines().erase(m_deadline);
}

} // namespace zelkam
