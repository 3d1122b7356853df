#include "platform/photos/thumbnail_disk_cache.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

namespace zelkam {

namespace {

struct Size
{
    const char *folder;
    int edge;
};

/// The standard's sizes, the smallest first.
constexpr Size sizes[] = {{"normal", 128}, {"large", 256}, {"x-large", 512}, {"xx-large", 1024}};

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

QSize ThumbnailDiskCache::storedSize(QSize picture, int coveringEdge)
{
    QSize scaled = picture;
    for (const Size &size : sizes) {
        if (qMax(picture.width(), picture.height()) <= size.edge)
            return picture;
        scaled = picture.scaled(size.edge, size.edge, Qt::KeepAspectRatio).expandedTo({1, 1});
        if (qMin(scaled.width(), scaled.height()) >= coveringEdge)
            break;
    }
    return scaled;
}

QString ThumbnailDiskCache::pathIn(const char *size, const PHAsset &asset) const
{
    const QByteArray name = QCryptographicHash::hash(uriOf(asset), QCryptographicHash::Md5).toHex();
    return QStringLiteral("%1/%2/%3.png").arg(m_folder, QLatin1String(size), QLatin1String(name));
}

std::optional<QImage> ThumbnailDiskCache::find(const PHAsset &asset, int coveringEdge) const
{
    for (const Size &size : sizes) {
        if (size.edge < coveringEdge)
            continue;
        QImageReader reader(pathIn(size.folder, asset), "png");
        const QSize stored = reader.size();
        // Another program may have written it: nothing says how large it really is.
        if (stored.isEmpty() || qMax(stored.width(), stored.height()) > size.edge)
            continue;
        const bool covers = qMin(stored.width(), stored.height()) >= coveringEdge;
        const bool largest = &size == std::end(sizes) - 1;
        QImage image;
        // The reader itself would take these keys apart at their colons.
        if ((covers || largest) && reader.read(&image) && image.text(timeKey) == timeOf(asset) &&
            image.text(uriKey).toUtf8() == uriOf(asset))
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
    for (const Size &size : sizes) {
        if (edge > size.edge)
            continue;
        makePrivateFolder(m_folder);
        makePrivateFolder(m_folder + u'/' + QLatin1String(size.folder));
        QImage image = thumbnail;
        image.setText(uriKey, QString::fromUtf8(uriOf(asset)));
        image.setText(timeKey, timeOf(asset));
        QSaveFile file(pathIn(size.folder, asset));
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
