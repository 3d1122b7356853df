#pragma once

#include <functional>

namespace zelkam {

/// The threads that decode and encode pictures: as many as there are processors, at most four,
/// at a lower priority than the one that draws the screens. They end with the application object:
/// work that has not begun by then is dropped.
class PhotoWorkers
{
public:
    /// Work of a higher urgency begins before what waits with a lower one.
    enum class Urgency { background = 0, visible = 1, requested = 2 };

    /// Main thread. The work runs on a worker thread and must not throw.
    static void start(std::function<void()> work, Urgency urgency);
};

} // namespace zelkam
