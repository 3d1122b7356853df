#include "platform/photos/photo_workers.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <algorithm>
#include <sys/resource.h>
#include <utility>

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

WorkerPool *pool(PhotoWorkers::Kind kind)
{
    static QPointer<WorkerPool> pools[2];
    QPointer<WorkerPool> &workers = pools[kind == PhotoWorkers::Kind::requested ? 0 : 1];
    if (!workers && QCoreApplication::instance())
        workers = new WorkerPool(QCoreApplication::instance());
    return workers;
}

/// On Linux every thread has a priority of its own; Qt's thread priorities have no effect there.
void giveWay()
{
    thread_local bool done = false;
    constexpr int nicer = 10;
    if (!std::exchange(done, true))
        ::setpriority(PRIO_PROCESS, 0, nicer);
}

} // namespace

void PhotoWorkers::start(std::function<void()> work, Kind kind)
{
    WorkerPool *const workers = pool(kind);
    if (!workers)
        return;
    workers->start([work = std::move(work), kind] {
        if (kind == Kind::thumbnail)
            giveWay();
        work();
    });
}

} // namespace zelkam
