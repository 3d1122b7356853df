#include "platform/foundation/file_reader.h"

#include "platform/foundation/sandbox_path.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

std::mutex resolverMutex;

AddressResolver &resolverSlot()
{
    static AddressResolver resolver;
    return resolver;
}

AddressResolver currentResolver()
{
    const std::lock_guard lock(resolverMutex);
    return resolverSlot();
}

} // namespace

void setAddressResolver(AddressResolver resolver)
{
    const std::lock_guard lock(resolverMutex);
    resolverSlot() = std::move(resolver);
}

std::optional<QString> localPath(const URL &url)
{
    if (url.isFileURL()) {
        const auto host = url.host();
        if (host && *host != u"localhost")
            return std::nullopt;
        return url.path();
    }
    if (!url.scheme())
        return !url.host() && url.path().startsWith(u'/') ? std::optional(url.path())
                                                          : std::nullopt;
    const auto resolver = currentResolver();
    return resolver ? resolver(url) : std::nullopt;
}

std::optional<QByteArray> dataWithContentsOf(const URL &url)
{
    const auto path = localPath(url);
    if (!path || path->isEmpty() || path->contains(QChar(u'\0')))
        return std::nullopt;
    // Without O_NONBLOCK, opening a pipe would wait for somebody to write to it.
    const FileDescriptor file(
        ::open(QFile::encodeName(*path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;

    QByteArray bytes(static_cast<qsizetype>(info.st_size), Qt::Uninitialized);
    qsizetype filled = 0;
    for (;;) {
        // The file may have grown since its size was asked for; one more read finds its end.
        if (filled == bytes.size())
            bytes.resize(bytes.size() + 4096);
        const ssize_t got =
            ::read(file.get(), bytes.data() + filled, static_cast<size_t>(bytes.size() - filled));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        filled += got;
    }
    bytes.truncate(filled);
    return bytes;
}

} // namespace zelkam
