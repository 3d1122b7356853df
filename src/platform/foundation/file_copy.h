#pragma once

#include "platform/foundation/regular_file.h"

#include <atomic>
#include <system_error>

namespace zelkam {

/// Writes all bytes to an open file.
std::error_code writeAll(int fd, const char *data, qint64 size);

/// Copies a file from its start into an open, empty file, in the kernel where that can be done.
/// Fails with the first error of either side, and with std::errc::operation_canceled soon after
/// `isCancelled`, which may be null, has become true.
std::error_code copyContents(const RegularFile &from, int to,
                             const std::atomic<bool> *isCancelled = nullptr);

} // namespace zelkam
