#include "platform/images/jpeg_structure.h"

#include <QtEndian>

namespace zelkam {

namespace {

constexpr uchar startOfImage = 0xd8;
constexpr uchar endOfImage = 0xd9;
constexpr uchar startOfScan = 0xda;

bool isFrameHeader(uchar marker)
{
    // C4, C8 and CC lie in the same range but are tables and a reserved code.
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

bool isProgressive(uchar marker)
{
    return marker == 0xc2 || marker == 0xc6 || marker == 0xca || marker == 0xce;
}

bool standsAlone(uchar marker)
{
    return marker == 0x01 || (marker >= 0xd0 && marker <= startOfImage);
}

} // namespace

std::optional<JpegStructure> readJpegStructure(const QByteArray &data)
{
    const auto *bytes = reinterpret_cast<const uchar *>(data.constData());
    const qsizetype size = data.size();
    if (size < 4 || bytes[0] != 0xff || bytes[1] != startOfImage)
        return std::nullopt;

    JpegStructure structure;
    qsizetype at = 2;
    while (at + 1 < size) {
        // Entropy-coded data lies between a scan's header and the next marker; in it every FF is
        // followed by 00 or is a restart marker, and both are passed over here as well.
        if (bytes[at] != 0xff) {
            if (structure.scans == 0)
                return std::nullopt;
            const qsizetype next = data.indexOf('\xff', at);
            if (next < 0)
                return std::nullopt;
            at = next;
            continue;
        }
        const uchar marker = bytes[at + 1];
        if (marker == 0xff) { // fill byte
            ++at;
            continue;
        }
        if (marker == 0x00 || standsAlone(marker)) {
            at += 2;
            continue;
        }
        if (marker == endOfImage) {
            if (structure.scans == 0 || structure.size.isEmpty())
                return std::nullopt;
            return structure;
        }
        if (at + 4 > size)
            return std::nullopt;
        const int length = qFromBigEndian<quint16>(bytes + at + 2);
        if (length < 2 || at + 2 + length > size)
            return std::nullopt;
        if (isFrameHeader(marker)) {
            if (length < 8)
                return std::nullopt;
            structure.size = QSize(qFromBigEndian<quint16>(bytes + at + 7),
                                   qFromBigEndian<quint16>(bytes + at + 5));
            structure.progressive = isProgressive(marker);
        } else if (marker == startOfScan) {
            ++structure.scans;
        }
        at += 2 + length;
    }
    return std::nullopt;
}

} // namespace zelkam
