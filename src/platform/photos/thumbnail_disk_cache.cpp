#include "platform/photos/thumbnail_disk_cache.h"

#include "platform/images/decoder.h"
#include "platform/images/image_scaling.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

namespace zelkam {

namespace {

/// The standard's folder for thumbnails of so long an edge.
const char *folderOf(int edge)
{
    constexpr const char *folders[] = {"normal", "large", "x-large", "xx-large"};
    const auto found = std::find(thumbnailEdges.cbegin(), thumbnailEdges.cend(), edge);
    return folders[found - thumbnailEdges.cbegin()];
}

const QString uriKey = QStringLiteral("Thumb::URI");
const QString timeKey = QStringLiteral("Thumb::MTime");

QByteArray uriOf(const PHAsset &asset)
{
    return QUrl::fromLocalFile(asset.filePath()).toEncoded(QUrl::FullyEncoded);
}

QString timeOf(const PHAsset &asset)
{
    return QString::number(asset.modificationDate() / 1000);
}

QDir makePrivateFolder(const QString &path)
{
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QDir(path);
}

} // namespace

ThumbnailDiskCache::ThumbnailDiskCache(QString folder) : m_folder(std::move(folder))
{
    if (m_folder.isEmpty())
        m_folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                   QStringLiteral("/thumbnails");
}

QString ThumbnailDiskCache::pathIn(int edge, const PHAsset &asset) const
{
    const QByteArray name = QCryptographicHash::hash(uriOf(asset), QCryptographicHash::Md5).toHex();
    return QStringLiteral("%1/%2/%3.png")
        .arg(m_folder, QLatin1String(folderOf(edge)), QLatin1String(name));
}

std::optional<QImage> ThumbnailDiskCache::find(const PHAsset &asset, int coveringEdge) const
{
    DecodeWish wish;
    wish.task = DecodeWish::Task::thumbnail;
    const QByteArray key = QCryptographicHash::hash(uriOf(asset) + '\n' + timeOf(asset).toUtf8(),
                                                    QCryptographicHash::Sha256);
    std::copy(key.cbegin(), key.cend(), wish.key.begin());
    for (const int edge : thumbnailEdges) {
        const auto file =
            edge >= coveringEdge ? RegularFile::open(pathIn(edge, asset)) : std::nullopt;
        if (!file)
            continue;
        wish.width = edge;
        const QImage image = decode(wish, *file, DecodeUrgency::background).image;
        const bool covers = qMin(image.width(), image.height()) >= coveringEdge;
        if (!image.isNull() && (covers || edge == thumbnailEdges.back()))
            return image;
    }
    return std::nullopt;
}

void ThumbnailDiskCache::store(const PHAsset &asset, const QImage &thumbnail) const
{
    // What lies in the cache itself has no thumbnail, by the standard.
    if (thumbnail.isNull() || asset.filePath().startsWith(m_folder))
        return;
    const int edge = qMax(thumbnail.width(), thumbnail.height());
    for (const int size : thumbnailEdges) {
        if (edge > size)
            continue;
        makePrivateFolder(m_folder);
        makePrivateFolder(m_folder + u'/' + QLatin1String(folderOf(size)));
        QImage image = thumbnail;
        image.setText(uriKey, QString::fromUtf8(uriOf(asset)));
        image.setText(timeKey, timeOf(asset));
        QSaveFile file(pathIn(size, asset));
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        QImageWriter writer(&file, "png");
        writer.setCompression(30);
        if (writer.write(image))
            file.commit();
        return;
    }
}

} // namespace zelkam
