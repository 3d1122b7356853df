#pragma once

#include <QImage>
#include <QSize>
#include <array>

namespace zelkam {

/// Smoothly scales to a size, whatever form the pixels have.
QImage stretchedImage(QImage image, QSize size);

/// The longest edges that the Thumbnail Managing Standard of freedesktop.org knows, in pixels.
constexpr std::array<int, 4> thumbnailEdges{128, 256, 512, 1024};

/// The size at which a picture's thumbnail is stored: one of the standard's, by which its shorter
/// edge gets at least the given length, or the largest. A picture that is no larger keeps its own
/// size, and is not worth storing.
QSize storedThumbnailSize(QSize picture, int coveringEdge);

} // namespace zelkam
