#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace zelkam {

/// A number of threads and the work that waits for them. Threads that hang do not count, within
/// bounds; look() finds them. Not Qt's pool, as the thread sanitizer sees no hand-over of work in
/// there, and its end waits for ever.
///
/// Made by std::make_shared: its threads hold it too, so that it outlives the ones that hang.
class PhotoCrew : public std::enable_shared_from_this<PhotoCrew>
{
public:
    using Work = std::function<void()>;

    /// @param prepareThread  runs first on every thread; may be null
    explicit PhotoCrew(void (*prepareThread)());
    ~PhotoCrew();

    void start(Work work, Work givenUp);

    struct Look
    {
        std::vector<Work> givenUp; ///< to be run by the caller
        bool goesOn = false;       ///< whether there is anything left to look at
    };
    /// To be called again and again while there is work: finds the threads that wait for
    /// something, gives them stand-ins, and gives up what has taken longer than the limit.
    Look look(std::chrono::nanoseconds limit);

    /// Drops what has not begun, and lets the threads end. Does not wait for those whose work was
    /// given up, and for the others no longer than this.
    void dismiss(std::chrono::milliseconds patience);

private:
    struct Job;

    void run();
    std::shared_ptr<Job> next(std::unique_lock<std::mutex> &lock);
    void fill();
    void joinEnded();
    size_t count(int standing) const;
    size_t allowed() const;

    void (*m_prepareThread)();
    const size_t m_size;

    std::mutex m_mutex; // guards the following
    std::condition_variable m_wake;
    std::condition_variable m_threadEnded;
    std::deque<std::shared_ptr<Job>> m_waiting;
    std::vector<std::shared_ptr<Job>> m_running;
    std::map<std::thread::id, std::thread> m_threads;
    std::vector<std::thread> m_ended;
    bool m_isDismissed = false;
};

} // namespace zelkam
