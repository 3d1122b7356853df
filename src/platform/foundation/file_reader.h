#pragma once

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

/// The path of the local file that a URL names: a file URL, a bare absolute path, or an address
/// that the host made. Nothing for any other URL. From any thread.
std::optional<QString> localPath(const URL &url);

/// Reads the whole file at a URL. Only regular files are read, so that a pipe or a device
/// cannot block the caller. Fails when the URL names no local file, the file cannot be opened,
/// or a read fails. From any thread.
std::optional<QByteArray> dataWithContentsOf(const URL &url);

} // namespace zelkam
