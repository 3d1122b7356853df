#pragma once

#include "platform/decoding/image_decoding.h"

namespace zelkam {

/// Draws an SVG, without document type, scripts and references that lead out of it. Nothing for
/// what is none. In the decoder process only: a hundred bytes can ask for hours.
///
/// @param target  chooses the size to draw at by the one that it asks for; 512 by 512 when it asks
///                for none
std::optional<QImage> drawSvg(const QByteArray &data, const ImageTarget &target);

} // namespace zelkam
