#pragma once

#include "platform/images/image_decoding.h"

namespace zelkam {

/// Draws an SVG that may come from anywhere, with what svg_guard.h leaves of it, within a second
/// or two and the memory of ImageLimits. Nothing for one that needs more, and for what is none. How
/// long the text may be is up to the caller. Any thread.
///
/// @param target  chooses the size to draw at by the one that it asks for; 512 by 512 when it asks
///                for none
std::optional<QImage> drawSvg(const QByteArray &data, const ImageTarget &target);

} // namespace zelkam
