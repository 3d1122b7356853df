#pragma once

#include "platform/foundation/file_descriptor.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <system_error>

namespace zelkam {

/// A path of the container, taken apart: the open folder that holds the item, and its name there.
struct SandboxPath
{
    FileDescriptor folder;
    QByteArray name; ///< one component; empty for the container itself
};

/// Walks from the container down to the folder of the item, through real folders only.
/// Sets the error and returns nothing when the path leaves the container, holds "..", passes
/// through a symbolic link, or a folder on the way is missing.
std::optional<SandboxPath> resolveInContainer(const QString &path, std::error_code &error);

/// The last system error as a code.
std::error_code lastError();

} // namespace zelkam
