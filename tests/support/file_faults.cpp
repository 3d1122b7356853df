#include "support/file_faults.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string folder; // set while nothing is armed
std::atomic<bool> isArmed = false;
std::atomic<int> calls = 0;
int failing = 0;
int faultThere = 0;

bool isBelow(const char *path)
{
    return std::strncmp(path, folder.c_str(), folder.size()) == 0;
}

bool isBelow(int fd)
{
    char link[64];
    char path[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    const ssize_t size = ::readlink(link, path, sizeof path - 1);
    if (size <= 0)
        return false;
    path[size] = '\0';
    return isBelow(path);
}

/// Whether this call is to fail; errno is set then.
template<typename Place>
int faultOf(Place place)
{
    const int before = errno;
    if (!isArmed || !isBelow(place)) {
        errno = before;
        return 0;
    }
    if (++calls != failing) {
        errno = before;
        return 0;
    }
    if (faultThere == file_faults::kill)
        ::kill(::getpid(), SIGKILL);
    errno = faultThere > 0 ? faultThere : before;
    return faultThere;
}

int faultAt(int fd, const char *path)
{
    return path[0] == '/' ? faultOf(path) : faultOf(fd);
}

template<typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

void file_faults::arm(const QByteArray &below, int number, int fault)
{
    folder = below.toStdString();
    calls = 0;
    failing = number;
    faultThere = fault;
    isArmed = true;
}

int file_faults::disarm()
{
    isArmed = false;
    return calls;
}

// The calls themselves. Those that take a size can do a half; the rest fail or do not.
#define NEXT(name) static const auto next_##name = next<decltype(&::name)>(#name)
#define FAIL(fault)                                                                                \
    if ((fault) > 0)                                                                               \
    return -1

#define OPEN(name, parameters, fault, ...)                                                         \
    extern "C" int name parameters                                                                 \
    {                                                                                              \
        va_list list;                                                                              \
        va_start(list, flags);                                                                     \
        const mode_t mode = va_arg(list, mode_t);                                                  \
        va_end(list);                                                                              \
        NEXT(name);                                                                                \
        FAIL(fault);                                                                               \
        return next_##name(__VA_ARGS__, mode);                                                     \
    }
OPEN(open, (const char *path, int flags, ...), faultOf(path), path, flags)
OPEN(open64, (const char *path, int flags, ...), faultOf(path), path, flags)
OPEN(openat, (int fd, const char *path, int flags, ...), faultAt(fd, path), fd, path, flags)
OPEN(openat64, (int fd, const char *path, int flags, ...), faultAt(fd, path), fd, path, flags)

#define SIZED(name, parameters, ...)                                                               \
    extern "C" ssize_t name parameters                                                             \
    {                                                                                              \
        NEXT(name);                                                                                \
        const int fault = faultOf(fd);                                                             \
        FAIL(fault);                                                                               \
        if (fault == file_faults::half)                                                            \
            size = (size + 1) / 2;                                                                 \
        return next_##name(__VA_ARGS__);                                                           \
    }
SIZED(read, (int fd, void *bytes, size_t size), fd, bytes, size)
SIZED(write, (int fd, const void *bytes, size_t size), fd, bytes, size)
SIZED(pread, (int fd, void *bytes, size_t size, off_t from), fd, bytes, size, from)
SIZED(pread64, (int fd, void *bytes, size_t size, off64_t from), fd, bytes, size, from)
SIZED(copy_file_range,
      (int from, off64_t *fromPlace, int fd, off64_t *place, size_t size, unsigned flags), from,
      fromPlace, fd, place, size, flags)

#define ON_FD(result, name, parameters, arguments)                                                 \
    extern "C" result name parameters                                                              \
    {                                                                                              \
        NEXT(name);                                                                                \
        FAIL(faultOf(fd));                                                                         \
        return next_##name arguments;                                                              \
    }
#define ON_PATH(name, parameters, arguments, fd, path)                                             \
    extern "C" int name parameters                                                                 \
    {                                                                                              \
        NEXT(name);                                                                                \
        FAIL(faultAt(fd, path));                                                                   \
        return next_##name arguments;                                                              \
    }
ON_FD(int, fsync, (int fd), (fd))
ON_FD(int, dup, (int fd) noexcept, (fd))
ON_FD(int, fchmod, (int fd, mode_t mode) noexcept, (fd, mode))
ON_FD(int, ftruncate, (int fd, off_t size) noexcept, (fd, size))
ON_FD(int, ftruncate64, (int fd, off64_t size) noexcept, (fd, size))
ON_FD(off_t, lseek, (int fd, off_t place, int whence) noexcept, (fd, place, whence))
ON_FD(off64_t, lseek64, (int fd, off64_t place, int whence) noexcept, (fd, place, whence))
ON_PATH(mkdirat, (int fd, const char *path, mode_t mode) noexcept, (fd, path, mode), fd, path)
ON_PATH(unlinkat, (int fd, const char *path, int flags) noexcept, (fd, path, flags), fd, path)
ON_PATH(unlink, (const char *path) noexcept, (path), AT_FDCWD, path)
ON_PATH(renameat, (int from, const char *a, int to, const char *b) noexcept, (from, a, to, b), to,
        b)
ON_PATH(renameat2, (int from, const char *a, int to, const char *b, unsigned flags) noexcept,
        (from, a, to, b, flags), to, b)
ON_PATH(linkat, (int from, const char *a, int to, const char *b, int flags) noexcept,
        (from, a, to, b, flags), to, b)

/// A descriptor is closed in any case, as on Linux.
extern "C" int close(int fd)
{
    NEXT(close);
    const int fault = faultOf(fd);
    const int result = next_close(fd);
    FAIL(fault);
    return result;
}
