#include "platform/foundation/file_reader.h"

#include <mutex>

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

std::optional<RegularFile> openContentsOf(const URL &url)
{
    const auto path = localPath(url);
    return path ? RegularFile::open(*path) : std::nullopt;
}

std::optional<QByteArray> dataWithContentsOf(const URL &url)
{
    const auto file = openContentsOf(url);
    return file ? file->readAll() : std::nullopt;
}

} // namespace zelkam
