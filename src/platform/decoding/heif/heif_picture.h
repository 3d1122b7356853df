#pragma once

#include "platform/decoding/image_decoding.h"

namespace zelkam {

/// Reads the primary image of a HEIF file, turned upright, at the size that is chosen for it. The
/// image is RGB32, or ARGB32 (premultiplied where the file is), with its colour space. Null for
/// what is no HEIF file, or a coded picture that is corrupt or cut short. One picture at a time in
/// the whole process.
///
/// @param hurried  the smaller version that a camera stored beside the image will do, when there is
///                 one of the same shape that is large enough
QImage readHeif(const QByteArray &file, const ImageTarget &target, bool hurried);

} // namespace zelkam
