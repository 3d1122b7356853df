#pragma once

#include "platform/images/ui_image.h"

#include <QByteArray>
#include <QSizeF>
#include <optional>

namespace zelkam {

// Images as files. What is encoded here holds pixels and their colour space, and nothing else: no
// place, no camera, no time. Any thread.

/// Encodes an image as JPEG. Transparent parts lie on white. From a quality of 0.9 up every pixel
/// keeps its own colour; below, four share one.
///
/// @param compressionQuality  0.0 (smallest) to 1.0 (best); what lies beyond, and no number at
///                            all, counts as the nearest of the two, the latter as 0
/// @return nothing when the image is larger than JPEG allows (65,535 in a direction)
std::optional<QByteArray> UIImageJPEGRepresentation(const UIImage &image,
                                                    double compressionQuality);

/// Encodes an image as PNG, without loss, with its transparency.
std::optional<QByteArray> UIImagePNGRepresentation(const UIImage &image);

/// The pixels of a drawing context of a size in points, at a scale of one: a fraction of a pixel
/// counts as a whole one. Nothing for a size that is not positive and finite, or whose pixels
/// would take more than 256 MiB: such a context cannot be made.
std::optional<QSize> drawingContextSize(double width, double height);

} // namespace zelkam
