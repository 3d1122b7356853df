#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace zelkam {

/// A first-in-first-out queue of work: the main queue, or a serial queue in the background.
///
/// The main queue runs its work on the thread of the application object, from its event loop, and
/// gives way to other events when much of it waits.
/// A background queue runs one piece of work at a time, in the order given, on some thread of a
/// pool that all background queues share; queues that have nothing to do hold no thread.
///
/// Work is never run by the call that queues it, not even on the queue's own thread.
class DispatchQueue
{
public:
    using Work = std::function<void()>;

    /// The queue of the user-interface thread. Work queued when there is no application object
    /// (before it is made, or while the program ends) is dropped.
    static DispatchQueue &main();

    /// A serial background queue. The object is a handle: work that was queued is run even when
    /// the handle is destroyed before.
    DispatchQueue();
    ~DispatchQueue();
    DispatchQueue(const DispatchQueue &) = delete;
    DispatchQueue &operator=(const DispatchQueue &) = delete;

    /// Queues work and returns at once. From any thread. The work must not throw.
    void async(Work work);

private:
    struct Serial;
    explicit DispatchQueue(std::shared_ptr<Serial> serial);
    std::shared_ptr<Serial> m_serial; // absent for the main queue
};

/// Whether the caller is on the thread of the application object.
bool isMainThread();

} // namespace zelkam
