#include "platform/foundation/file_copy.h"

#include "platform/foundation/sandbox_path.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <unistd.h>

namespace zelkam {

namespace {

constexpr qint64 bufferSize = 256 * 1024;
/// The most that is copied before anyone asks again whether to go on.
constexpr qint64 maxPiece = 32 * 1024 * 1024;

/// What the kernel says when it can copy between two files only with our help.
bool needsOurHelp(int error)
{
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP ||
           error == EPERM || error == ETXTBSY;
}

/// Copies a stretch through a buffer of ours. The place is moved on; it stays before the end where
/// the file ends early.
std::error_code copyBuffered(const RegularFile &from, int to, qint64 &place, qint64 end)
{
    if (::lseek(from.descriptor(), place, SEEK_SET) < 0 || ::lseek(to, place, SEEK_SET) < 0)
        return lastError();
    const auto buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
    while (place < end) {
        const qint64 got = from.read(buffer.get(), std::min(bufferSize, end - place));
        if (got < 0)
            return lastError();
        if (got == 0)
            break;
        if (const auto error = writeAll(to, buffer.get(), got))
            return error;
        place += got;
    }
    return {};
}

/// The same in the kernel, where that can be done.
std::error_code copyStretch(const RegularFile &from, int to, qint64 &place, qint64 end)
{
    loff_t in = place;
    loff_t out = place;
    while (place < end) {
        const ssize_t got = ::copy_file_range(from.descriptor(), &in, to, &out,
                                              static_cast<size_t>(end - place), 0);
        if (got < 0 && errno == EINTR)
            continue;
        // Some systems below /sys give a size and let the kernel copy nothing.
        if (got == 0 || (got < 0 && needsOurHelp(errno)))
            return copyBuffered(from, to, place, end);
        if (got < 0)
            return lastError();
        place += got;
    }
    return {};
}

} // namespace

std::error_code writeAll(int fd, const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, static_cast<size_t>(size));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return lastError();
        data += written;
        size -= written;
    }
    return {};
}

std::error_code copyContents(const RegularFile &from, int to, const std::atomic<bool> *isCancelled)
{
    qint64 place = 0;
    qint64 size = from.size();
    // The kernel copies nothing of a file that has no size, whatever can be read from it.
    if (size == 0)
        return copyBuffered(from, to, place, from.limit());
    while (place < size) {
        if (isCancelled && *isCancelled)
            return std::make_error_code(std::errc::operation_canceled);
        qint64 end = size;
        const qint64 data = ::lseek(from.descriptor(), place, SEEK_DATA);
        if (data < 0 && errno == ENXIO)
            break; // nothing but a hole follows
        // A negative answer is that of a file system without holes.
        if (data >= 0) {
            place = std::min(data, size);
            if (const qint64 hole = ::lseek(from.descriptor(), place, SEEK_HOLE); hole > place)
                end = std::min(hole, size);
        }
        end = std::min(end, place + maxPiece);
        if (const auto error = copyStretch(from, to, place, end))
            return error;
        if (place < end)
            size = place; // it was shorter than it said, or has been cut meanwhile
    }
    // Nobody has written a hole at the end. What is gone by now must not become one.
    const qint64 now = ::lseek(from.descriptor(), 0, SEEK_END);
    if (now < 0 || ::ftruncate(to, std::min(now, size)) != 0)
        return lastError();
    return {};
}

} // namespace zelkam
