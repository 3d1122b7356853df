#include "platform/images/image_memory.h"

#include "platform/images/image_decoding.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace zelkam {

namespace {

struct Pool
{
    std::mutex mutex;
    std::condition_variable freed;
    qint64 free = ImageLimits().heldBytes;
};

Pool &pool()
{
    static Pool &instance = *new Pool; // never destroyed: workers may outlive the program's statics
    return instance;
}

thread_local ImageMemoryShare *shareOfThread = nullptr;

} // namespace

ImageMemoryShare::ImageMemoryShare() : m_outer(shareOfThread)
{
    if (!m_outer)
        shareOfThread = this;
}

ImageMemoryShare::~ImageMemoryShare()
{
    if (m_outer)
        return;
    giveBack();
    shareOfThread = nullptr;
}

void ImageMemoryShare::reserve(qint64 bytes)
{
    if (m_outer) {
        m_outer->reserve(qMax(bytes, m_outer->m_bytes));
        return;
    }
    // Not while holding some already: two that wait for each other would wait for ever.
    giveBack();
    const qint64 wanted = qMin(bytes, ImageLimits().heldBytes);
    std::unique_lock lock(pool().mutex);
    pool().freed.wait(lock, [wanted] { return pool().free >= wanted; });
    pool().free -= wanted;
    m_bytes = wanted;
}

void ImageMemoryShare::giveBack()
{
    {
        const std::lock_guard lock(pool().mutex);
        pool().free += std::exchange(m_bytes, 0);
    }
    pool().freed.notify_all();
}

} // namespace zelkam
