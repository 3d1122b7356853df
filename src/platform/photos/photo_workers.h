#pragma once

#include <atomic>
#include <chrono>
#include <functional>

namespace zelkam {

/// What a worker tells about the file that it reads.
class PhotoReading
{
public:
    /// Nothing of the file is needed any more: from here on the work may take as long as it takes.
    void end() { m_isOver = true; }
    bool isOver() const { return m_isOver; }

private:
    std::atomic_bool m_isOver = false;
};

/// Threads that read pictures, and wait for what is made of them.
///
/// A picture may lie where nothing answers any more (a network folder whose server is gone), and
/// no read of it can be ended from outside. So a thread that waits for its file gets a stand-in
/// after a moment, within bounds, and work that has not read its file in the time limit is given
/// up.
///
/// Main thread only.
class PhotoWorkers
{
public:
    /// Thumbnails do not stand in the way of what a person waits for.
    enum class Kind { requested, thumbnail };

    using Work = std::function<void(PhotoReading &reading)>;

    /// @param work     runs on a worker thread; it must not throw
    /// @param givenUp  runs on the main thread, once, if the file is not read in the time limit.
    /// The
    ///                 work may end all the same, before or after: whoever gives both takes what
    ///                 comes first.
    static void start(Work work, Kind kind, std::function<void()> givenUp = {});

    static constexpr std::chrono::seconds defaultTimeLimit{30};
    static void setTimeLimit(std::chrono::milliseconds limit);
};

} // namespace zelkam
