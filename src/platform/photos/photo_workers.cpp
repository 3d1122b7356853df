#include "platform/photos/photo_workers.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/photos/photo_crew.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QPointer>
#include <QTimerEvent>
#include <malloc.h>
#include <unistd.h>
#include <utility>

namespace zelkam {

namespace {

std::chrono::milliseconds &timeLimit()
{
    static std::chrono::milliseconds limit = PhotoWorkers::defaultTimeLimit;
    return limit;
}

/// On Linux every thread has a priority of its own; Qt's thread priorities have no effect there.
/// Counted from the program's own, which may give way already.
void giveWay()
{
    constexpr int nicer = 10;
    [[maybe_unused]] const int now = ::nice(nicer);
}

/// Looks after a crew while it has something to do, and dismisses it at the end.
class WorkerPool : public QObject
{
public:
    WorkerPool(PhotoWorkers::Kind kind, QObject *parent)
        : QObject(parent),
          m_crew(std::make_shared<PhotoCrew>(kind == PhotoWorkers::Kind::thumbnail ? giveWay
                                                                                   : nullptr))
    {
    }

    ~WorkerPool() override { m_crew->dismiss(std::chrono::seconds(2)); }

    void start(std::function<void()> work, std::function<void()> givenUp)
    {
        m_crew->start(std::move(work), std::move(givenUp));
        constexpr int looks = 15;
        const int interval = int(timeLimit().count()) / looks;
        if (!m_looks.isActive() || interval != std::exchange(m_interval, interval))
            m_looks.start(interval, this);
    }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        if (event->timerId() != m_looks.timerId())
            return;
        auto look = m_crew->look(timeLimit());
        if (!look.goesOn) {
            m_looks.stop();
            // What decoders took lies in the heaps of their threads; the next pick may be hours
            // away.
            DispatchQueue().async([] { ::malloc_trim(0); });
        }
        for (const auto &tell : look.givenUp)
            tell();
    }

private:
    std::shared_ptr<PhotoCrew> m_crew;
    QBasicTimer m_looks;
    int m_interval = 0; ///< of the looks, in milliseconds
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

void PhotoWorkers::start(std::function<void()> work, Kind kind, std::function<void()> givenUp)
{
    if (WorkerPool *const workers = pool(kind))
        workers->start(std::move(work), std::move(givenUp));
}

void PhotoWorkers::setTimeLimit(std::chrono::milliseconds limit)
{
    timeLimit() = limit;
}

} // namespace zelkam
