#pragma once

#include <QByteArray>

namespace zelkam {

/// Whether a JPEG is there up to its end marker, with a frame and a scan before it.
bool jpegIsWhole(const QByteArray &data);

/// Whether a file holds all pixels that its header announces, for the formats whose decoders fill
/// what is missing and call it done. Nothing else is checked.
bool bmpIsWhole(const QByteArray &data);
/// Of an animation only the first image counts.
bool gifIsWhole(const QByteArray &data);

/// Whether no image of an icon file is larger than icons are, 1024 points in a direction. The
/// directory at its start can name a small one and mean a PNG of any size.
bool icoIsModest(const QByteArray &data);

} // namespace zelkam
