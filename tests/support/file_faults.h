#pragma once

#include <QByteArray>

/// Calls of the C library on files below one folder, of which one can be made to fail: this library
/// stands before the C library, in the programs that link to it and in those that preload it
/// (LD_PRELOAD). From any thread.
namespace file_faults {

/// What a call can come to besides an errno value.
constexpr int half = -1; ///< a read, a write or a copy does half of what it was asked for
constexpr int kill = -2; ///< the process ends there, as by SIGKILL

/// From here on the calls below the folder count, and this one fails (the first is 1; 0 is none).
void arm(const QByteArray &folder, int number, int fault);
/// Ends that. Gives how many calls there were.
int disarm();

} // namespace file_faults
