#include "platform/foundation/base64.h"

#include "platform/foundation/base64_vector.h"

namespace zelkam {

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

void base64Encode(const char *bytes, qint64 size, char *text)
{
    const auto *in = reinterpret_cast<const unsigned char *>(bytes);
    const qint64 done = base64EncodeVectors(in, size, text);
    text += done / 3 * 4;
    const auto put = [&text](unsigned group, int characters) {
        for (int i = 0; i < characters; ++i)
            *text++ = alphabet[(group >> (18 - 6 * i)) & 0x3F];
    };
    qint64 i = done;
    for (; i + 3 <= size; i += 3)
        put(unsigned(in[i]) << 16 | unsigned(in[i + 1]) << 8 | in[i + 2], 4);
    if (size - i == 1) {
        put(unsigned(in[i]) << 16, 2);
        *text++ = '=';
        *text++ = '=';
    } else if (size - i == 2) {
        put(unsigned(in[i]) << 16 | unsigned(in[i + 1]) << 8, 3);
        *text++ = '=';
    }
}

} // namespace zelkam
