#pragma once

#include "platform/images/ui_image.h"

#include <QByteArray>
#include <QSize>
#include <QString>
#include <functional>
#include <optional>

namespace zelkam {

// What a person keeps among the pictures: raster images and harmless vector images. Decoding is
// safe with bytes from anywhere, within the limits of image_decoding.h. Any thread.

/// The uniform type identifier of an image by its first bytes ("public.jpeg"), whatever the name
/// of its file says. Nothing for what is no image.
std::optional<QString> pictureTypeIdentifier(const QByteArray &data);

/// Decodes a picture at its own size. A vector image is drawn at the size that it asks for.
std::optional<UIImage> decodePicture(const QByteArray &data);

/// Decodes a picture stretched to a size, which costs no more than the smaller one needs.
std::optional<UIImage> decodePicture(const QByteArray &data, QSize stretchedTo);

/// Decodes a picture for a thumbnail, at the size that is chosen by its own. A smaller version
/// that a camera stored in the file may stand for it.
std::optional<UIImage> decodePictureForThumbnail(const QByteArray &data,
                                                 const std::function<QSize(QSize)> &target);

/// In bytes. No camera's file has more.
constexpr qint64 largestPictureFile = 256LL << 20;

/// The bytes of a picture file; nothing when it is no regular file, cannot be read, or is larger
/// than largestPictureFile.
std::optional<QByteArray> readPictureFile(const QString &path);

} // namespace zelkam
