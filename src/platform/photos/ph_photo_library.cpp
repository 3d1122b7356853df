#include "platform/photos/ph_photo_library.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/photos/saved_photos_album.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QPointer>
#include <QSet>
#include <algorithm>
#include <chrono>

namespace zelkam {

namespace {

/// A system allows a limited number of watched folders for all programs together.
constexpr int mostWatchedFolders = 512;

bool isPicture(const QString &fileName)
{
    static const QSet<QString> suffixes{
        QStringLiteral("jpg"),  QStringLiteral("jpeg"), QStringLiteral("png"),
        QStringLiteral("gif"),  QStringLiteral("webp"), QStringLiteral("tif"),
        QStringLiteral("tiff"), QStringLiteral("bmp"),  QStringLiteral("svg"),
        QStringLiteral("heic"), QStringLiteral("heif"), QStringLiteral("avif"),
    };
    return suffixes.contains(fileName.mid(fileName.lastIndexOf(u'.') + 1).toLower());
}

bool isNewer(const PHAsset &a, const PHAsset &b)
{
    if (a.modificationDate() != b.modificationDate())
        return a.modificationDate() > b.modificationDate();
    return a.filePath() > b.filePath(); // pictures of one burst are numbered
}

PHAsset assetOf(const QFileInfo &file)
{
    return {file.filePath(), file.lastModified().toMSecsSinceEpoch(), file.size()};
}

DispatchQueue &readingQueue()
{
    static DispatchQueue queue;
    return queue;
}

} // namespace

PHPhotoLibrary &PHPhotoLibrary::shared()
{
    // Owned by the application object, as its timers and watchers end with it.
    static QPointer<PHPhotoLibrary> library;
    if (!library)
        library = new PHPhotoLibrary(QCoreApplication::instance());
    return *library;
}

PHPhotoLibrary::PHPhotoLibrary(QObject *parent) : QObject(parent)
{
    using namespace std::chrono_literals;
    m_settling.setSingleShot(true);
    m_settling.setInterval(200ms);
    connect(&m_settling, &QTimer::timeout, this, &PHPhotoLibrary::reload);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        // Not restarted: a folder that never rests is still shown.
        if (!m_settling.isActive())
            m_settling.start();
    });
}

PHPhotoLibrary::~PHPhotoLibrary() = default;

void PHPhotoLibrary::open()
{
    const QString folder = picturesDirectory();
    if (folder != m_folder) {
        m_folder = folder;
        m_assets.clear();
        m_loaded = false;
    }
    reload();
}

void PHPhotoLibrary::reload()
{
    if (std::exchange(m_reading, true)) {
        m_readAgain = true;
        return;
    }
    readingQueue().async([library = QPointer(this), folder = m_folder] {
        DispatchQueue::main().async([library, folder, contents = read(folder)] {
            if (library)
                library->show(folder, contents);
        });
    });
}

PHPhotoLibrary::Contents PHPhotoLibrary::read(const QString &folder)
{
    Contents contents;
    const QFileInfo root(folder);
    contents.unavailable = !root.isDir() || !root.isReadable();
    if (contents.unavailable) {
        // Watched, so that it shows as soon as somebody makes it.
        contents.folders.append(root.absolutePath());
        return contents;
    }
    contents.folders.append(folder);
    QDirIterator entries(folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo entry = entries.nextFileInfo();
        if (entry.isDir()) {
            if (!entry.isSymLink())
                contents.folders.append(entry.filePath());
        } else if (isPicture(entry.fileName()) && entry.isFile()) {
            contents.assets.append(assetOf(entry));
        }
    }
    std::sort(contents.assets.begin(), contents.assets.end(), isNewer);
    return contents;
}

void PHPhotoLibrary::show(const QString &folder, const Contents &contents)
{
    m_reading = false;
    if (std::exchange(m_readAgain, false) || folder != m_folder) {
        reload();
        if (folder != m_folder)
            return;
    }
    watch(contents.folders);
    // A file that is still being written sends no event when it is done.
    const qint64 justNow = QDateTime::currentMSecsSinceEpoch() - 2000;
    if (!contents.assets.isEmpty() && contents.assets.first().modificationDate() > justNow)
        m_settling.start();
    const bool differs =
        !m_loaded || m_unavailable != contents.unavailable || m_assets != contents.assets;
    m_loaded = true;
    m_unavailable = contents.unavailable;
    m_assets = contents.assets;
    if (differs)
        emit changed();
}

void PHPhotoLibrary::watch(const QStringList &folders)
{
    const QStringList wanted = folders.mid(0, mostWatchedFolders);
    const QStringList watched = m_watcher.directories();
    const QSet<QString> before(watched.cbegin(), watched.cend());
    const QSet<QString> after(wanted.cbegin(), wanted.cend());
    const QSet<QString> gone = before - after;
    const QSet<QString> added = after - before;
    if (!gone.isEmpty())
        m_watcher.removePaths(gone.values());
    if (!added.isEmpty())
        m_watcher.addPaths(added.values());
}

std::optional<PHAsset> PHPhotoLibrary::insert(const QString &filePath)
{
    const QFileInfo file(filePath);
    if (!file.isFile() || !isPicture(file.fileName()) ||
        !file.absoluteFilePath().startsWith(m_folder + u'/'))
        return std::nullopt;
    const PHAsset asset = assetOf(file);
    if (!m_assets.contains(asset)) {
        m_assets.insert(std::lower_bound(m_assets.begin(), m_assets.end(), asset, isNewer), asset);
        emit changed();
    }
    return asset;
}

} // namespace zelkam
