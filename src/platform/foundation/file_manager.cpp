#include "platform/foundation/file_manager.h"

#include "platform/foundation/file_renaming.h"
#include "platform/foundation/part_file.h"
#include "platform/foundation/sandbox_path.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

struct Container
{
    std::mutex mutex;
    QString path; // with a slash at its end; empty until it is chosen or first asked for
};

Container &container()
{
    // Never destroyed: queues that run their last work as the program ends still ask for it.
    static Container &instance = *new Container;
    return instance;
}

/// Makes the folder and gives its real path, links resolved, with a slash at the end.
std::error_code prepareTemporaryDirectory(const QString &path, QString &result)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    errno = 0;
    if (!QFileInfo(absolute).isDir()) {
        QDir().mkpath(QFileInfo(absolute).path());
        if (::mkdir(QFile::encodeName(absolute).constData(), S_IRWXU) != 0 && errno != EEXIST)
            return lastError();
    }
    const QString real = QFileInfo(absolute).canonicalFilePath();
    if (real.isEmpty() || !QFileInfo(real).isDir())
        return std::make_error_code(std::errc::not_a_directory);
    result = real.endsWith(u'/') ? real : real + u'/';
    return {};
}

/// The folder of this user below the system's temporary folder, empty when it cannot be had.
/// Anybody can make a folder or a link of its foreseeable name first, so only a real folder of
/// one's own that nobody else can write to will do; else it is one of an unforeseen name.
QString defaultTemporaryDirectory()
{
    const QString application = QCoreApplication::applicationName();
    // A system's temporary folder that is not there is not ours to make.
    const QString folder =
        QFileInfo(QDir::tempPath()).isDir() ? QDir::tempPath() : QStringLiteral(P_tmpdir);
    const QString name = folder + u'/' +
                         (application.isEmpty() ? QStringLiteral("zelkam") : application) + u'-' +
                         QString::number(::geteuid());
    QByteArray path = QFile::encodeName(name);
    struct stat info = {};
    ::mkdir(path.constData(), S_IRWXU);
    const bool isOwn = ::lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
                       info.st_uid == ::geteuid() && !(info.st_mode & (S_IWGRP | S_IWOTH));
    if (!isOwn) {
        path += "-XXXXXX";
        if (!::mkdtemp(path.data()))
            return {};
    }
    return QFileInfo(QFile::decodeName(path)).canonicalFilePath() + u'/';
}

/// The path without doubled slashes, "." and a slash at its end, to compare folders by.
QString comparable(const QString &path)
{
    return QDir::cleanPath(path);
}

std::error_code removeAt(int folder, const char *name);

/// Removes what a folder holds. Takes over the descriptor.
std::error_code removeContents(int fd)
{
    DIR *stream = ::fdopendir(fd);
    if (!stream) {
        const auto error = lastError();
        ::close(fd);
        return error;
    }
    std::error_code error;
    while (const dirent *entry = ::readdir(stream)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
            continue;
        error = removeAt(::dirfd(stream), entry->d_name);
        if (error)
            break;
    }
    ::closedir(stream);
    return error;
}

std::error_code removeAt(int folder, const char *name)
{
    if (::unlinkat(folder, name, 0) == 0)
        return {};
    if (errno != EISDIR && errno != EPERM)
        return lastError();
    const int inner = ::openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (inner < 0)
        return lastError();
    if (const auto error = removeContents(inner))
        return error;
    return ::unlinkat(folder, name, AT_REMOVEDIR) == 0 ? std::error_code() : lastError();
}

} // namespace

QString NSTemporaryDirectory()
{
    Container &current = container();
    const std::lock_guard lock(current.mutex);
    if (current.path.isEmpty()) {
        current.path = defaultTemporaryDirectory();
        removeStaleParts(current.path);
    }
    // Nothing can be made below a file: every operation fails when there is no folder.
    return current.path.isEmpty() ? QStringLiteral("/dev/null/") : current.path;
}

std::error_code setTemporaryDirectory(const QString &path)
{
    QString prepared;
    if (const auto error = prepareTemporaryDirectory(path, prepared))
        return error;
    removeStaleParts(prepared);
    Container &current = container();
    const std::lock_guard lock(current.mutex);
    current.path = prepared;
    return {};
}

FileManager &FileManager::defaultManager()
{
    static FileManager &manager = *new FileManager; // never destroyed, as the container
    return manager;
}

void FileManager::addOwnFolder(const QString &path)
{
    const std::lock_guard lock(m_mutex);
    m_ownFolders.insert(comparable(path));
}

bool FileManager::isOwnFolder(const QString &path) const
{
    const QString clean = comparable(path);
    if (clean == comparable(NSTemporaryDirectory()))
        return true;
    const std::lock_guard lock(m_mutex);
    return m_ownFolders.contains(clean);
}

bool FileManager::fileExists(const QString &atPath) const
{
    std::error_code error;
    const auto item = resolveInContainer(atPath, error);
    if (!item)
        return false;
    if (item->name.isEmpty())
        return true;
    struct stat info = {};
    if (::fstatat(item->folder.get(), item->name.constData(), &info, AT_SYMLINK_NOFOLLOW) != 0)
        return false;
    return S_ISDIR(info.st_mode) || !atPath.endsWith(u'/');
}

std::error_code FileManager::createDirectory(const QString &atPath)
{
    std::error_code error;
    const auto item = resolveInContainer(atPath, error);
    if (!item)
        return error;
    if (item->name.isEmpty())
        return std::make_error_code(std::errc::file_exists);
    return ::mkdirat(item->folder.get(), item->name.constData(), S_IRWXU) == 0 ? std::error_code()
                                                                               : lastError();
}

std::error_code FileManager::removeItem(const QString &atPath)
{
    if (isOwnFolder(atPath))
        return std::make_error_code(std::errc::operation_not_permitted);
    std::error_code error;
    const auto item = resolveInContainer(atPath, error);
    if (!item)
        return error;
    return removeAt(item->folder.get(), item->name.constData());
}

std::error_code FileManager::moveItem(const QString &atPath, const QString &toPath)
{
    if (isOwnFolder(atPath) || isOwnFolder(toPath))
        return std::make_error_code(std::errc::operation_not_permitted);
    std::error_code error;
    const auto from = resolveInContainer(atPath, error);
    if (!from)
        return error;
    const auto to = resolveInContainer(toPath, error);
    if (!to)
        return error;
    // A path that ends in a slash names a folder, and no download is one.
    if (toPath.endsWith(u'/'))
        return std::make_error_code(std::errc::is_a_directory);
    return renameWithoutReplacing(from->folder.get(), from->name.constData(), to->folder.get(),
                                  to->name.constData());
}

} // namespace zelkam
