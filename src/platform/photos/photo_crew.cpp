#include "platform/photos/photo_crew.h"

#include <algorithm>
#include <optional>
#include <pthread.h>
#include <time.h>
#include <utility>

namespace zelkam {

namespace {

using Clock = std::chrono::steady_clock;

/// How many of the threads that wait for something, and of those whose work was given up, get a
/// stand-in. The first are mostly only slow.
constexpr size_t mostBlocked = 8;
constexpr size_t mostLate = 64;

/// How many limits work may wait for a thread while all of them hang.
constexpr int rounds = 3;

} // namespace

struct PhotoCrew::Job
{
    enum Standing { busy, blocked, late };

    Work work;
    Work givenUp;
    Clock::time_point since = Clock::now(); ///< when it began to wait, or to run
    clockid_t processorClock = {};
    std::optional<std::chrono::nanoseconds> processorTime; ///< at the last look
    Standing standing = busy;

    void begin()
    {
        since = Clock::now();
        ::pthread_getcpuclockid(::pthread_self(), &processorClock);
    }

    bool isOver(std::chrono::nanoseconds limit, Clock::time_point now) const
    {
        return now - since >= limit;
    }

    /// Between two looks, a thread that computes uses the processor, though it may have to share
    /// it, and one that waits uses next to nothing.
    void judge()
    {
        constexpr std::chrono::milliseconds nextToNothing{1};
        timespec used = {};
        if (::clock_gettime(processorClock, &used) != 0)
            return;
        const auto now = std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
        if (processorTime)
            standing = now - *processorTime < nextToNothing ? blocked : busy;
        processorTime = now;
    }
};

PhotoCrew::PhotoCrew(void (*prepareThread)())
    : m_prepareThread(prepareThread),
      m_size(std::clamp(std::thread::hardware_concurrency(), 2U, 4U))
{
}

PhotoCrew::~PhotoCrew() = default;

void PhotoCrew::start(Work work, Work givenUp)
{
    const std::lock_guard lock(m_mutex);
    m_waiting.push_back(std::make_shared<Job>());
    m_waiting.back()->work = std::move(work);
    m_waiting.back()->givenUp = std::move(givenUp);
    fill();
    m_wake.notify_one();
}

size_t PhotoCrew::count(int standing) const
{
    return size_t(std::count_if(m_running.cbegin(), m_running.cend(),
                                [standing](const auto &job) { return job->standing == standing; }));
}

size_t PhotoCrew::allowed() const
{
    return m_size + std::min(count(Job::blocked), mostBlocked) +
           std::min(count(Job::late), mostLate);
}

void PhotoCrew::fill()
{
    joinEnded();
    while (m_threads.size() < allowed() && m_threads.size() < m_running.size() + m_waiting.size()) {
        std::thread thread([self = shared_from_this()] { self->run(); });
        const auto id = thread.get_id();
        m_threads.emplace(id, std::move(thread));
    }
}

// They need the lock no more, so this waits for next to nothing.
void PhotoCrew::joinEnded()
{
    for (std::thread &thread : m_ended)
        thread.join();
    m_ended.clear();
}

void PhotoCrew::run()
{
    if (m_prepareThread)
        m_prepareThread();
    std::unique_lock lock(m_mutex);
    while (const std::shared_ptr<Job> job = next(lock)) {
        lock.unlock();
        job->work();
        job->work = nullptr;
        lock.lock();
        std::erase(m_running, job);
    }
    if (auto own = m_threads.extract(std::this_thread::get_id()))
        m_ended.push_back(std::move(own.mapped()));
    m_threadEnded.notify_all();
}

/// Waits for work. Nothing when the thread is to end: at the end of all, and when the one that it
/// stood in for has come back.
std::shared_ptr<PhotoCrew::Job> PhotoCrew::next(std::unique_lock<std::mutex> &lock)
{
    if (m_threads.size() > allowed())
        return nullptr;
    m_wake.wait(lock, [this] { return m_isDismissed || !m_waiting.empty(); });
    if (m_isDismissed)
        return nullptr;
    const auto job = std::move(m_waiting.front());
    m_waiting.pop_front();
    job->begin();
    m_running.push_back(job);
    return job;
}

PhotoCrew::Look PhotoCrew::look(std::chrono::nanoseconds limit)
{
    Look result;
    std::vector<std::shared_ptr<Job>> dropped; // destroyed after the lock is released
    const auto now = Clock::now();
    const auto giveUp = [&result](Job &job) {
        if (const Work givenUp = std::exchange(job.givenUp, nullptr))
            result.givenUp.push_back(givenUp);
    };
    const std::lock_guard lock(m_mutex);
    for (const auto &job : m_running) {
        if (job->standing == Job::late)
            continue;
        job->judge();
        if (job->isOver(limit, now)) {
            job->standing = Job::late;
            giveUp(*job);
        }
    }
    const size_t hanging = count(Job::blocked) + count(Job::late);
    while (hanging == m_threads.size() && !m_waiting.empty() &&
           m_waiting.front()->isOver(rounds * limit, now)) {
        giveUp(*m_waiting.front());
        dropped.push_back(std::move(m_waiting.front()));
        m_waiting.pop_front();
    }
    fill();
    result.goesOn = count(Job::late) < m_running.size() || !m_waiting.empty();
    return result;
}

void PhotoCrew::dismiss(std::chrono::milliseconds patience)
{
    std::deque<std::shared_ptr<Job>> dropped; // destroyed after the lock is released
    std::unique_lock lock(m_mutex);
    m_isDismissed = true;
    dropped.swap(m_waiting);
    m_wake.notify_all();
    m_threadEnded.wait_for(lock, patience, [this] { return m_threads.size() == count(Job::late); });
    joinEnded();
    for (auto &[id, thread] : m_threads)
        thread.detach();
    m_threads.clear();
}

} // namespace zelkam
