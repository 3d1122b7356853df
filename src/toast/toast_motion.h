#pragma once

#include <optional>

class QWidget;

namespace zelkam {

/// Whether fades and the spinner stand still for the views of `host`. Callbacks then still come
/// from the event loop and in the same order, only sooner.
///
/// By default the host's style decides, through QStyle::SH_Widget_Animation_Duration: the desktop
/// styles set it to 0 where the user has switched animations off.
bool isMotionReduced(const QWidget *host);

/// Overrides the style for the whole process; std::nullopt gives the word back to it.
void setMotionReduced(std::optional<bool> reduced);

} // namespace zelkam
