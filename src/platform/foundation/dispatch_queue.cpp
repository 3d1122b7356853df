#include "platform/foundation/dispatch_queue.h"

#include <QCoreApplication>
#include <QThread>
#include <QThreadPool>
#include <deque>
#include <mutex>
#include <utility>

namespace zelkam {

namespace {

/// The threads of all background queues. Sized for work that waits for a disk, not for
/// processors: one slow queue must not hold up the others.
class BackgroundPool : public QThreadPool
{
public:
    BackgroundPool()
    {
        setMaxThreadCount(64);
        setExpiryTimeout(5000);
    }
};

BackgroundPool &backgroundPool()
{
    static BackgroundPool pool;
    return pool;
}

} // namespace

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
        backgroundPool().start([self = shared_from_this()] { self->drain(); });
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
    else if (auto *application = QCoreApplication::instance())
        QMetaObject::invokeMethod(application, std::move(work), Qt::QueuedConnection);
}

bool isMainThread()
{
    const auto *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace zelkam
