#pragma once

#include "platform/foundation/regular_file.h"
#include "platform/foundation/url.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

namespace zelkam {

/// Turns an address that the host made for the web view back into the path of the file it
/// stands for; nothing for an address that is not the host's.
using AddressResolver = std::function<std::optional<QString>(const URL &)>;

/// Sets how the addresses that the host's URL transformer makes are read. Main thread, at start.
void setAddressResolver(AddressResolver resolver);

/// The path of the local file that a URL names: a file URL, a bare absolute path (as it is, or
/// percent-decoded where that is no file), or an address that the host made. Nothing for any other
/// URL. From any thread.
std::optional<QString> localPath(const URL &url);

/// Opens the file at a URL for reading. Fails when the URL names no local file, or it is no
/// regular file that may be read. From any thread.
std::optional<RegularFile> openContentsOf(const URL &url);

/// Reads the whole file at a URL; fails like openContentsOf(), and when a read fails. From any
/// thread.
std::optional<QByteArray> dataWithContentsOf(const URL &url);

} // namespace zelkam
