#pragma once

#include <QByteArray>
#include <optional>

namespace zelkam {

/// An SVG that is safe to hand to a renderer, which would open what it refers to: without document
/// type (its entities), scripts, and references that lead out of the file. Raster images that it
/// holds are decoded here, up to 16 million pixels in all, and are put back as PNG; what cannot be
/// decoded so is left out.
///
/// Nothing when it is no SVG or is not well-formed. How much there is to draw is not looked at.
std::optional<QByteArray> harmlessSvg(const QByteArray &svg);

} // namespace zelkam
