#pragma once

#include <QColorSpace>
#include <QImage>
#include <QSize>
#include <libheif/heif.h>

namespace zelkam {

/// The colour space of a coded image: its ICC profile, otherwise the primaries and the transfer
/// that it names. Invalid where it says nothing or what Qt cannot express.
QColorSpace heifColorSpace(const heif_image_handle *handle);

/// Makes an image of decoded planes (luma and chroma, grey, or red, green and blue), at the given
/// size. Null when the picture has other planes, or a matrix that only libheif knows.
///
/// @param target  at most the picture's own size in both directions
QImage imageFromPlanes(const heif_image *picture, QSize target, bool premultiplied);

} // namespace zelkam
