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

/// A path that nobody has encoded may well hold a percent sign: the copy of "My Report.pdf" is
/// called "My%20Report.pdf". So a path counts as it is, and decoded only where that is no file.
std::optional<QString> localPathWithoutScheme(const URL &url)
{
    const auto bare = url.barePath();
    if (!bare || isRegularFile(*bare))
        return bare;
    return url.path();
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
        return localPathWithoutScheme(url);
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
