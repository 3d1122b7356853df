#pragma once

#include "platform/ui/ui_activity.h"

#include <memory>

namespace zelkam {

/// What a Linux device can do with a file: open it in another application, save a copy, copy the
/// file to the clipboard, send it by e-mail, show it in its folder. In this order.
QList<std::shared_ptr<UIActivity>> systemActivities();

} // namespace zelkam
