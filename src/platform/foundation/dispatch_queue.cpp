#include "platform/foundation/dispatch_queue.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QThread>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <pthread.h>
#include <thread>
#include <utility>

namespace zelkam {

namespace {

/// The threads of all background queues. Sized for work that waits for a disk, not for
/// processors: one slow queue must not hold up the others. Not Qt's pool, as the thread sanitizer
/// cannot see into that and would report every queue that it runs.
class BackgroundPool
{
public:
    BackgroundPool() = default;
    Q_DISABLE_COPY_MOVE(BackgroundPool)

    /// Waits for all work, queued work included.
    ~BackgroundPool()
    {
        std::unique_lock lock(m_mutex);
        m_isEnding = true;
        m_workCame.notify_all();
        m_threadEnded.wait(lock, [this] { return m_threads.empty(); });
        joinEndedThreads();
    }

    void start(DispatchQueue::Work work)
    {
        const std::lock_guard lock(m_mutex);
        joinEndedThreads();
        m_work.push_back(std::move(work));
        if (m_idle >= m_work.size() || m_threads.size() == maxThreads) {
            m_workCame.notify_one();
            return;
        }
        const auto place = m_threads.emplace(m_threads.end());
        try {
            *place = std::thread(&BackgroundPool::run, this, place);
        } catch (...) { // no memory, or no thread
            m_threads.erase(place);
            if (!m_threads.empty())
                return; // the others get to the work
            m_work.pop_back();
            throw;
        }
    }

private:
    static constexpr std::size_t maxThreads = 64;
    static constexpr std::chrono::seconds idleTime{5};

    void run(std::list<std::thread>::iterator place)
    {
        ::pthread_setname_np(::pthread_self(), "zelkam-work"); // not that of its creator
        std::unique_lock lock(m_mutex);
        const auto hasWorkOrEnds = [this] { return !m_work.empty() || m_isEnding; };
        for (;;) {
            ++m_idle;
            m_workCame.wait_for(lock, idleTime, hasWorkOrEnds);
            --m_idle;
            if (m_work.empty())
                break;
            DispatchQueue::Work work = std::move(m_work.front());
            m_work.pop_front();
            lock.unlock();
            work();
            work = nullptr;
            lock.lock();
        }
        m_ended.splice(m_ended.end(), m_threads, place);
        m_threadEnded.notify_all();
    }

    // They need the lock no more, so this waits for next to nothing.
    void joinEndedThreads()
    {
        for (std::thread &thread : m_ended)
            thread.join();
        m_ended.clear();
    }

    std::mutex m_mutex; // guards all
    std::condition_variable m_workCame;
    std::condition_variable m_threadEnded;
    std::deque<DispatchQueue::Work> m_work;
    std::list<std::thread> m_threads;
    std::list<std::thread> m_ended;
    std::size_t m_idle = 0;
    bool m_isEnding = false;
};

BackgroundPool &backgroundPool()
{
    static BackgroundPool pool;
    return pool;
}

/// The work of the main queue. It is kept here, and not in the events that lead to it: events that
/// are left over are destroyed under a lock of Qt's, and what a piece of work holds (a screen, say)
/// may need that lock to go.
///
/// One event of Qt's leads to each piece, and Qt delivers all events that are there in one turn of
/// the event loop. A turn that has lasted too long leaves the rest to a timer, so that a touch does
/// not wait for a thousand pieces.
class MainQueue
{
public:
    static MainQueue &instance()
    {
        static MainQueue queue;
        return queue;
    }

    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
    }

    /// Drops what was not run, while the application object can still serve its destruction.
    void close()
    {
        std::deque<DispatchQueue::Work> dropped; // destroyed after the lock is released
        const std::lock_guard lock(m_mutex);
        m_isOpen = false;
        m_left = 0;
        dropped.swap(m_pending);
    }

    void async(DispatchQueue::Work work)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isOpen)
            return;
        m_pending.push_back(std::move(work));
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [this] { handleEvent(); }, Qt::QueuedConnection);
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds longestTurn{8};

    /// Runs what the events have left. A child of the application object.
    class NextTurn : public QObject
    {
    public:
        explicit NextTurn(MainQueue &queue) : QObject(QCoreApplication::instance()), m_queue(queue)
        {
            // A timer without an interval would wait until nothing else is to be done.
            m_timer.start(1, this);
        }

    protected:
        void timerEvent(QTimerEvent *) override
        {
            m_queue.m_turnBegan = Clock::now();
            while (m_queue.m_left > 0 && !m_queue.isTurnOver()) {
                --m_queue.m_left;
                m_queue.runNext();
            }
            if (m_queue.m_left == 0) {
                m_timer.stop();
                deleteLater();
            }
        }

    private:
        MainQueue &m_queue;
        QBasicTimer m_timer;
    };

    bool isTurnOver() const { return Clock::now() - m_turnBegan > longestTurn; }

    void handleEvent()
    {
        // What comes after a while comes in another turn.
        if (Clock::now() - m_lastEnd > std::chrono::milliseconds(1))
            m_turnBegan = Clock::now();
        if (m_left == 0 && !isTurnOver())
            runNext();
        else if (m_left++ == 0)
            new NextTurn(*this);
    }

    void runNext()
    {
        DispatchQueue::Work work;
        {
            const std::lock_guard lock(m_mutex);
            if (m_pending.empty())
                return;
            work = std::move(m_pending.front());
            m_pending.pop_front();
        }
        work();
        m_lastEnd = Clock::now();
    }

    std::mutex m_mutex; // guards the next two
    std::deque<DispatchQueue::Work> m_pending;
    bool m_isOpen = false;
    // Of the main thread.
    Clock::time_point m_turnBegan;
    Clock::time_point m_lastEnd;
    qsizetype m_left = 0; ///< pieces whose events came when a turn was over
};

void openMainQueue()
{
    MainQueue::instance().open();
    qAddPostRoutine([] { MainQueue::instance().close(); });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(openMainQueue)

struct DispatchQueue::Serial : std::enable_shared_from_this<Serial>
{
    std::mutex mutex;
    std::deque<Work> pending;
    bool running = false;

    void async(Work work)
    {
        {
            const std::lock_guard lock(mutex);
            pending.push_back(std::move(work));
            if (std::exchange(running, true))
                return;
        }
        try {
            backgroundPool().start([self = shared_from_this()] { self->drain(); });
        } catch (...) { // no memory, or no thread: the next work starts the queue
            const std::lock_guard lock(mutex);
            running = false;
            throw;
        }
    }

    void drain()
    {
        for (;;) {
            Work work;
            {
                const std::lock_guard lock(mutex);
                if (pending.empty()) {
                    running = false;
                    return;
                }
                work = std::move(pending.front());
                pending.pop_front();
            }
            work();
        }
    }
};

DispatchQueue::DispatchQueue() : m_serial(std::make_shared<Serial>()) {}
DispatchQueue::DispatchQueue(std::shared_ptr<Serial> serial) : m_serial(std::move(serial)) {}
DispatchQueue::~DispatchQueue() = default;

DispatchQueue &DispatchQueue::main()
{
    static DispatchQueue queue(nullptr);
    return queue;
}

void DispatchQueue::async(Work work)
{
    if (m_serial)
        m_serial->async(std::move(work));
    else
        MainQueue::instance().async(std::move(work));
}

bool isMainThread()
{
    const auto *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace zelkam
