#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

namespace zelkam {

/// Reads a JPEG of cyan, magenta, yellow and black by the profile in it, which Qt does not follow.
/// Nothing when the JPEG is of another kind or has no such profile; null when it is broken. It is
/// not turned.
///
/// @param atLeast  the image may be scaled while it is decoded, and is not smaller than this
std::optional<QImage> readCmykJpeg(const QByteArray &file, QSize atLeast);

} // namespace zelkam
