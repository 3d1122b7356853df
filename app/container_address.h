#pragma once

#include "platform/foundation/url.h"

#include <QString>
#include <QUrl>
#include <memory>
#include <optional>

class QFile;

namespace zelkam {

/// Addresses of the container's files on the host's scheme: "zelkam://container/" and the path
/// below the container, percent-encoded. An address names a place in the container or nothing:
/// one with an empty component, "." or "..", or an encoded slash or NUL is nobody's address.

/// The address of a file of the container; nothing for any other URL. This is the host's default
/// URL transformer. From any thread.
std::optional<URL> containerAddress(const URL &fileUrl);

/// The absolute path that an address stands for; nothing for what is no such address. From any
/// thread.
std::optional<QString> containerPath(const QUrl &address);

/// Opens a regular file of the container for reading, without passing through a symbolic link.
/// Null when there is none or it cannot be read.
std::unique_ptr<QFile> openContainerFile(const QString &path);

} // namespace zelkam
