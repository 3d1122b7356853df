#include "platform/decoding/unusual_image.h"

#include <QColorSpace>
#include <QRgba64>
#include <QtEndian>
#include <algorithm>
#include <zlib.h>

namespace zelkam {

namespace {

/// Of a chunk: its length and its type in front of it, and a check sum behind it.
constexpr qsizetype headSize = 8;
constexpr qsizetype frameSize = headSize + 4;

/// Where the content of a chunk in front of the pixels begins, and its size.
struct Chunk
{
    qsizetype at = 0;
    qsizetype size = 0;
};

std::optional<Chunk> findChunk(const QByteArray &file, QByteArrayView wanted)
{
    qsizetype at = 8;
    while (at + frameSize <= file.size()) {
        const auto type = QByteArrayView(file).sliced(at + 4, 4);
        const qsizetype size = qFromBigEndian<quint32>(file.constData() + at);
        if (type == "IDAT" || size > file.size() - at - frameSize)
            break;
        if (type == wanted)
            return Chunk{at + headSize, size};
        at += frameSize + size;
    }
    return std::nullopt;
}

/// Only the one that Qt gets wrong.
std::optional<Chunk> findColorKey(const QByteArray &file)
{
    constexpr qsizetype depthAt = 24;
    constexpr qsizetype colorTypeAt = 25;
    constexpr char redGreenBlue = 2;
    if (file.size() <= colorTypeAt || file.at(depthAt) != 16 ||
        file.at(colorTypeAt) != redGreenBlue)
        return std::nullopt;
    const auto chunk = findChunk(file, "tRNS");
    return chunk && chunk->size == 3 * 2 ? chunk : std::nullopt;
}

/// Empty when there is none.
QByteArray readProfile(const QByteArray &file)
{
    const auto chunk = findChunk(file, "iCCP");
    if (!chunk)
        return {};
    // A name that ends in 0, and the number of the compression, of which there is one.
    const qsizetype name = file.indexOf('\0', chunk->at);
    const qsizetype from = name + 2;
    const qsizetype end = chunk->at + chunk->size;
    if (name < 0 || from >= end)
        return {};
    constexpr uLongf largest = 4 << 20;
    QByteArray profile(qsizetype(largest), Qt::Uninitialized);
    uLongf size = largest;
    if (uncompress(reinterpret_cast<Bytef *>(profile.data()), &size,
                   reinterpret_cast<const Bytef *>(file.constData()) + from,
                   uLong(end - from)) != Z_OK)
        return {};
    profile.truncate(qsizetype(size));
    return profile;
}

} // namespace

std::optional<QImage> readUnusualPng(const QByteArray &file)
{
    const auto key = findColorKey(file);
    const QByteArray profile = readProfile(file);
    const auto space = profile.isEmpty() ? QColorSpace() : QColorSpace::fromIccProfile(profile);
    const bool isForeign = !profile.isEmpty() && !space.isValid();
    if (!key && !isForeign)
        return std::nullopt;
    QByteArray plain = file;
    if (key) // without it Qt reads the pixels well
        plain.remove(key->at - headSize, key->size + frameSize);
    QImage image = QImage::fromData(plain, "png");
    if (isForeign)
        image.setColorSpace(space);
    if (!key)
        return image;
    const char *channels = file.constData() + key->at;
    const auto color = QRgba64::fromRgba64(qFromBigEndian<quint16>(channels),
                                           qFromBigEndian<quint16>(channels + 2),
                                           qFromBigEndian<quint16>(channels + 4), 0xffff);
    image.convertTo(QImage::Format_RGBA64);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgba64 *>(image.scanLine(y));
        std::replace(line, line + image.width(), color, QRgba64::fromRgba64(0));
    }
    return image;
}

} // namespace zelkam
