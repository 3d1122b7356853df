#pragma once

#include "platform/foundation/descriptor_message.h"
#include "platform/foundation/file_descriptor.h"
#include "platform/images/decode_wish.h"

#include <chrono>
#include <memory>
#include <sys/types.h>

namespace zelkam {

/// One process of the program zelkam-decode, from its start to its end. One thread at a time;
/// kill() from any.
class DecoderProcess
{
public:
    /// Starts the program and waits until it is ready. Null when it cannot be started, is of
    /// another version, or has not locked itself in within some seconds; a warning says why.
    static std::unique_ptr<DecoderProcess> start();

    /// Ends the process, whatever it does.
    ~DecoderProcess();
    DecoderProcess(const DecoderProcess &) = delete;
    DecoderProcess &operator=(const DecoderProcess &) = delete;

    /// Whether it has ended, or speaks without having been asked. Between two jobs.
    bool isGone() const;

    /// False when the process is gone.
    bool send(const DecodeWish &wish, int file);
    Received receive(DecodeReply &reply, FileDescriptor &memory, std::chrono::milliseconds timeout);

    /// What the process has used of the processors since it was started.
    std::chrono::nanoseconds processorTime() const;

    void kill();

private:
    DecoderProcess(pid_t process, FileDescriptor handle, FileDescriptor socket);

    pid_t m_process;
    FileDescriptor m_handle; ///< of the process: its number may be another's once it is gone
    FileDescriptor m_socket;
};

} // namespace zelkam
