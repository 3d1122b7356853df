#pragma once

#include <QByteArray>
#include <functional>
#include <sys/types.h>
#include <system_error>

namespace zelkam {

/// What becomes of an older file that has the name of a new one.
enum class OlderFile { stays, isReplaced };

/// Makes a file in an open folder. It appears under its name whole or not at all: on any failure,
/// what was there stays as it was. Any thread.
///
/// @param permissions  less those that the process's mask takes away
/// @param older  where it stays, the outcome is std::errc::file_exists. A link counts as a file and
///     is not followed. A folder always stays; that is std::errc::is_a_directory.
/// @param write  puts the contents into the open, empty file
/// @param flushes  whether it is brought to the disk before it gets its name, see
///     setFlushesFiles()
std::error_code createFileIn(int folder, const QByteArray &name, mode_t permissions,
                             OlderFile older, const std::function<std::error_code(int fd)> &write,
                             bool flushes = true);

} // namespace zelkam
