#pragma once

#include "platform/images/ui_image.h"

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

namespace zelkam {

/// Adds an image to the album: a new file in the pictures folder, written on a background queue
/// after this call has returned. JPEG, or PNG when the image has transparency, named by the time
/// (IMG_20260131_235959, with _2, _3, ... where that is taken). The file appears whole or not at
/// all, replaces nothing, and carries no metadata. The outcome is not reported; a failure is
/// logged as a warning. Any thread.
void UIImageWriteToSavedPhotosAlbum(const UIImage &image);

/// Likewise, and tells the main thread: the path of the new file, or nothing when the image could
/// not be added.
void UIImageWriteToSavedPhotosAlbum(
    const UIImage &image, std::function<void(const std::optional<QString> &filePath)> completion);

/// The pictures folder; without a setting the user's own.
QString picturesDirectory();

/// Sets the pictures folder, which is made when the first image is written. An empty path
/// returns to the user's own. Any thread; writes that were asked for before keep theirs.
void setPicturesDirectory(const QString &path);

/// Waits until every write asked for so far is over, for a program that is about to end.
/// Returns false when the time is up first. Any thread but a completion of this folder.
bool waitForAlbumWrites(std::chrono::milliseconds timeout);

} // namespace zelkam
