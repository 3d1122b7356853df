// This file is compiled once for each kind of processor: it includes itself through Highway.
//
// The method is that of W. Mula and D. Lemire, "Faster Base64 Encoding and Decoding using AVX2
// Instructions" (2018): the bytes of each group are spread over a lane of 32 bits, two
// multiplications move each six bits to a byte of their own, and a table of offsets turns the
// numbers into letters.

#include "platform/foundation/base64_vector.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/foundation/base64_vector.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace zelkam::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR || HWY_HAVE_SCALABLE

qint64 encodeVectors(const unsigned char *, qint64, char *)
{
    return 0;
}

#else

qint64 encodeVectors(const unsigned char *bytes, qint64 size, char *text)
{
    const hn::ScalableTag<uint8_t> d8;
    const hn::Repartition<uint16_t, decltype(d8)> d16;
    const hn::Repartition<uint32_t, decltype(d8)> d32;
    constexpr qint64 lanes = hn::MaxLanes(d8);
    constexpr qint64 step = lanes / 4 * 3;

    // Twelve bytes to each block of sixteen: three lanes of 32 bits of the four are new to it.
    HWY_ALIGN uint32_t blockLanes[lanes / 4];
    for (uint32_t i = 0; i < lanes / 4; ++i)
        blockLanes[i] = i % 4 == 3 ? i / 4 * 3 : i / 4 * 3 + i % 4;
    const auto blocks = hn::SetTableIndices(d32, blockLanes);
    // Each group of bytes a, b, c becomes b, a, c, b.
    HWY_ALIGN static constexpr uint8_t spreadBytes[16] = {1, 0, 2, 1, 4,  3, 5,  4,
                                                          7, 6, 8, 7, 10, 9, 11, 10};
    const auto spread = hn::LoadDup128(d8, spreadBytes);
    // What to add to a number: for the lower-case letters, the ten digits, "+", "/", and the
    // capitals, in the order in which the numbers below tell them apart.
    HWY_ALIGN static constexpr uint8_t offsetBytes[16] = {'a' - 26,
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('0' - 52),
                                                          uint8_t('+' - 62),
                                                          uint8_t('/' - 63),
                                                          'A',
                                                          0,
                                                          0};
    const auto offsets = hn::LoadDup128(d8, offsetBytes);

    qint64 done = 0;
    for (; size - done >= lanes; done += step, text += lanes) {
        const auto loaded = hn::BitCast(d32, hn::LoadU(d8, bytes + done));
        const auto inBlocks = lanes == 16 ? loaded : hn::TableLookupLanes(loaded, blocks);
        const auto groups =
            hn::BitCast(d16, hn::TableLookupBytes(hn::BitCast(d8, inBlocks), spread));
        const auto high = hn::MulHigh(hn::And(groups, hn::BitCast(d16, hn::Set(d32, 0x0fc0fc00u))),
                                      hn::BitCast(d16, hn::Set(d32, 0x04000040u)));
        const auto low = hn::Mul(hn::And(groups, hn::BitCast(d16, hn::Set(d32, 0x003f03f0u))),
                                 hn::BitCast(d16, hn::Set(d32, 0x01000010u)));
        const auto numbers = hn::BitCast(d8, hn::Or(high, low));
        // 52 to 63 give 1 to 12, less gives 0, of which the capitals are then made 13.
        const auto kinds = hn::Or(hn::SaturatedSub(numbers, hn::Set(d8, uint8_t(51))),
                                  hn::IfThenElseZero(hn::Lt(numbers, hn::Set(d8, uint8_t(26))),
                                                     hn::Set(d8, uint8_t(13))));
        const auto letters = hn::Add(numbers, hn::TableLookupBytes(offsets, kinds));
        hn::StoreU(letters, d8, reinterpret_cast<uint8_t *>(text));
    }
    return done;
}

#endif

} // namespace zelkam::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zelkam {

HWY_EXPORT(encodeVectors);

qint64 base64EncodeVectors(const unsigned char *bytes, qint64 size, char *text)
{
    return HWY_DYNAMIC_DISPATCH(encodeVectors)(bytes, size, text);
}

} // namespace zelkam
#endif
