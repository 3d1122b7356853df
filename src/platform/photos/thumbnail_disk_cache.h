#pragma once

#include "platform/photos/ph_asset.h"

#include <QImage>
#include <QSize>
#include <QString>
#include <optional>

namespace zelkam {

/// The user's thumbnails as the freedesktop Thumbnail Managing Standard lays them out, shared with
/// every program of the desktop: a file that one of them has looked at before is not decoded
/// again. Any thread, several at once.
class ThumbnailDiskCache
{
public:
    /// @param folder  where the thumbnails lie; empty: the user's own (~/.cache/thumbnails)
    explicit ThumbnailDiskCache(QString folder = {});

    /// The size at which a picture is to be stored: one of the standard's, by which its shorter
    /// edge gets at least the given length, or the largest. A picture that is no larger keeps
    /// its own size, and is not worth storing.
    static QSize storedSize(QSize picture, int coveringEdge);

    /// The thumbnail of an asset that covers a square of the given edge, or is of the largest
    /// size. Nothing when there is none that is up to date.
    std::optional<QImage> find(const PHAsset &asset, int coveringEdge) const;

    /// Stores a thumbnail, whole or not at all. One whose folder cannot be written is left out:
    /// a cache has no failures to report.
    ///
    /// @param thumbnail  the whole picture at its storedSize()
    void store(const PHAsset &asset, const QImage &thumbnail) const;

private:
    QString pathIn(const char *size, const PHAsset &asset) const;

    QString m_folder;
};

} // namespace zelkam
