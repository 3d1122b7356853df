#include "platform/photos/photo_workers.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <malloc.h>
#include <memory>

namespace zelkam {

namespace {

/// One more than there are decoders, so that the next file is read meanwhile.
constexpr int mostRunning = 3;
constexpr int mostHanging = 32;

std::chrono::milliseconds &timeLimit()
{
    static std::chrono::milliseconds limit = PhotoWorkers::defaultTimeLimit;
    return limit;
}

class WorkerPool : public QObject
{
public:
    using QObject::QObject;

    void start(PhotoWorkers::Work work, std::function<void()> givenUp)
    {
        const auto job = std::make_shared<Job>();
        job->work = std::move(work);
        job->givenUp = std::move(givenUp);
        m_waiting.push_back(job);
        startNext();
    }

private:
    struct Job
    {
        PhotoWorkers::Work work;
        std::function<void()> givenUp;
        PhotoReading reading;
        bool hangs = false;
        bool isOver = false;
    };

    void startNext()
    {
        while (!m_waiting.empty() && m_running < mostRunning) {
            begin(m_waiting.front());
            m_waiting.pop_front();
        }
        // What was read lies in the heap; the next pick may be hours away.
        if (m_running == 0 && m_hanging == 0)
            DispatchQueue().async([] { ::malloc_trim(0); });
    }

    void begin(const std::shared_ptr<Job> &job)
    {
        ++m_running;
        const std::chrono::milliseconds limit = timeLimit();
        constexpr std::chrono::milliseconds usual(250);
        QTimer::singleShot(usual, this, [this, job] { findHanging(*job); });
        QTimer::singleShot(limit, this, [this, job] { giveUp(*job); });
        runInBackground([job, pool = QPointer(this)]() mutable {
            job->work(job->reading);
            job->reading.end();
            // What the work holds is let go of on the main thread.
            DispatchQueue::main().async([job = std::move(job), pool] {
                if (pool)
                    pool->end(*job);
            });
        });
    }

    void findHanging(Job &job)
    {
        if (job.isOver || job.reading.isOver() || m_hanging == mostHanging)
            return;
        job.hangs = true;
        ++m_hanging;
        --m_running;
        startNext();
    }

    void giveUp(Job &job)
    {
        if (job.isOver || job.reading.isOver())
            return;
        release(job);
        if (job.givenUp)
            std::exchange(job.givenUp, nullptr)();
        startNext();
    }

    void end(Job &job)
    {
        if (!job.isOver)
            release(job);
        job.work = nullptr; // the timers hold the job for longer than it holds others
        job.givenUp = nullptr;
        startNext();
    }

    void release(Job &job)
    {
        job.isOver = true;
        --(job.hangs ? m_hanging : m_running);
    }

    std::deque<std::shared_ptr<Job>> m_waiting;
    int m_running = 0;
    int m_hanging = 0; ///< in reading: each has a stand-in
};

WorkerPool *pool(PhotoWorkers::Kind kind)
{
    static QPointer<WorkerPool> pools[2];
    QPointer<WorkerPool> &workers = pools[kind == PhotoWorkers::Kind::requested ? 0 : 1];
    if (!workers && QCoreApplication::instance())
        workers = new WorkerPool(QCoreApplication::instance());
    return workers;
}

} // namespace

void PhotoWorkers::start(Work work, Kind kind, std::function<void()> givenUp)
{
    if (WorkerPool *const workers = pool(kind))
        workers->start(std::move(work), std::move(givenUp));
}

void PhotoWorkers::setTimeLimit(std::chrono::milliseconds limit)
{
    timeLimit() = limit;
}

} // namespace zelkam
