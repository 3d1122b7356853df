#include "platform/photos/photo_workers.h"

#include <QCoreApplication>
#include <QPointer>
#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <sys/resource.h>
#include <thread>
#include <vector>

namespace zelkam {

namespace {

using Work = std::function<void()>;

/// On Linux every thread has a priority of its own; Qt's thread priorities have no effect there.
void giveWay()
{
    constexpr int nicer = 10;
    ::setpriority(PRIO_PROCESS, 0, nicer);
}

/// A fixed number of threads and the work that waits for them. Not Qt's pool, as the thread
/// sanitizer sees no hand-over of work in there.
class WorkerPool : public QObject
{
public:
    WorkerPool(PhotoWorkers::Kind kind, QObject *parent) : QObject(parent)
    {
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 2U, 4U);
        for (unsigned i = 0; i < count; ++i)
            m_threads.emplace_back([this, kind] {
                if (kind == PhotoWorkers::Kind::thumbnail)
                    giveWay();
                run();
            });
    }

    ~WorkerPool() override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ended = true;
            m_waiting.clear();
        }
        m_wake.notify_all();
        for (std::thread &thread : m_threads)
            thread.join();
    }

    void start(Work work)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_waiting.push_back(std::move(work));
        }
        m_wake.notify_one();
    }

private:
    void run()
    {
        while (const Work work = next())
            work();
    }

    /// Waits for work; empty at the end.
    Work next()
    {
        std::unique_lock lock(m_mutex);
        m_wake.wait(lock, [this] { return m_ended || !m_waiting.empty(); });
        if (m_ended)
            return {};
        Work work = std::move(m_waiting.front());
        m_waiting.pop_front();
        return work;
    }

    std::mutex m_mutex; // guards what waits and the end
    std::condition_variable m_wake;
    std::deque<Work> m_waiting;
    bool m_ended = false;
    std::vector<std::thread> m_threads;
};

WorkerPool *pool(PhotoWorkers::Kind kind)
{
    static QPointer<WorkerPool> pools[2];
    QPointer<WorkerPool> &workers = pools[kind == PhotoWorkers::Kind::requested ? 0 : 1];
    if (!workers && QCoreApplication::instance())
        workers = new WorkerPool(kind, QCoreApplication::instance());
    return workers;
}

} // namespace

void PhotoWorkers::start(std::function<void()> work, Kind kind)
{
    if (WorkerPool *const workers = pool(kind))
        workers->start(std::move(work));
}

} // namespace zelkam
