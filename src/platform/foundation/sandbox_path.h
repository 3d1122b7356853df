#pragma once

#include "platform/foundation/file_descriptor.h"

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>
#include <system_error>

class QFile;

namespace zelkam {

/// A path below a folder, taken apart: the open folder that holds the item, and its name there.
struct SandboxPath
{
    FileDescriptor folder;
    QByteArray name; ///< one component; empty for the folder itself
};

/// Walks from the container down to the folder of the item, through real folders only.
/// Sets the error and returns nothing when the path leaves the container, holds "..", passes
/// through a symbolic link, or a folder on the way is missing.
std::optional<SandboxPath> resolveInContainer(const QString &path, std::error_code &error);

/// The same walk from any folder: down to the folder of the item at a relative path.
std::optional<SandboxPath> resolveBelow(const QString &folder, const QString &relativePath,
                                        std::error_code &error);

/// Opens the item for reading when it is a regular file and no link. Null otherwise, or when it
/// cannot be read.
std::unique_ptr<QFile> openRegularFile(const SandboxPath &place);

/// The last system error as a code.
std::error_code lastError();

} // namespace zelkam
