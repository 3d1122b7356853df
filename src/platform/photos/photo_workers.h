#pragma once

#include <functional>

namespace zelkam {

/// The threads that decode and encode pictures: as many as there are processors, at most four.
/// They end with the application object: work that has not begun by then is dropped.
class PhotoWorkers
{
public:
    /// What a person waits for runs on threads of its own. Thumbnails give way to everything else
    /// on the machine, so that the grid scrolls smoothly while they are made.
    enum class Kind { requested, thumbnail };

    /// Main thread. The work runs on a worker thread and must not throw.
    static void start(std::function<void()> work, Kind kind);
};

} // namespace zelkam
