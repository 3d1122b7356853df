#pragma once

#include <QObject>
#include <memory>

namespace zelkam {

/// Keeps an object until the event loop is reached, for an owner that lets go of what may be on
/// the call stack. What is kept when the application object goes is released before it, as
/// widgets must be. Main thread.
void releaseLater(std::shared_ptr<QObject> object);

} // namespace zelkam
