#pragma once

#include "platform/photos/ph_asset.h"
#include "platform/photos/thumbnail_disk_cache.h"

#include <QCache>
#include <QImage>
#include <QList>
#include <QObject>
#include <QSet>
#include <optional>

namespace zelkam {

/// Square thumbnails for a grid: made on worker threads, only those that are wanted at the moment,
/// kept in memory within a bound and on disk in the user's cache.
///
/// Main thread only.
class ThumbnailStore : public QObject
{
    Q_OBJECT

public:
    /// @param memory  bound of the thumbnails that are kept, in bytes
    explicit ThumbnailStore(ThumbnailDiskCache diskCache = ThumbnailDiskCache(),
                            qint64 memory = 48LL << 20, QObject *parent = nullptr);

    /// The edge of all thumbnails, in pixels of the device. What was made at another edge goes.
    void setEdge(int pixels);
    int edge() const { return m_edge; }

    /// The assets whose thumbnails are wanted now, the most urgent first. It replaces what was
    /// wanted before: what has not begun by then is not made.
    void setWanted(const QList<PHAsset> &assets);

    /// The middle of the picture, filling a square of the edge. Nothing when it is not there yet;
    /// a null image when it never will be, as the picture cannot be read.
    std::optional<QImage> thumbnail(const PHAsset &asset);

    /// Whether nothing that is wanted is missing.
    bool isIdle() const { return m_wanted.isEmpty() && m_running.isEmpty(); }

signals:
    /// thumbnail() has one for this asset now.
    void ready(const zelkam::PHAsset &asset);

private:
    void startNext();
    void finish(const PHAsset &asset, int edge, const QImage &image);

    ThumbnailDiskCache m_diskCache;
    QCache<QString, QImage> m_memory;
    QList<PHAsset> m_wanted;
    QSet<QString> m_running;
    int m_edge = 1;
};

} // namespace zelkam
