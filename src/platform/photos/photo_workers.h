#pragma once

#include <chrono>
#include <functional>

namespace zelkam {

/// The threads that read, decode and encode pictures: as many as there are processors, at most
/// four.
///
/// A picture may lie where nothing answers any more (a network folder whose server is gone), and
/// no read of it can be ended from outside. So a thread that waits gets a stand-in, within bounds,
/// and work that has not ended in the time limit is given up. The end of the application object
/// drops what has not begun, and waits for two seconds at most for what has.
///
/// Main thread only.
class PhotoWorkers
{
public:
    /// What a person waits for runs on threads of its own. Thumbnails give way to everything else
    /// on the machine, so that the grid scrolls smoothly while they are made.
    enum class Kind { requested, thumbnail };

    /// @param work     runs on a worker thread; it must not throw
    /// @param givenUp  runs on the main thread, once, if the work does not end in the time limit,
    ///                 or cannot even begin as all threads hang. The work may end all the same,
    ///                 before or after: whoever gives both takes what comes first.
    static void start(std::function<void()> work, Kind kind, std::function<void()> givenUp = {});

    /// More than the largest picture needs on a slow device.
    static constexpr std::chrono::seconds defaultTimeLimit{30};
    static void setTimeLimit(std::chrono::milliseconds limit);
};

} // namespace zelkam
