#pragma once

#include <system_error>

namespace zelkam {

/// Renames a file or folder, both names relative to an open folder (or AT_FDCWD), and never
/// replaces what has the new name: that is std::errc::file_exists. Where the file system cannot do
/// so in one step, a file gets its new name by a link; only where it has no links either may
/// another process that makes the same name at the same moment lose it. Any thread.
std::error_code renameWithoutReplacing(int fromFolder, const char *from, int toFolder,
                                       const char *to);

} // namespace zelkam
