#include "platform/foundation/descriptor_message.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

namespace zelkam {

bool sendMessage(int socket, const void *message, size_t size, int file)
{
    iovec part{const_cast<void *>(message), size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr head = {};
    head.msg_iov = &part;
    head.msg_iovlen = 1;
    if (file >= 0) {
        head.msg_control = control;
        head.msg_controllen = sizeof control;
        cmsghdr *const rights = CMSG_FIRSTHDR(&head);
        rights->cmsg_level = SOL_SOCKET;
        rights->cmsg_type = SCM_RIGHTS;
        rights->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(rights), &file, sizeof file);
    }
    ssize_t sent = -1;
    do {
        sent = ::sendmsg(socket, &head, MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent == ssize_t(size);
}

Received receiveMessage(int socket, void *message, size_t size, FileDescriptor &file,
                        std::chrono::milliseconds timeout)
{
    pollfd waiting{socket, POLLIN, 0};
    const int ready = ::poll(&waiting, 1, int(timeout.count()));
    if (ready == 0 || (ready < 0 && errno == EINTR))
        return Received::nothing;
    iovec part{message, size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr head = {};
    head.msg_iov = &part;
    head.msg_iovlen = 1;
    head.msg_control = control;
    // Without what it is padded with: a second file would fit in there and stay open for ever.
    head.msg_controllen = CMSG_LEN(sizeof(int));
    const ssize_t taken = ::recvmsg(socket, &head, MSG_CMSG_CLOEXEC);
    file = FileDescriptor();
    const cmsghdr *const rights = taken > 0 ? CMSG_FIRSTHDR(&head) : nullptr;
    if (rights && rights->cmsg_level == SOL_SOCKET && rights->cmsg_type == SCM_RIGHTS) {
        int received = -1;
        std::memcpy(&received, CMSG_DATA(rights), sizeof received);
        file = FileDescriptor(received);
    }
    const bool isWhole = taken == ssize_t(size) && (head.msg_flags & MSG_TRUNC) == 0;
    return isWhole ? Received::message : Received::gone;
}

} // namespace zelkam
