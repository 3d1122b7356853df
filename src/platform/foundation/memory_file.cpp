#include "platform/foundation/memory_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

constexpr int everySeal = F_SEAL_SEAL | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;

bool writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), size_t(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

} // namespace

FileDescriptor sealedMemoryFile(QByteArrayView bytes)
{
    FileDescriptor file(::memfd_create("zelkam", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!file.isOpen() || !writeAll(file.get(), bytes) ||
        ::fcntl(file.get(), F_ADD_SEALS, everySeal) != 0)
        return FileDescriptor();
    return file;
}

std::optional<FileMapping> FileMapping::map(int descriptor, qint64 size)
{
    if (size == 0)
        return FileMapping(std::shared_ptr<const char>(), 0);
    void *const bytes = ::mmap(nullptr, size_t(size), PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (bytes == MAP_FAILED)
        return std::nullopt;
    return FileMapping(
        std::shared_ptr<const char>(static_cast<const char *>(bytes),
                                    [bytes, size](const char *) { ::munmap(bytes, size_t(size)); }),
        size);
}

bool isSealed(int descriptor, qint64 size)
{
    struct stat status = {};
    return ::fcntl(descriptor, F_GET_SEALS) == everySeal && ::fstat(descriptor, &status) == 0 &&
           status.st_size == size;
}

} // namespace zelkam
