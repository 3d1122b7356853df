#pragma once

#include "platform/photos/ph_asset.h"

#include <QImage>
#include <QString>
#include <optional>

namespace zelkam {

/// The user's thumbnails as the freedesktop Thumbnail Managing Standard lays them out, shared with
/// every program of the desktop: a file that one of them has looked at before is not decoded
/// again. Any thread but the main one, several at once.
class ThumbnailDiskCache
{
public:
    /// @param folder  where the thumbnails lie; empty: the user's own (~/.cache/thumbnails)
    explicit ThumbnailDiskCache(QString folder = {});

    /// The thumbnail of an asset that covers a square of the given edge, or is of the largest
    /// size. Nothing when there is none that is up to date.
    std::optional<QImage> find(const PHAsset &asset, int coveringEdge) const;

    /// Stores a thumbnail, whole or not at all. One whose folder cannot be written is left out:
    /// a cache has no failures to report.
    ///
    /// @param thumbnail  the whole picture at its storedThumbnailSize()
    void store(const PHAsset &asset, const QImage &thumbnail) const;

private:
    QString pathIn(int edge, const PHAsset &asset) const;

    QString m_folder;
};

} // namespace zelkam
