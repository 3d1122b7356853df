#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

namespace zelkam {

/// Encodes an opaque image of 32 bits as JPEG, with its colour space and its resolution and nothing
/// else. From a quality of 90 up every pixel keeps its own colour; below, four share one, as the
/// eye asks for no more. Nothing when there is no memory for it.
///
/// @param quality  0 to 100
std::optional<QByteArray> encodeJpeg(const QImage &image, int quality);

} // namespace zelkam
