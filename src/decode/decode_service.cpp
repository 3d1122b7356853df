#include "decode/decode_service.h"

#include "decode/locked_room.h"
#include "platform/foundation/descriptor_message.h"
#include "platform/foundation/memory_file.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace zelkam {

namespace {

constexpr int application = STDIN_FILENO;

/// A decoder that runs for ever does not see that the application is gone.
void endWithTheApplication()
{
    std::thread([] {
        pollfd gone{application, POLLRDHUP, 0};
        while (::poll(&gone, 1, -1) < 1) {
        }
        ::_exit(0);
    }).detach();
}

/// The form in which pixels are handed over: sRGB has been seen to before.
QImage plain(QImage image)
{
    const auto form = image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    image.convertTo(form);
    return image;
}

void answer(quint64 job, const DecodeOutcome &outcome)
{
    DecodeReply reply = outcome.reply;
    reply.job = job;
    FileDescriptor memory;
    if (reply.outcome == DecodeReply::Outcome::done) {
        QByteArrayView result(outcome.bytes);
        QImage pixels;
        if (!outcome.pixels.isNull()) {
            pixels = plain(outcome.pixels);
            reply.width = pixels.width();
            reply.height = pixels.height();
            reply.bytesPerLine = qint32(pixels.bytesPerLine());
            reply.isTransparent = pixels.format() == QImage::Format_ARGB32;
            result = QByteArrayView(pixels.constBits(), pixels.sizeInBytes());
        }
        reply.bytes = result.size();
        memory = sealedMemoryFile(result);
        if (!memory.isOpen())
            reply.outcome = DecodeReply::Outcome::tooLarge;
    }
    if (!sendMessage(application, &reply, sizeof reply, memory.get()))
        ::_exit(0);
}

} // namespace

int serveDecoding(const WorkOnWish &work)
{
    // Others of the same user can neither look into this process nor steer it.
    ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
    DecodeReply hello;
    hello.outcome = DecodeReply::Outcome::ready;
    hello.value = lockRoom();
    endWithTheApplication();
    if (!sendMessage(application, &hello, sizeof hello, -1))
        return 0;
    for (;;) {
        DecodeWish wish;
        FileDescriptor file;
        constexpr std::chrono::milliseconds forEver(-1);
        const Received received = receiveMessage(application, &wish, sizeof wish, file, forEver);
        if (received == Received::gone)
            return 0;
        struct stat status = {};
        const auto tellProgress = [&wish](DecodeReply working) {
            working.job = wish.job;
            sendMessage(application, &working, sizeof working, -1);
        };
        const bool isFile =
            received == Received::message && file.isOpen() && ::fstat(file.get(), &status) == 0;
        // Of text only the beginning is looked at: all of a long file has no room here.
        constexpr off_t beginning = 16 << 20;
        const bool isLong = wish.task == DecodeWish::Task::text && status.st_size > beginning;
        const auto mapping = isFile
                                 ? FileMapping::map(file.get(), isLong ? beginning : status.st_size)
                                 : std::nullopt;
        if (received == Received::message)
            answer(wish.job, mapping ? work(wish, *mapping, tellProgress) : DecodeOutcome());
    }
}

} // namespace zelkam
