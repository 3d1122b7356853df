#include "platform/photos/saved_photos_album.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/part_file.h"
#include "platform/images/image_representation.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <condition_variable>
#include <fcntl.h>
#include <mutex>

namespace zelkam {

namespace {

/// The writes that were asked for and are not over, and where they go.
struct Album
{
    std::mutex mutex;
    std::condition_variable allWritten;
    int pending = 0;
    QString directory;
    DispatchQueue queue;
};

Album &album()
{
    // Never destroyed: a write may end while the program's other statics already go.
    static Album &instance = *new Album;
    return instance;
}

/// Where a finished file lies, or an error's sentence.
struct Written
{
    QString path;
    QString error;
};

/// Gives the finished file its name, the first free one.
Written giveName(PartFile &file, const QString &directory, const QString &stem,
                 const QString &suffix)
{
    constexpr int attempts = 10000;
    const FileDescriptor folder(
        ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int number = 1; number < attempts; ++number) {
        const QString name =
            (number == 1 ? stem : QStringLiteral("%1_%2").arg(stem).arg(number)) + suffix;
        const auto error = file.giveName(folder.get(), QFile::encodeName(name));
        if (!error)
            return {QDir(directory).filePath(name), {}};
        if (error != std::errc::file_exists)
            return {{}, QString::fromStdString(error.message())};
    }
    return {{}, QStringLiteral("no free name")};
}

Written writeImage(const UIImage &image, const QString &directory, const QDateTime &time)
{
    if (!QDir().mkpath(directory))
        return {{}, QStringLiteral("the folder cannot be made")};
    removeStaleParts(directory);
    PartFile part;
    if (const auto error = part.open(directory))
        return {{}, QString::fromStdString(error.message())};
    QFile file;
    if (!file.open(part.descriptor(), QIODevice::WriteOnly))
        return {{}, file.errorString()};

    const bool transparent = image.hasTransparency();
    constexpr double jpegQuality = 0.92;
    const auto bytes = transparent ? UIImagePNGRepresentation(image)
                                   : UIImageJPEGRepresentation(image, jpegQuality);
    if (!bytes)
        return {{}, QStringLiteral("the image cannot be encoded")};
    if (file.write(*bytes) != bytes->size() || !file.flush())
        return {{}, file.errorString()};
    if (const auto error = part.finish(true))
        return {{}, QString::fromStdString(error.message())};
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    return giveName(part, directory, time.toString(QStringLiteral("'IMG_'yyyyMMdd'_'HHmmss")),
                    transparent ? QStringLiteral(".png") : QStringLiteral(".jpg"));
}

} // namespace

void UIImageWriteToSavedPhotosAlbum(const UIImage &image)
{
    UIImageWriteToSavedPhotosAlbum(image, {});
}

void UIImageWriteToSavedPhotosAlbum(
    const UIImage &image, std::function<void(const std::optional<QString> &filePath)> completion)
{
    Album &shared = album();
    const QString directory = picturesDirectory();
    const QDateTime now = QDateTime::currentDateTime();
    const std::lock_guard lock(shared.mutex);
    ++shared.pending;
    shared.queue.async([&shared, image, directory, now, completion = std::move(completion)] {
        const Written written = writeImage(image, directory, now);
        const bool added = written.error.isEmpty();
        if (!added)
            qWarning("An image could not be added to the album: %ls",
                     qUtf16Printable(written.error));
        if (completion) {
            DispatchQueue::main().async(
                [completion, path = added ? std::optional(written.path) : std::nullopt] {
                    completion(path);
                });
        }
        const std::lock_guard writing(shared.mutex);
        --shared.pending;
        shared.allWritten.notify_all();
    });
}

QString picturesDirectory()
{
    Album &shared = album();
    const std::lock_guard lock(shared.mutex);
    return shared.directory.isEmpty()
               ? QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)
               : shared.directory;
}

void setPicturesDirectory(const QString &path)
{
    Album &shared = album();
    const std::lock_guard lock(shared.mutex);
    shared.directory = path.isEmpty() ? path : QDir(path).absolutePath();
}

bool waitForAlbumWrites(std::chrono::milliseconds timeout)
{
    Album &shared = album();
    std::unique_lock lock(shared.mutex);
    return shared.allWritten.wait_for(lock, timeout, [&shared] { return shared.pending == 0; });
}

} // namespace zelkam
