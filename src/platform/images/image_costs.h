#pragma once

#include "platform/images/image_decoding.h"
#include "platform/images/jpeg_structure.h"

namespace zelkam {

/// How an image is about to be decoded.
struct ImageReading
{
    QByteArray format;     ///< as rasterFormat() names it
    QSize stored;          ///< the size in the file
    QSize read;            ///< the size that the decoder is asked for
    QImage::Format pixels; ///< of the decoded image; invalid when the decoder does not tell
    std::optional<JpegStructure> jpeg; ///< of a JPEG: to be walked once, it may be long
    bool isTurned = false;             ///< by a quarter once it is decoded
};

/// Whether a decoder never holds the whole image when it is asked for a smaller one. All others are
/// left to read it whole.
bool scalesAsItReads(const QByteArray &format);

/// The most bytes that are held at the same time from the first of the decoder's to the last of an
/// encoder's: its own copies, the stored image where it cannot scale while it reads, the result
/// and one more of it where it is turned, or has to be brought into another form before it is
/// encoded. Nothing when it is more than the limits allow for a file of this kind, or nobody can
/// tell.
std::optional<qint64> imageBytes(const QByteArray &data, const ImageReading &reading,
                                 const ImageLimits &limits);

/// The most that an image may need, by what its file brings itself.
///
/// @param pixels  that its decoder makes
qint64 mostImageBytes(qint64 fileBytes, qint64 pixels, const ImageLimits &limits = {});

} // namespace zelkam
