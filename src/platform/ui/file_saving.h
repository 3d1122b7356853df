#pragma once

#include "platform/foundation/file_creation.h"
#include "platform/foundation/regular_file.h"

#include <QString>
#include <atomic>
#include <system_error>

namespace zelkam {

/// Copies an open file from its start into a folder, where it appears under its name whole or not
/// at all; what was there before stays when it fails. It has reached the disk by then. Fails like
/// createFileIn(), and with std::errc::operation_canceled soon after `isCancelled` has become true.
/// Reads and writes the disk. Any thread.
std::error_code saveCopy(const RegularFile &file, const QString &folder, const QString &name,
                         OlderFile older, const std::atomic<bool> &isCancelled);

/// Makes a folder in another one. Any thread.
std::error_code makeFolder(const QString &in, const QString &name);

/// Why nothing can have a name, in whatever folder; empty when it may do.
QString nameProblem(const QString &name);

/// Why saving or making a folder failed, as a sentence for the person.
QString savingProblem(std::error_code error);

} // namespace zelkam
