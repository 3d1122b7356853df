#include "platform/foundation/regular_file.h"

#include "platform/foundation/file_name.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

/// A file without a size may have no end either.
constexpr qint64 maxMadeUpContent = 64 * 1024 * 1024;
constexpr qsizetype growth = 64 * 1024;

bool isPath(const QString &path)
{
    return !path.isEmpty() && !path.contains(QChar(u'\0'));
}

} // namespace

bool isRegularFile(const QString &path)
{
    struct stat info = {};
    return isPath(path) && ::stat(encodeFileName(path).constData(), &info) == 0 &&
           S_ISREG(info.st_mode);
}

std::optional<RegularFile> RegularFile::open(const QString &path)
{
    // Opening some devices has an effect of its own, so they are turned away before. Without
    // O_NONBLOCK, opening a pipe that has come in between would wait for somebody to write to it.
    if (!isRegularFile(path))
        return std::nullopt;
    FileDescriptor file(
        ::open(encodeFileName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;
    return RegularFile(std::move(file), info.st_size);
}

qint64 RegularFile::limit() const
{
    return m_size > 0 ? m_size : maxMadeUpContent;
}

qint64 RegularFile::read(char *data, qint64 maxSize) const
{
    ssize_t got = 0;
    do {
        got = ::read(m_file.get(), data, static_cast<size_t>(maxSize));
    } while (got < 0 && errno == EINTR);
    return got;
}

qint64 RegularFile::readAt(qint64 offset, char *data, qint64 maxSize) const
{
    ssize_t got = 0;
    do {
        got = ::pread(m_file.get(), data, static_cast<size_t>(maxSize), offset);
    } while (got < 0 && errno == EINTR);
    return got;
}

std::optional<QByteArray> RegularFile::readAll() const
{
    QByteArray bytes(static_cast<qsizetype>(m_size), Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < limit()) {
        // Only a file without a size gets here with a full buffer.
        if (filled == bytes.size())
            bytes.resize(filled + std::min<qsizetype>(limit() - filled, growth));
        const qint64 got = read(bytes.data() + filled, bytes.size() - filled);
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        filled += got;
    }
    bytes.truncate(filled);
    return bytes;
}

QByteArray RegularFile::head(qsizetype maxSize) const
{
    QByteArray bytes(maxSize, Qt::Uninitialized);
    bytes.truncate(std::max<qint64>(readAt(0, bytes.data(), maxSize), 0));
    return bytes;
}

} // namespace zelkam
