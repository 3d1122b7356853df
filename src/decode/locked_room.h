#pragma once

#include <QtGlobal>

namespace zelkam {

/// Takes from this process, for good, all that a decoder does not need: to start programs or
/// processes, to open sockets, to look at or signal other processes, to write anywhere but to what
/// is open already, and to read files other than the system's fonts, which drawings and documents
/// name. Bounds its memory, its files and the largest of them; no core is written.
///
/// What breaks in here is the file that is being decoded, and nobody else's.
///
/// @return what the kernel could not do, as DecodeReply::Lack has it
qint64 lockRoom();

} // namespace zelkam
