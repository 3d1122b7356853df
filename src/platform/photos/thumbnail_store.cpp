#include "platform/photos/thumbnail_store.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/images/decoder.h"
#include "platform/images/image_scaling.h"
#include "platform/images/picture.h"
#include "platform/photos/photo_workers.h"

#include <QPointer>

namespace zelkam {

namespace {

/// More than there are threads, so that none waits for the main thread; few enough that what has
/// been scrolled away does not hold up what is seen.
constexpr int mostRunning = 6;

QString keyOf(const PHAsset &asset)
{
    return asset.localIdentifier() + u'\n' + QString::number(asset.modificationDate());
}

/// What is being made at the edge of before a relayout does not stand for what is wanted now.
QString runningKey(const PHAsset &asset, int edge)
{
    return keyOf(asset) + u'\n' + QString::number(edge);
}

QImage middleSquare(const QImage &image, int edge)
{
    const int side = qMin(image.width(), image.height());
    const QImage middle =
        image.copy((image.width() - side) / 2, (image.height() - side) / 2, side, side);
    return stretchedImage(middle, {edge, edge})
        .convertToFormat(middle.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                  : QImage::Format_RGB32);
}

} // namespace

ThumbnailStore::ThumbnailStore(ThumbnailDiskCache diskCache, qint64 memory, QObject *parent)
    : QObject(parent), m_diskCache(std::move(diskCache)), m_memory(memory)
{
    warmUpDecoders();
}

void ThumbnailStore::setEdge(int pixels)
{
    if (pixels == m_edge)
        return;
    m_edge = pixels;
    m_memory.clear();
}

void ThumbnailStore::setWanted(const QList<PHAsset> &assets)
{
    m_wanted.clear();
    for (const PHAsset &asset : assets) {
        if (!m_memory.contains(keyOf(asset)) && !m_running.contains(runningKey(asset, m_edge)))
            m_wanted.append(asset);
    }
    startNext();
}

std::optional<QImage> ThumbnailStore::thumbnail(const PHAsset &asset)
{
    const QImage *found = m_memory.object(keyOf(asset));
    return found ? std::optional(*found) : std::nullopt;
}

void ThumbnailStore::startNext()
{
    while (!m_wanted.isEmpty() && m_running.size() < mostRunning) {
        const PHAsset asset = m_wanted.takeFirst();
        m_running.insert(runningKey(asset, m_edge));
        const auto work = [store = QPointer(this), disk = m_diskCache, asset,
                           edge = m_edge](PhotoReading &) {
            const auto deliver = [store, asset, edge](const QImage &square) {
                DispatchQueue::main().async([store, asset, edge, square] {
                    if (store)
                        store->finish(asset, edge, square);
                });
            };
            if (const auto stored = disk.find(asset, edge)) {
                deliver(middleSquare(*stored, edge));
                return;
            }
            const auto made = thumbnailOfPicture(asset.filePath(), edge);
            deliver(made ? middleSquare(made->image, edge) : QImage());
            // The screen has it already; the disk gets it while the next one is decoded.
            if (made && made->isSmaller)
                disk.store(asset, made->image);
        };
        PhotoWorkers::start(work, PhotoWorkers::Kind::thumbnail,
                            [store = QPointer(this), asset, edge = m_edge] {
                                if (store)
                                    store->finish(asset, edge, {});
                            });
    }
}

void ThumbnailStore::finish(const PHAsset &asset, int edge, const QImage &image)
{
    m_running.remove(runningKey(asset, edge));
    if (edge == m_edge) {
        constexpr qsizetype entry = 256; // what keeping a failure costs
        m_memory.insert(keyOf(asset), new QImage(image), image.sizeInBytes() + entry);
        emit ready(asset);
    }
    startNext();
}

} // namespace zelkam
