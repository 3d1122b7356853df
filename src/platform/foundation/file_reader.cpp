#include "platform/foundation/file_reader.h"

#include <algorithm>
#include <mutex>

namespace zelkam {

namespace {

constexpr qsizetype growth = 64 * 1024;

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

std::optional<RegularFile> openContentsOf(const URL &url)
{
    const auto path = localPath(url);
    return path ? RegularFile::open(*path) : std::nullopt;
}

std::optional<QByteArray> dataWithContentsOf(const URL &url)
{
    const auto file = openContentsOf(url);
    if (!file)
        return std::nullopt;
    QByteArray bytes(static_cast<qsizetype>(file->size()), Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < file->limit()) {
        // Only a file without a size gets here with a full buffer.
        if (filled == bytes.size())
            bytes.resize(filled + std::min<qsizetype>(file->limit() - filled, growth));
        const qint64 got = file->read(bytes.data() + filled, bytes.size() - filled);
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
