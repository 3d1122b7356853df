// Damaged gzip is found, however it is cut into pieces, and both ways of cutting agree.
#include "platform/network/content_decoder.h"

#include <algorithm>
#include <cstdlib>

using namespace zelkam;

namespace {

struct Decoded
{
    QByteArray data;
    bool isWhole = false;
};

Decoded decode(const char *data, std::size_t size, std::size_t piece)
{
    constexpr qsizetype enough = 1 << 20;
    Decoded result;
    ContentDecoder decoder("gzip");
    bool goesOn = true;
    for (std::size_t at = 0; goesOn && at < size; at += piece) {
        goesOn =
            decoder.decode(data + at, std::min(piece, size - at), [&](auto *bytes, auto count) {
                result.data.append(bytes, static_cast<qsizetype>(count));
                return result.data.size() < enough;
            });
    }
    result.isWhole = goesOn && decoder.isWhole();
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto *bytes = reinterpret_cast<const char *>(data);
    const Decoded atOnce = decode(bytes, size, std::max<std::size_t>(size, 1));
    const Decoded inPieces = decode(bytes, size, 3);
    if (atOnce.isWhole != inPieces.isWhole || (atOnce.isWhole && atOnce.data != inPieces.data))
        std::abort();
    return 0;
}
