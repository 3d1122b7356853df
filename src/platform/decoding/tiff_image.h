#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

namespace zelkam {

/// Reads the first image of a TIFF of a kind that Qt refuses or shows wrongly: grey with
/// transparency, 16 bits in planes of their own, inks with a profile, and a tile that is larger
/// than the image. Nothing for other kinds; null when it is broken or cut short. It is not turned.
std::optional<QImage> readUnusualTiff(const QByteArray &file);

} // namespace zelkam
