#pragma once

#include <QByteArray>
#include <QImage>
#include <QImageIOHandler>
#include <optional>

namespace zelkam {

/// How a stored image is turned so that it is upright, by the Exif block of a JPEG, PNG or WebP.
/// Qt's readers know that of a JPEG alone, and only as a number of 16 bits; cameras and programs
/// write one of 32 bits as well. Nothing for other formats, whose readers do know it.
///
/// @param format  as rasterFormat() names it
std::optional<QImageIOHandler::Transformations> exifTransformation(const QByteArray &file,
                                                                   const QByteArray &format);

/// An image after its transformation, which mirrors first and turns then.
QImage transformedImage(QImage image, QImageIOHandler::Transformations transformation);

} // namespace zelkam
