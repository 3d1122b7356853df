#pragma once

#include <functional>

namespace zelkam {

/// Runs the work from the event loop: all work in the order given, a few pieces in each turn. For
/// what thousands of toasts may ask for at once, so that a touch does not wait for them.
void runInTurn(std::function<void()> work);

} // namespace zelkam
