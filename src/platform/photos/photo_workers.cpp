#include "platform/photos/photo_workers.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <sys/resource.h>

namespace zelkam {

namespace {

class WorkerPool : public QThreadPool
{
public:
    explicit WorkerPool(QObject *parent) : QThreadPool(parent)
    {
        constexpr int mostThreads = 4;
        setMaxThreadCount(std::clamp(QThread::idealThreadCount(), 2, mostThreads));
    }
    ~WorkerPool() override { clear(); }
};

WorkerPool *pool()
{
    static QPointer<WorkerPool> workers;
    if (!workers && QCoreApplication::instance())
        workers = new WorkerPool(QCoreApplication::instance());
    return workers;
}

/// On Linux every thread has a priority of its own; Qt's thread priorities have no effect there.
void yieldToScreens()
{
    thread_local bool done = false;
    constexpr int nicer = 5;
    if (!std::exchange(done, true))
        ::setpriority(PRIO_PROCESS, 0, nicer);
}

} // namespace

void PhotoWorkers::start(std::function<void()> work, Urgency urgency)
{
    WorkerPool *const workers = pool();
    if (!workers)
        return;
    workers->start(
        [work = std::move(work)] {
            yieldToScreens();
            work();
        },
        int(urgency));
}

} // namespace zelkam
