#include "platform/images/image_decoding.h"

#include "platform/images/color_profile.h"
#include "platform/images/image_costs.h"
#include "platform/images/image_memory.h"
#include "platform/images/image_orientation.h"
#include "platform/images/image_scaling.h"
#include "platform/images/image_wholeness.h"
#include "platform/images/jpeg_structure.h"
#include "platform/images/unusual_image.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QtEndian>
#include <QtPlugin>
#include <mutex>

// Whoever decodes pictures through this layer gets HEIC, and with it every QImageReader of the
// program.
Q_IMPORT_PLUGIN(ZelkamHeifImagePlugin)

namespace zelkam {

namespace {

/// heic or avif, by a file type box of the still-image brands (ISO/IEC 23008-12); else empty.
QByteArray heifFormat(const QByteArray &head)
{
    if (head.size() < 12 || head.mid(4, 4) != "ftyp")
        return {};
    const QByteArray major = head.mid(8, 4);
    static const QByteArrayList coded{"heic", "heix", "heim", "heis"};
    if (major == "avif" || coded.contains(major))
        return major == "avif" ? major : coded.first();
    // The general brands tell nothing about the coding; the compatible ones behind them do.
    if (major != "mif1" && major != "msf1")
        return {};
    const auto boxEnd = qMin<qsizetype>(head.size(), qFromBigEndian<quint32>(head.constData()));
    for (qsizetype at = 16; at + 4 <= boxEnd; at += 4) {
        const QByteArray brand = head.mid(at, 4);
        if (brand == "avif" || coded.contains(brand))
            return brand == "avif" ? brand : coded.first();
    }
    return coded.first();
}

/// Two letters alone would make an image of many a text.
bool isBmp(const QByteArray &head)
{
    return head.size() >= 15 && head.startsWith("BM") && head.mid(6, 4) == QByteArray(4, '\0') &&
           QByteArray("\x0c\x28\x34\x38\x40\x6c\x7c").contains(head.at(14));
}

bool jpegIsWithin(const std::optional<JpegStructure> &structure, const ImageLimits &limits)
{
    if (!structure || structure->scans > limits.scans)
        return false;
    const qint64 pixels = qint64(structure->size.width()) * structure->size.height();
    return structure->coefficientBytes == 0 || structure->scans * pixels <= limits.scanPixels;
}

bool isSound(const QByteArray &data, const QByteArray &format)
{
    if (format == "bmp")
        return bmpIsWhole(data);
    if (format == "gif")
        return gifIsWhole(data);
    if (format == "ico")
        return icoIsModest(data);
    return !format.isEmpty();
}

/// Qt's own limit, 128 MiB unless the host has set one, is below a large photo's need.
void raiseAllocationLimit()
{
    static std::once_flag once;
    std::call_once(once, [] {
        constexpr int qtDefault = 128;
        constexpr int mebibytes = int(ImageLimits().heldBytesOfPhoto >> 20);
        if (QImageReader::allocationLimit() == qtDefault)
            QImageReader::setAllocationLimit(mebibytes);
    });
}

/// A QImage cannot forget its text; so another one takes over the pixels of an image that has some.
QImage withoutMetadata(QImage image)
{
    if (image.textKeys().isEmpty())
        return image;
    auto *const source = new QImage(std::move(image));
    QImage bare(
        source->bits(), source->width(), source->height(), source->bytesPerLine(), source->format(),
        [](void *pixels) { delete static_cast<QImage *>(pixels); }, source);
    bare.setColorTable(source->colorTable());
    bare.setColorSpace(source->colorSpace());
    return bare;
}

} // namespace

QByteArray rasterFormat(const QByteArray &head)
{
    if (head.startsWith("\xff\xd8\xff"))
        return "jpeg";
    if (head.startsWith("\x89PNG\r\n\x1a\n"))
        return "png";
    if (head.startsWith("GIF87a") || head.startsWith("GIF89a"))
        return "gif";
    if (isBmp(head))
        return "bmp";
    if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP")
        return "webp";
    if (head.startsWith(QByteArray("II*\0", 4)) || head.startsWith(QByteArray("MM\0*", 4)))
        return "tiff";
    if (head.startsWith(QByteArray("\0\0\1\0", 4)))
        return "ico";
    return heifFormat(head);
}

std::optional<QImage> decodeImageTo(const QByteArray &data, const ImageTarget &target, bool hurried,
                                    const ImageLimits &limits)
{
    const QByteArray format = rasterFormat(data);
    const auto jpeg = format == "jpeg" ? readJpegStructure(data) : std::nullopt;
    if (format == "jpeg" ? !jpegIsWithin(jpeg, limits) : !isSound(data, format))
        return std::nullopt;
    raiseAllocationLimit();

    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(false);
    // Other readers would scale without smoothing.
    if (hurried && format == "heic")
        reader.setQuality(0);

    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > limits.storedPixels)
        return std::nullopt;
    const auto transformation = exifTransformation(data, format).value_or(reader.transformation());
    // What is read is scaled first and turned then.
    const bool onItsSide = transformation & QImageIOHandler::TransformationRotate90;
    const QSize upright = onItsSide ? size.transposed() : size;
    const QSize chosen = target(upright);
    if (!chosen.isValid())
        return std::nullopt;
    const QSize wanted = chosen.expandedTo({1, 1});
    const QSize read = onItsSide ? wanted.transposed() : wanted;
    if (read != size && scalesAsItReads(format))
        reader.setScaledSize(read);
    const auto bytes =
        imageBytes(data, {format, size, read, reader.imageFormat(), jpeg, onItsSide}, limits);
    if (!bytes)
        return std::nullopt;
    ImageMemoryShare memory;
    memory.reserve(*bytes);

    auto unusual = readUnusualImage(data, format, read);
    QImage image = unusual ? std::move(*unusual) : reader.read();
    if (image.isNull())
        return std::nullopt;
    image = transformedImage(withoutMetadata(std::move(image)), transformation);
    if (image.size() != wanted)
        image = stretchedImage(std::move(image), wanted);
    return imageInSrgb(std::move(image));
}

std::optional<QImage> decodeImage(const QByteArray &data, int maximumEdge,
                                  const ImageLimits &limits)
{
    const auto target = [maximumEdge](QSize size) {
        return maximumEdge > 0 && qMax(size.width(), size.height()) > maximumEdge
                   ? size.scaled(maximumEdge, maximumEdge, Qt::KeepAspectRatio)
                   : size;
    };
    return decodeImageTo(data, target, false, limits);
}

QSize imageSize(const QByteArray &data)
{
    const QByteArray format = rasterFormat(data);
    if (format.isEmpty())
        return {};
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    const auto transformation = exifTransformation(data, format).value_or(reader.transformation());
    return transformation & QImageIOHandler::TransformationRotate90 ? size.transposed() : size;
}

} // namespace zelkam
