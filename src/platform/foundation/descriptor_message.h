#pragma once

#include "platform/foundation/file_descriptor.h"

#include <chrono>
#include <cstddef>

namespace zelkam {

// Messages of a fixed size between two processes, each with an open file or none (unix(7), sockets
// of the type SOCK_SEQPACKET). Any thread, one at a time for each direction.

/// Sends a message; false when the other side is gone.
///
/// @param file  a descriptor that the other side gets one of its own of; -1 for none
bool sendMessage(int socket, const void *message, size_t size, int file);

enum class Received { message, nothing, gone };

/// Takes the next message. What is of another size counts as the end of the other side.
///
/// @param timeout  how long to wait at most; negative: for ever
Received receiveMessage(int socket, void *message, size_t size, FileDescriptor &file,
                        std::chrono::milliseconds timeout);

} // namespace zelkam
