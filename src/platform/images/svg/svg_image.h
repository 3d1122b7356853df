#pragma once

#include "platform/images/image_decoding.h"

namespace zelkam {

/// Whether bytes may be an SVG: of no more than 4 MiB, with its first element near the start.
bool looksLikeSvg(const QByteArray &data);

/// Draws an SVG that may come from anywhere, with what svg_guard.h leaves of it, within a second
/// or two and the memory of ImageLimits. Nothing for one that needs more, and for what is none.
/// Any thread.
///
/// @param target  chooses the size to draw at by the one that it asks for; 512 by 512 when it asks
///                for none
std::optional<QImage> drawSvg(const QByteArray &data, const ImageTarget &target);

} // namespace zelkam
