#include "platform/foundation/part_file.h"

#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_renaming.h"
#include "platform/foundation/sandbox_path.h"

#include <QFile>
#include <QRandomGenerator>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

constexpr char prefix[] = ".zelkam-";
constexpr char suffix[] = ".part";
constexpr int digits = 32;

std::atomic<bool> flushesFiles = true;

QByteArray unforeseenName()
{
    quint64 words[2];
    QRandomGenerator::system()->fillRange(words);
    QByteArray name = prefix;
    for (const quint64 word : words)
        name += QByteArray::number(word, 16).rightJustified(digits / 2, '0');
    return name + suffix;
}

/// The name by which the kernel gives a file without one a name.
QByteArray linkOf(int fd)
{
    return "/proc/self/fd/" + QByteArray::number(fd);
}

bool isFolder(int folder, const QByteArray &name)
{
    struct stat info = {};
    return ::fstatat(folder, name.constData(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(info.st_mode);
}

void ignoreFileSizeSignal()
{
    static const bool once = [] {
        struct sigaction now = {};
        if (::sigaction(SIGXFSZ, nullptr, &now) == 0 && now.sa_handler == SIG_DFL)
            std::signal(SIGXFSZ, SIG_IGN);
        return true;
    }();
    Q_UNUSED(once);
}

/// Whether it is ours alone now. The lock goes with the process, whatever becomes of that.
bool lock(int fd)
{
    return ::flock(fd, LOCK_EX | LOCK_NB) == 0;
}

} // namespace

PartFile::~PartFile()
{
    if (!m_name.isEmpty())
        ::unlinkat(m_folder.get(), m_name.constData(), 0);
}

std::error_code PartFile::open(const QString &folder)
{
    const FileDescriptor opened(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened.isOpen() ? open(opened.get(), S_IRUSR | S_IWUSR) : lastError();
}

std::error_code PartFile::open(int folder, mode_t permissions)
{
    ignoreFileSizeSignal();
    m_folder = FileDescriptor(::fcntl(folder, F_DUPFD_CLOEXEC, 0));
    if (!m_folder.isOpen())
        return lastError();
    m_file =
        FileDescriptor(::openat(m_folder.get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, permissions));
    // Where /proc is missing it could never get a name.
    if (!m_file.isOpen() || ::access(linkOf(m_file.get()).constData(), F_OK) != 0)
        return openNamed(permissions);
    lock(m_file.get());
    return {};
}

std::error_code PartFile::openNamed(mode_t permissions)
{
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        m_name = unforeseenName();
        m_file = FileDescriptor(::openat(m_folder.get(), m_name.constData(),
                                         O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                         permissions));
        if (!m_file.isOpen()) {
            const auto error = lastError();
            m_name.clear();
            return error;
        }
        // Another process that starts right now may have taken it for a stale one.
        struct stat info = {};
        lock(m_file.get());
        if (::fstat(m_file.get(), &info) != 0 || info.st_nlink > 0)
            return {};
    }
    return std::make_error_code(std::errc::device_or_resource_busy);
}

std::error_code PartFile::finish(bool flushes)
{
    int result = 0;
    do {
        result = flushes && flushesFiles ? ::fsync(m_file.get()) : 0;
    } while (result != 0 && errno == EINTR);
    // Some file systems have nothing to flush to.
    if (result != 0 && errno != EINVAL && errno != EROFS && errno != EOPNOTSUPP)
        return lastError();
    // Some tell of a failed write only when a descriptor is closed; ours is needed still.
    const int copy = ::dup(m_file.get());
    if (copy < 0 || (::close(copy) != 0 && errno != EINTR))
        return lastError();
    return {};
}

std::error_code PartFile::giveName(int folder, const QByteArray &name)
{
    if (m_name.isEmpty()) {
        const int result = ::linkat(AT_FDCWD, linkOf(m_file.get()).constData(), folder,
                                    name.constData(), AT_SYMLINK_FOLLOW);
        return result == 0 ? std::error_code() : lastError();
    }
    const auto error =
        renameWithoutReplacing(m_folder.get(), m_name.constData(), folder, name.constData());
    if (!error)
        m_name.clear();
    return error;
}

std::error_code PartFile::giveOwnName()
{
    if (!m_name.isEmpty())
        return {};
    const QByteArray name = unforeseenName();
    const auto error = giveName(m_folder.get(), name);
    if (!error)
        m_name = name;
    return error;
}

// The two change places before the older one goes: ext4 begins to write a file to the disk when it
// is renamed over another, which takes longer than copying it. There is always one whole file.
std::error_code PartFile::takePlace(int folder, const QByteArray &name)
{
    if (const auto error = giveName(folder, name); !error)
        return {};
    else if (error != std::errc::file_exists && m_name.isEmpty())
        return error;
    if (const auto error = giveOwnName())
        return error;
    const auto rename = [&](unsigned flags) {
        return ::renameat2(m_folder.get(), m_name.constData(), folder, name.constData(), flags) ==
               0;
    };
    if (!isFolder(folder, name) && rename(RENAME_EXCHANGE)) {
        if (::unlinkat(m_folder.get(), m_name.constData(), 0) == 0 || errno == ENOENT) {
            m_name.clear();
            return {};
        }
        rename(RENAME_EXCHANGE); // a folder has come in between
    }
    // Some file systems know neither way.
    if (!rename(0))
        return lastError();
    m_name.clear();
    return {};
}

bool isPartName(const QByteArray &name)
{
    const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
    constexpr auto first = sizeof prefix - 1;
    return name.size() == qsizetype(first + digits + sizeof suffix - 1) &&
           name.startsWith(prefix) && name.endsWith(suffix) &&
           std::all_of(name.cbegin() + first, name.cbegin() + first + digits, isDigit);
}

void removeStaleParts(const QString &folder)
{
    DIR *stream = ::opendir(QFile::encodeName(folder).constData());
    while (const dirent *entry = stream ? ::readdir(stream) : nullptr) {
        if (!isPartName(QByteArray::fromRawData(entry->d_name, qstrlen(entry->d_name))))
            continue;
        const FileDescriptor file(::openat(::dirfd(stream), entry->d_name,
                                           O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct stat info = {};
        if (file.isOpen() && ::fstat(file.get(), &info) == 0 && S_ISREG(info.st_mode) &&
            info.st_uid == ::geteuid() && lock(file.get()))
            ::unlinkat(::dirfd(stream), entry->d_name, 0);
    }
    if (stream)
        ::closedir(stream);
}

void setFlushesFiles(bool flushes)
{
    flushesFiles = flushes;
}

} // namespace zelkam
