#pragma once

#include <QObject>
#include <QWidget>

#include <chrono>
#include <map>

namespace zelkam {

/// Runs out once and then sends its toast away. Belongs to the toast. Main thread only.
///
/// It is no QTimer: Qt looks through a list of all its timers whenever one of them ends, and
/// thousands that end together would keep the screen from answering. All toasts share one of those.
class ToastTimer : public QObject
{
    Q_OBJECT

public:
    /// The running timers by the time at which they run out, and by their start where that is one.
    using Deadlines = std::multimap<std::chrono::steady_clock::time_point, ToastTimer *>;

    explicit ToastTimer(QWidget *toast);
    ~ToastTimer() override;

    QWidget *userInfo() const { return qobject_cast<QWidget *>(parent()); }

    /// Starts it, from the beginning where it runs already.
    void start(int milliseconds);
    void stop();
    bool isActive() const { return m_isActive; }
    int interval() const { return m_interval; }

signals:
    void timeout();

private:
    friend class ToastClock;

    int m_interval = 0;
    bool m_isActive = false;
    Deadlines::iterator m_deadline; ///< while it is active
};

} // namespace zelkam
