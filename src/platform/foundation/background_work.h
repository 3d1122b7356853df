#pragma once

#include <functional>

namespace zelkam {

/// Runs work on a thread of its own that nobody ever has to wait for. For what reads files that may
/// lie anywhere: a network folder that does not answer costs its thread, and neither a place in a
/// pool that others need nor the end of the program. When the application object goes, work that
/// still runs is given two seconds. From any thread.
void runInBackground(std::function<void()> work);

} // namespace zelkam
