#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <optional>

namespace zelkam {

/// Decoding of raster images that come from anywhere: what an image claims about itself is
/// checked before its decoder is let near it.

/// Qt's name of the raster format that the bytes begin with: jpeg, png, gif, bmp, webp, tiff, ico,
/// heic. Empty for everything else, vector images and documents among it, whatever plug-ins are
/// installed. Sixteen bytes are enough.
QByteArray rasterFormat(const QByteArray &head);

/// What a decoder may take.
struct ImageLimits
{
    qint64 pixelBytes = 256LL << 20;       ///< of the decoded image, four bytes a pixel
    qint64 progressiveBytes = 512LL << 20; ///< with the coefficients of a progressive JPEG
    /// Work on a progressive JPEG: every scan passes over all pixels, however short it is.
    qint64 scanPixels = 1200LL * 1000 * 1000;
    int scans = 256;
};

/// Decodes one image (of an animation the first), upright. Nothing for what is no raster image,
/// breaks a limit, is cut short or corrupt. Any thread; takes up to a second or two.
///
/// @param maximumEdge  when the image is larger, it is scaled down to this while it is decoded;
///                     0 keeps its size
std::optional<QImage> decodeImage(const QByteArray &data, int maximumEdge = 0,
                                  const ImageLimits &limits = {});

/// The size of the whole image, upright, from its header; empty when it cannot be told.
QSize imageSize(const QByteArray &data);

} // namespace zelkam
