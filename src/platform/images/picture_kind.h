#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace zelkam {

// What kind of picture a file is, by its first bytes alone, whatever its name says. Any thread.

/// Qt's name of the raster format that the bytes begin with: jpeg, png, gif, bmp, webp, tiff, ico,
/// heic, avif. Empty for everything else, vector images and documents among it, whatever plug-ins
/// are installed. Sixteen bytes are enough for all but an AVIF of a general brand.
QByteArray rasterFormat(const QByteArray &head);

/// Whether the bytes may be those of a vector image, which is text and no larger than 8 MiB.
bool looksLikeSvg(const QByteArray &data);

/// The uniform type identifier of an image ("public.jpeg"). Nothing for what is no image.
std::optional<QString> pictureTypeIdentifier(const QByteArray &data);

} // namespace zelkam
