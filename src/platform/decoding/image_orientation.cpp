#include "platform/decoding/image_orientation.h"

#include <QDataStream>
#include <QIODevice>
#include <QTransform>

namespace zelkam {

namespace {

using Transformations = QImageIOHandler::Transformations;

const QByteArrayView nameInJpeg("Exif\0\0", 6);

/// The orientation in the first directory of an Exif block, which is a TIFF file; 1 to 8.
quint16 orientationOf(const QByteArray &exif)
{
    constexpr quint16 orientation = 0x0112;
    constexpr quint16 type16Bits = 3;
    constexpr quint16 type32Bits = 4;
    QDataStream stream(exif);
    if (exif.startsWith("II"))
        stream.setByteOrder(QDataStream::LittleEndian);
    quint16 magic = 0;
    quint32 directory = 0;
    quint16 entries = 0;
    stream.skipRawData(2);
    stream >> magic >> directory;
    stream.device()->seek(directory);
    stream >> entries;
    for (; magic == 42 && entries > 0 && stream.status() == QDataStream::Ok; --entries) {
        quint16 tag = 0;
        quint16 type = 0;
        quint32 count = 0;
        quint16 halves[2] = {};
        stream >> tag >> type >> count >> halves[0] >> halves[1];
        const bool isInSecond = type == type32Bits && exif.startsWith("MM");
        const quint16 value = halves[isInSecond ? 1 : 0];
        if (tag == orientation && (type == type16Bits || type == type32Bits))
            return value >= 1 && value <= 8 ? value : 1;
    }
    return 1;
}

/// The orientation by the Exif block of a file, which is looked for by its name: that a picture's
/// bytes read so by chance, and a directory with an orientation follows, does not occur.
///
/// @param headSize  of the name, and of what lies between it and the block
quint16 orientationIn(QByteArrayView file, QByteArrayView name, qsizetype headSize)
{
    const qsizetype at = file.indexOf(name);
    if (at < 0)
        return 1;
    constexpr qsizetype longest = 64 << 10;
    const qsizetype from = qMin(at + headSize, file.size());
    QByteArrayView exif = file.sliced(from, qMin(longest, file.size() - from));
    if (exif.startsWith(nameInJpeg)) // some programs write it elsewhere, too
        exif = exif.sliced(nameInJpeg.size());
    return orientationOf(QByteArray::fromRawData(exif.data(), exif.size()));
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
    constexpr qsizetype withinJpeg = 1 << 20; // behind it lie other pictures
    if (format == "jpeg")
        return byOrientation[orientationIn(
                                 QByteArrayView(file).first(qMin(withinJpeg, file.size())),
                                 nameInJpeg, 6) -
                             1];
    if (format == "png")
        return byOrientation[orientationIn(file, "eXIf", 4) - 1];
    if (format == "webp")
        return byOrientation[orientationIn(file, "EXIF", 8) - 1];
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
