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

/// The frame header, as far as it matters here.
struct Frame
{
    QSize size;
    bool progressive = false;
    int components = 0;
    qint64 coefficientBytes = 0;
};

/// Reads the content of a frame header (B.2.2). Nothing when it is broken.
std::optional<Frame> readFrame(const uchar *content, int length, uchar marker)
{
    constexpr int fixedPart = 6;
    if (length < fixedPart)
        return std::nullopt;
    Frame frame;
    frame.size = QSize(qFromBigEndian<quint16>(content + 3), qFromBigEndian<quint16>(content + 1));
    frame.progressive = isProgressive(marker);
    frame.components = content[5];
    if (length < fixedPart + 3 * frame.components)
        return std::nullopt;
    int samples = 0;
    int most = 1;
    for (int i = 0; i < frame.components; ++i) {
        const uchar sampling = content[fixedPart + 3 * i + 1];
        const int factor = (sampling >> 4) * (sampling & 15);
        samples += factor;
        most = qMax(most, factor);
    }
    // Two bytes each, in blocks of eight by eight.
    const qint64 blocks = qint64(frame.size.width() / 8 + 2) * (frame.size.height() / 8 + 2);
    frame.coefficientBytes = blocks * 64 * 2 * samples / most;
    return frame;
}

} // namespace

std::optional<JpegStructure> readJpegStructure(const QByteArray &data)
{
    const auto *bytes = reinterpret_cast<const uchar *>(data.constData());
    const qsizetype size = data.size();
    if (size < 4 || bytes[0] != 0xff || bytes[1] != startOfImage)
        return std::nullopt;

    JpegStructure structure;
    Frame frame;
    bool isBuffered = false;
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
            if (structure.scans == 0 || frame.size.isEmpty())
                return std::nullopt;
            structure.size = frame.size;
            structure.coefficientBytes = isBuffered ? frame.coefficientBytes : 0;
            return structure;
        }
        if (at + 4 > size)
            return std::nullopt;
        const int length = qFromBigEndian<quint16>(bytes + at + 2);
        if (length < 2 || at + 2 + length > size)
            return std::nullopt;
        if (isFrameHeader(marker)) {
            const auto found = readFrame(bytes + at + 4, length - 2, marker);
            if (!found)
                return std::nullopt;
            frame = *found;
        } else if (marker == startOfScan) {
            const int components = length > 2 ? bytes[at + 4] : 0;
            isBuffered = isBuffered || frame.progressive || components < frame.components ||
                         structure.scans > 0;
            ++structure.scans;
        }
        at += 2 + length;
    }
    return std::nullopt;
}

} // namespace zelkam
