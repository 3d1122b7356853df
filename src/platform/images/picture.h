#pragma once

#include "platform/images/ui_image.h"

#include <QByteArray>
#include <QSize>
#include <QString>
#include <optional>

namespace zelkam {

// What a person keeps among the pictures: raster images and harmless vector images. They are opened
// in a process of their own (decoder.h), so bytes from anywhere are safe here. Any thread but the
// main one, as all of it waits.

/// Decodes a picture, at its own size or stretched to another one. A vector image is drawn at
/// the size that it asks for.
std::optional<UIImage> decodePicture(const QByteArray &data,
                                     std::optional<QSize> stretchedTo = std::nullopt);

/// The same, encoded: as a JPEG of a quality, as UIImageJPEGRepresentation() has it, or without one
/// as a PNG.
std::optional<QByteArray> encodedPicture(const QByteArray &data, std::optional<QSize> stretchedTo,
                                         std::optional<double> jpegQuality);

/// A picture as a thumbnail that covers a square.
struct PictureThumbnail
{
    QImage image;           ///< the whole picture at its storedThumbnailSize()
    bool isSmaller = false; ///< than the picture
};
std::optional<PictureThumbnail> thumbnailOfPicture(const QString &path, int coveringEdge);

/// In bytes. No camera's file has more.
constexpr qint64 largestPictureFile = 256LL << 20;

/// The bytes of a picture file; nothing when it is no regular file, cannot be read, or is larger
/// than largestPictureFile.
std::optional<QByteArray> readPictureFile(const QString &path);

} // namespace zelkam
