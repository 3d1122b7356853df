#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <functional>
#include <optional>

namespace zelkam {

// Decoding of raster images that come from anywhere. In the decoder process only: how long it takes
// and how much memory is the process's business, and an image that is too much ends it.

/// Of the image as it is stored: also a decoder that scales reads all of it.
constexpr qint64 mostStoredPixels = 1LL << 28;

/// Chooses the size to decode at; given is the image's own, upright. The shape may be another. An
/// invalid size means that the image is not to be decoded.
using ImageTarget = std::function<QSize(QSize upright)>;

/// Decodes one image (of an animation the first), upright, scaled to a chosen size while it is
/// decoded where its decoder can. Nothing for what is no raster image, has more than
/// mostStoredPixels, is cut short or corrupt.
///
/// @param hurried  for thumbnails: a small version that lies beside the image may stand for it
std::optional<QImage> decodeImage(const QByteArray &data, const ImageTarget &target,
                                  bool hurried = false);

} // namespace zelkam
