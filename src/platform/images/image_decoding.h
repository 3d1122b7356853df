#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <functional>
#include <optional>

namespace zelkam {

/// Decoding of raster images that come from anywhere: what an image claims about itself is
/// checked before its decoder is let near it.

/// Qt's name of the raster format that the bytes begin with: jpeg, png, gif, bmp, webp, tiff, ico,
/// heic, avif. Empty for everything else, vector images and documents among it, whatever plug-ins
/// are installed. Sixteen bytes are enough for all but an AVIF of a general brand.
QByteArray rasterFormat(const QByteArray &head);

/// What a decoder may take.
struct ImageLimits
{
    /// That are held at the same time for one image, from decoding to encoding it again; with the
    /// encoder's result they stay below 256 MiB.
    qint64 heldBytes = 240LL << 20;
    /// The same for a file that has the bytes of a photograph: one of each so many pixels. A few
    /// hundred bytes that unpack to as much are none.
    qint64 heldBytesOfPhoto = 512LL << 20;
    int pixelsOfPhotoByte = 32;
    /// Work on a JPEG in several scans: every one passes over all pixels, however short it is.
    qint64 scanPixels = 1200LL * 1000 * 1000;
    int scans = 256;
    /// Of the image as it is stored: also a decoder that scales reads all of it.
    qint64 storedPixels = 1LL << 28;
};

/// Decodes one image (of an animation the first), upright. Nothing for what is no raster image,
/// breaks a limit, is cut short or corrupt. Any thread; takes up to a second or two.
///
/// @param maximumEdge  when the image is larger, it is scaled down to this while it is decoded;
///                     0 keeps its size
std::optional<QImage> decodeImage(const QByteArray &data, int maximumEdge = 0,
                                  const ImageLimits &limits = {});

/// Chooses the size to decode at; given is the image's own, upright. The shape may be another. An
/// invalid size means that the image is not to be decoded.
using ImageTarget = std::function<QSize(QSize upright)>;

/// Likewise, scaled to a chosen size while it is decoded, so that a JPEG is never held at its
/// full size.
///
/// @param hurried  for thumbnails: a small version that lies beside the image may stand for it
std::optional<QImage> decodeImageTo(const QByteArray &data, const ImageTarget &target,
                                    bool hurried = false, const ImageLimits &limits = {});

/// The size of the whole image, upright, from its header; empty when it cannot be told.
QSize imageSize(const QByteArray &data);

} // namespace zelkam
