#include "platform/images/heif/hevc_parameter_set.h"

#include <QByteArray>

namespace zelkam {

namespace {

/// Bits of a unit's payload. Reading past the end gives zeros and spoils the reader.
class BitReader
{
public:
    explicit BitReader(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    bool isValid() const { return m_valid; }

    quint32 bits(int count)
    {
        quint32 value = 0;
        for (int i = 0; i < count; ++i)
            value = value << 1 | bit();
        return value;
    }

    void skip(int count)
    {
        m_at += count;
        m_valid = m_valid && m_at <= m_bytes.size() * 8;
    }

    /// ue(v) of H.265, 9.2.
    quint32 exponentialGolomb()
    {
        int zeros = 0;
        while (m_valid && bit() == 0) {
            if (++zeros > 31) {
                m_valid = false;
                return 0;
            }
        }
        return (1U << zeros) - 1 + bits(zeros);
    }

private:
    quint32 bit()
    {
        if (m_at >= m_bytes.size() * 8) {
            m_valid = false;
            return 0;
        }
        const auto byte = static_cast<quint8>(m_bytes.at(m_at / 8));
        const quint32 value = byte >> (7 - m_at % 8) & 1;
        ++m_at;
        return value;
    }

    QByteArray m_bytes;
    qsizetype m_at = 0;
    bool m_valid = true;
};

QByteArray withoutEmulationPrevention(QByteArrayView unit)
{
    QByteArray bytes;
    bytes.reserve(unit.size());
    int zeros = 0;
    for (const char byte : unit) {
        if (zeros >= 2 && byte == 3) {
            zeros = 0;
            continue;
        }
        zeros = byte == 0 ? zeros + 1 : 0;
        bytes.append(byte);
    }
    return bytes;
}

void skipProfileTierLevel(BitReader &reader, int subLayers)
{
    reader.skip(88); // the general profile
    reader.skip(8);  // the general level
    bool hasProfile[8] = {};
    bool hasLevel[8] = {};
    for (int i = 0; i < subLayers; ++i) {
        hasProfile[i] = reader.bits(1) != 0;
        hasLevel[i] = reader.bits(1) != 0;
    }
    if (subLayers > 0)
        reader.skip(2 * (8 - subLayers));
    for (int i = 0; i < subLayers; ++i)
        reader.skip((hasProfile[i] ? 88 : 0) + (hasLevel[i] ? 8 : 0));
}

} // namespace

HevcUnit hevcUnitKind(QByteArrayView unit)
{
    if (unit.size() < 3)
        return HevcUnit::other;
    const int type = static_cast<quint8>(unit[0]) >> 1 & 0x3f;
    constexpr int lastSliceType = 31;
    constexpr int sequenceParameterSet = 33;
    if (type == sequenceParameterSet)
        return HevcUnit::sequenceParameterSet;
    const bool first = (static_cast<quint8>(unit[2]) & 0x80) != 0;
    return type <= lastSliceType && first ? HevcUnit::firstSliceOfPicture : HevcUnit::other;
}

std::optional<HevcPictureFormat> readSequenceParameterSet(QByteArrayView unit)
{
    constexpr qsizetype longestSet = 4096;
    BitReader reader(withoutEmulationPrevention(unit.first(qMin(unit.size(), longestSet))));
    reader.skip(16); // the unit's header
    reader.skip(4);  // video parameter set
    const int subLayers = int(reader.bits(3));
    reader.skip(1); // temporal nesting
    skipProfileTierLevel(reader, subLayers);
    reader.exponentialGolomb(); // its own number

    HevcPictureFormat format;
    format.chromaFormat = int(reader.exponentialGolomb());
    if (format.chromaFormat > 3)
        return std::nullopt;
    if (format.chromaFormat == 3)
        reader.skip(1); // separate colour planes
    const quint32 width = reader.exponentialGolomb();
    const quint32 height = reader.exponentialGolomb();
    constexpr quint32 longestEdge = 1U << 16;
    if (width == 0 || height == 0 || width > longestEdge || height > longestEdge)
        return std::nullopt;
    format.size = QSize(int(width), int(height));
    if (reader.bits(1) != 0) { // a conformance window
        for (int edge = 0; edge < 4; ++edge)
            reader.exponentialGolomb();
    }
    const quint32 lumaDepth = reader.exponentialGolomb();
    const quint32 chromaDepth = reader.exponentialGolomb();
    if (!reader.isValid() || lumaDepth > 8 || chromaDepth > 8)
        return std::nullopt;
    format.bitDepth = 8 + int(qMax(lumaDepth, chromaDepth));
    return format;
}

} // namespace zelkam
