#include "platform/foundation/dispatch_group.h"

#include <mutex>
#include <utility>
#include <vector>

namespace zelkam {

struct DispatchGroup::State
{
    struct Notification
    {
        DispatchQueue &queue;
        DispatchQueue::Work work;
    };

    std::mutex mutex;
    int entered = 0;
    std::vector<Notification> waiting;
};

DispatchGroup::DispatchGroup() : m_state(std::make_shared<State>()) {}

void DispatchGroup::enter()
{
    const std::lock_guard lock(m_state->mutex);
    ++m_state->entered;
}

void DispatchGroup::leave()
{
    std::vector<State::Notification> due;
    {
        const std::lock_guard lock(m_state->mutex);
        if (--m_state->entered == 0)
            std::swap(due, m_state->waiting);
    }
    for (State::Notification &notification : due)
        notification.queue.async(std::move(notification.work));
}

void DispatchGroup::notify(DispatchQueue &queue, DispatchQueue::Work work)
{
    {
        const std::lock_guard lock(m_state->mutex);
        if (m_state->entered > 0) {
            m_state->waiting.push_back({queue, std::move(work)});
            return;
        }
    }
    queue.async(std::move(work));
}

} // namespace zelkam
