// Whatever a file holds, everything that can be wished of it ends within the bounds of memory: what
// the decoder process does, without its walls. The first byte chooses the wish, the file follows.
#include "platform/decoding/decode_work.h"

#include <QGuiApplication>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static DecodeWork work;
    if (size < 1)
        return 0;
    static constexpr DecodeWish wishes[] = {
        {.task = DecodeWish::Task::picture},
        {.task = DecodeWish::Task::picture, .size = DecodeWish::Size::stored, .width = 64},
        {.task = DecodeWish::Task::picture, .size = DecodeWish::Size::filling, .width = 64},
        {.task = DecodeWish::Task::picture,
         .size = DecodeWish::Size::stretched,
         .form = DecodeWish::Form::jpeg,
         .width = 40,
         .height = 30},
        {.task = DecodeWish::Task::thumbnail, .width = 256},
        {.task = DecodeWish::Task::frame, .index = 1},
        {.task = DecodeWish::Task::document},
        {.task = DecodeWish::Task::page, .width = 40, .height = 40},
        {.task = DecodeWish::Task::text}};
    const FileDescriptor file = sealedMemoryFile({data + 1, qsizetype(size) - 1});
    const auto mapping = FileMapping::map(file.get(), qint64(size) - 1);
    if (mapping)
        work.perform(wishes[data[0] % std::size(wishes)], *mapping, [](const DecodeReply &) {});
    return 0;
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(*argc, *argv);
    return 0;
}
