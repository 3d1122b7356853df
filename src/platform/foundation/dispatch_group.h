#pragma once

#include "platform/foundation/dispatch_queue.h"

#include <memory>

namespace zelkam {

/// Waits for the end of several pieces of work without blocking. Copies share one group. A group
/// that is let go while it was entered more often than left runs nothing. From any thread.
class DispatchGroup
{
public:
    DispatchGroup();

    void enter();
    /// Must follow an enter().
    void leave();

    /// Queues work for when the group has been left as often as entered: now, if it has been.
    void notify(DispatchQueue &queue, DispatchQueue::Work work);

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace zelkam
