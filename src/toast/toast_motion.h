#pragma once

#include <optional>

class QWidget;

namespace zelkam {

/// Whether nothing moves in `widget`: fades and slides are over at once, and what turns pulses
/// instead. Callbacks still come from the event loop and in the same order, only sooner.
///
/// By default the style of the widget decides, or that of the application for a null widget,
/// through QStyle::SH_Widget_Animation_Duration: the desktop styles set it to 0 where the user has
/// switched animations off. Main thread only.
bool isMotionReduced(const QWidget *widget = nullptr);

/// Overrides the style for the whole process, screens included; std::nullopt gives the word back
/// to it. What moves at the moment goes on as it began.
void setMotionReduced(std::optional<bool> reduced);

/// How strongly to draw, from 0 to 1, what would have made `turns` turns by now if motion were not
/// reduced. It takes two turns to fade and come back.
double pulseOpacity(double turns);

} // namespace zelkam
