// The decoder program, with a decoder that does what the file says.
#include "decode/decode_service.h"
#include "platform/foundation/descriptor_message.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace zelkam;

namespace {

bool sendWithTwoFiles(DecodeReply &reply)
{
    iovec part{&reply, sizeof reply};
    alignas(cmsghdr) char control[CMSG_SPACE(2 * sizeof(int))] = {};
    msghdr head = {};
    head.msg_iov = &part;
    head.msg_iovlen = 1;
    head.msg_control = control;
    head.msg_controllen = sizeof control;
    cmsghdr *const rights = CMSG_FIRSTHDR(&head);
    rights->cmsg_level = SOL_SOCKET;
    rights->cmsg_type = SCM_RIGHTS;
    rights->cmsg_len = CMSG_LEN(2 * sizeof(int));
    return ::sendmsg(STDIN_FILENO, &head, MSG_NOSIGNAL) > 0; // descriptor 0, twice
}

/// Whether it has got anything by it.
bool misbehave(const QByteArray &how, const DecodeWish &wish)
{
    if (how == "reads a file")
        return ::open("/etc/passwd", O_RDONLY) >= 0;
    if (how == "writes a file")
        return ::open("/tmp/zelkam-was-here", O_WRONLY | O_CREAT, 0600) >= 0;
    if (how == "opens a socket")
        return ::socket(AF_INET, SOCK_STREAM, 0) >= 0;
    if (how == "forks")
        return ::fork() > 0;
    if (how == "runs a program")
        return std::system("true") == 0;
    if (how == "makes a program of memory")
        return ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE | PROT_EXEC,
                      MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
    if (how == "takes 8 GiB") {
        constexpr size_t piece = 64 << 20;
        for (int i = 0; i < 128; ++i) {
            void *const bytes = std::malloc(piece);
            if (!bytes)
                return false;
            std::memset(bytes, 1, piece);
        }
        return true;
    }
    if (how == "spins")
        for (volatile bool isOn = true; isOn;) {
        }
    if (how == "crashes")
        std::abort();
    if (how == "ends")
        ::_exit(0);
    DecodeReply reply;
    reply.outcome = DecodeReply::Outcome::working;
    reply.job = how == "answers the next" ? wish.job + 1 : wish.job;
    if (how == "replies without end")
        while (sendWithTwoFiles(reply)) {
        }
    if (how.startsWith("hands over") || how == "answers the next") {
        const FileDescriptor file(::memfd_create("", MFD_ALLOW_SEALING));
        const off_t size = how.endsWith("too much") ? 512 << 20 : 4096;
        const bool isWritten =
            ::lseek(file.get(), size - 1, SEEK_SET) > 0 && ::write(file.get(), "", 1) == 1;
        const int fixed = how.endsWith("may change") ? 0 : F_SEAL_WRITE;
        ::fcntl(file.get(), F_ADD_SEALS, F_SEAL_SEAL | F_SEAL_SHRINK | F_SEAL_GROW | fixed);
        reply.outcome = DecodeReply::Outcome::done;
        reply.bytes = how.endsWith("it has") ? 2 * size : size;
        if (isWritten)
            sendMessage(STDIN_FILENO, &reply, sizeof reply, file.get());
    }
    return how == "behaves";
}

} // namespace

int main()
{
    return serveDecoding([](const auto &wish, const auto &file, const auto &) {
        DecodeOutcome outcome;
        const bool isDone = misbehave(file.bytes().toByteArray(), wish);
        outcome.reply.outcome = isDone ? DecodeReply::Outcome::done : DecodeReply::Outcome::unknown;
        outcome.bytes = "content";
        return outcome;
    });
}
