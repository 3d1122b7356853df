#include "platform/decoding/image_wholeness.h"

#include <QtEndian>

namespace zelkam {

namespace {

template<typename Number>
Number numberAt(const QByteArray &data, qsizetype at)
{
    return qFromLittleEndian<Number>(data.constData() + at);
}

/// Passes over the data blocks that begin at a position, each led by its length, up to the empty
/// one that ends them. Returns the position behind it, or -1 when the data ends before.
qsizetype behindBlocks(const QByteArray &data, qsizetype at)
{
    while (at < data.size()) {
        const auto length = static_cast<uchar>(data.at(at));
        at += 1 + length;
        if (length == 0)
            return at;
    }
    return -1;
}

/// The bytes of the colour table that a GIF's flags announce.
qsizetype colorTableSize(char flags)
{
    const auto bits = static_cast<uchar>(flags);
    return bits & 0x80 ? 3 * (qsizetype(2) << (bits & 0x07)) : 0;
}

} // namespace

bool jpegIsWhole(const QByteArray &data)
{
    const auto *bytes = reinterpret_cast<const uchar *>(data.constData());
    const qsizetype size = data.size();
    bool hasFrame = false;
    bool hasScan = false;
    qsizetype at = 2; // behind the start marker
    while (at + 1 < size) {
        // Entropy-coded data lies between a scan's header and the next marker; in it every FF is
        // followed by 00 or is a restart marker, and both are passed over here as well.
        if (bytes[at] != 0xff) {
            at = hasScan ? data.indexOf('\xff', at) : -1;
            if (at < 0)
                return false;
            continue;
        }
        const uchar marker = bytes[at + 1];
        if (marker == 0xd9)
            return hasFrame && hasScan;
        const bool standsAlone = marker <= 0x01 || (marker >= 0xd0 && marker <= 0xd8);
        if (marker == 0xff || standsAlone) { // the former is a fill byte
            at += marker == 0xff ? 1 : 2;
            continue;
        }
        const int length = at + 4 <= size ? qFromBigEndian<quint16>(bytes + at + 2) : 0;
        if (length < 2)
            return false;
        // C4, C8 and CC lie among the frame headers but are tables and a reserved code.
        hasFrame = hasFrame || (marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 &&
                                marker != 0xc8 && marker != 0xcc);
        hasScan = hasScan || marker == 0xda;
        at += 2 + length;
    }
    return false;
}

bool bmpIsWhole(const QByteArray &data)
{
    constexpr qsizetype shortestHeader = 14 + 12;
    if (data.size() < shortestHeader)
        return false;
    if (numberAt<quint32>(data, 14) < 40) { // of OS/2
        const qint64 stride =
            (qint64(numberAt<quint16>(data, 18)) * numberAt<quint16>(data, 24) + 31) / 32 * 4;
        return numberAt<quint32>(data, 10) + stride * numberAt<quint16>(data, 20) <= data.size();
    }
    if (data.size() < 14 + 40)
        return false;
    const quint32 compression = numberAt<quint32>(data, 30);
    constexpr quint32 uncompressed = 0;
    constexpr quint32 withMasks = 3;
    if (compression != uncompressed && compression != withMasks)
        return numberAt<quint32>(data, 2) <= quint64(data.size()); // run lengths: only its word
    const qint64 stride =
        (qAbs(qint64(numberAt<qint32>(data, 18))) * numberAt<quint16>(data, 28) + 31) / 32 * 4;
    const qint64 height = qAbs(qint64(numberAt<qint32>(data, 22)));
    return height == 0 || stride <= (data.size() - numberAt<quint32>(data, 10)) / height;
}

bool gifIsWhole(const QByteArray &data)
{
    constexpr qsizetype screenHeader = 13;
    constexpr qsizetype imageHeader = 10;
    if (data.size() < screenHeader)
        return false;
    qsizetype at = screenHeader + colorTableSize(data.at(10));
    while (at >= 0 && at < data.size()) {
        if (data.at(at) == '!') {
            at = behindBlocks(data, at + 2);
        } else if (data.at(at) == ',') {
            if (at + imageHeader > data.size())
                return false;
            const qsizetype codeSize = 1;
            return behindBlocks(data,
                                at + imageHeader + colorTableSize(data.at(at + 9)) + codeSize) > 0;
        } else {
            return false;
        }
    }
    return false;
}

bool icoIsModest(const QByteArray &data)
{
    constexpr qsizetype headSize = 6;
    constexpr qsizetype entrySize = 16;
    constexpr quint32 largest = 1024;
    if (data.size() < headSize)
        return false;
    const int images = numberAt<quint16>(data, 4);
    for (int i = 0; i < images; ++i) {
        const qsizetype entry = headSize + i * entrySize;
        if (entry + entrySize > data.size())
            return false;
        const qsizetype start = numberAt<quint32>(data, entry + 12);
        constexpr qsizetype longestNeeded = 24;
        if (start + longestNeeded > data.size())
            return false;
        const bool isPng = data.mid(start, 4) == "\x89PNG";
        const auto width = isPng ? qFromBigEndian<quint32>(data.constData() + start + 16)
                                 : numberAt<quint32>(data, start + 4);
        const auto height = isPng ? qFromBigEndian<quint32>(data.constData() + start + 20)
                                  : numberAt<quint32>(data, start + 8) / 2; // image and mask
        if (width > largest || height > largest)
            return false;
    }
    return images > 0;
}

} // namespace zelkam
