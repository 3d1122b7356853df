// The decoder program, with a decoder that does what the file says.
#include "decode/decode_service.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace zelkam;

namespace {

/// Whether it has got anything by it.
bool misbehave(const QByteArray &how)
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
    return how == "behaves";
}

} // namespace

int main()
{
    return serveDecoding([](const auto &, const auto &file, const auto &) {
        DecodeOutcome outcome;
        const bool isDone = misbehave(file.bytes().toByteArray());
        outcome.reply.outcome = isDone ? DecodeReply::Outcome::done : DecodeReply::Outcome::unknown;
        outcome.bytes = "content";
        return outcome;
    });
}
