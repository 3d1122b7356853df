#include "platform/decoding/image_orientation.h"

#include <QTransform>
#include <QtEndian>

namespace zelkam {

namespace {

using Transformations = QImageIOHandler::Transformations;

const QByteArrayView exifPrefix("Exif\0\0", 6);

/// What lies outside of the bytes is 0.
template<typename T>
T bigEndianAt(QByteArrayView bytes, qsizetype at)
{
    return at >= 0 && at <= bytes.size() - qsizetype(sizeof(T))
               ? qFromBigEndian<T>(bytes.constData() + at)
               : T(0);
}

template<typename T>
T littleEndianAt(QByteArrayView bytes, qsizetype at)
{
    return qbswap(bigEndianAt<T>(bytes, at));
}

/// The Exif block in a segment of a JPEG in front of its first scan.
QByteArrayView exifOfJpeg(QByteArrayView file)
{
    constexpr quint16 applicationSegment1 = 0xffe1;
    constexpr quint16 startOfScan = 0xffda;
    qsizetype at = 2;
    while (at + 4 <= file.size() && file.at(at) == '\xff') {
        if (file.at(at + 1) == '\xff') { // a fill byte
            ++at;
            continue;
        }
        const auto marker = bigEndianAt<quint16>(file, at);
        const qsizetype length = bigEndianAt<quint16>(file, at + 2);
        if (marker == startOfScan || length < 2 || at + 2 + length > file.size())
            break;
        const QByteArrayView content = file.sliced(at + 4, length - 2);
        if (marker == applicationSegment1 && content.startsWith(exifPrefix))
            return content;
        at += 2 + length;
    }
    return {};
}

QByteArrayView exifOfPng(QByteArrayView file)
{
    qsizetype at = 8;
    while (at + 12 <= file.size()) {
        const qsizetype length = bigEndianAt<quint32>(file, at);
        if (at + 12 + length > file.size())
            break;
        if (file.sliced(at + 4, 4) == "eXIf")
            return file.sliced(at + 8, length);
        at += 12 + length;
    }
    return {};
}

QByteArrayView exifOfWebp(QByteArrayView file)
{
    qsizetype at = 12;
    while (at + 8 <= file.size()) {
        const qsizetype length = littleEndianAt<quint32>(file, at + 4);
        if (at + 8 + length > file.size())
            break;
        if (file.sliced(at, 4) == "EXIF")
            return file.sliced(at + 8, length);
        at += 8 + length + length % 2;
    }
    return {};
}

/// The orientation in the first directory of an Exif block, which is a TIFF file; 1 to 8.
quint32 orientationOf(QByteArrayView exif)
{
    constexpr quint16 orientation = 0x0112;
    constexpr quint16 type16Bits = 3;
    constexpr quint16 type32Bits = 4;
    if (exif.startsWith(exifPrefix)) // belongs to JPEG; some programs write it elsewhere, too
        exif = exif.sliced(exifPrefix.size());
    const bool little = exif.startsWith(QByteArrayView("II*\0", 4));
    if (!little && !exif.startsWith(QByteArrayView("MM\0*", 4)))
        return 1;
    const auto u16 = [&](qsizetype at) {
        return little ? littleEndianAt<quint16>(exif, at) : bigEndianAt<quint16>(exif, at);
    };
    const auto u32 = [&](qsizetype at) {
        return little ? littleEndianAt<quint32>(exif, at) : bigEndianAt<quint32>(exif, at);
    };
    const qsizetype directory = u32(4);
    const int entries = u16(directory);
    for (int i = 0; i < entries; ++i) {
        const qsizetype entry = directory + 2 + 12 * qsizetype(i);
        if (u16(entry) != orientation)
            continue;
        const quint16 type = u16(entry + 2);
        const quint32 value = type == type16Bits   ? u16(entry + 8)
                              : type == type32Bits ? u32(entry + 8)
                                                   : 1;
        return value >= 1 && value <= 8 ? value : 1;
    }
    return 1;
}

} // namespace

std::optional<Transformations> exifTransformation(const QByteArray &file, const QByteArray &format)
{
    constexpr QImageIOHandler::Transformation byOrientation[] = {
        QImageIOHandler::TransformationNone,
        QImageIOHandler::TransformationMirror,
        QImageIOHandler::TransformationRotate180,
        QImageIOHandler::TransformationFlip,
        QImageIOHandler::TransformationFlipAndRotate90,
        QImageIOHandler::TransformationRotate90,
        QImageIOHandler::TransformationMirrorAndRotate90,
        QImageIOHandler::TransformationRotate270,
    };
    if (format == "jpeg")
        return byOrientation[orientationOf(exifOfJpeg(file)) - 1];
    if (format == "png")
        return byOrientation[orientationOf(exifOfPng(file)) - 1];
    if (format == "webp")
        return byOrientation[orientationOf(exifOfWebp(file)) - 1];
    return std::nullopt;
}

QImage transformedImage(QImage image, Transformations transformation)
{
    const bool mirrored = transformation & QImageIOHandler::TransformationMirror;
    const bool flipped = transformation & QImageIOHandler::TransformationFlip;
    if (mirrored || flipped)
        image = std::move(image).mirrored(mirrored, flipped);
    if (transformation & QImageIOHandler::TransformationRotate90)
        image = image.transformed(QTransform().rotate(90));
    return image;
}

} // namespace zelkam
