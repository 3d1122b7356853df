#include "platform/images/image_costs.h"

#include "platform/images/heif/heif_structure.h"

#include <QPixelFormat>

namespace zelkam {

namespace {

constexpr qint64 fourBytes = 4;

qint64 area(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

struct DecoderCost
{
    qint64 bytes = 0;  ///< beside the image that it gives
    qint64 pixels = 0; ///< that it makes, whatever the file says that it shows
};

std::optional<DecoderCost> decoderCost(const QByteArray &data, const ImageReading &reading)
{
    const qint64 stored = area(reading.stored);
    if (reading.format == "jpeg") {
        if (!reading.jpeg)
            return std::nullopt;
        return DecoderCost{reading.jpeg->coefficientBytes, stored};
    }
    if (reading.format == "heic") {
        const auto structure = HeifStructure::read(data);
        const auto cost = structure ? structure->cost(structure->primaryItem()) : std::nullopt;
        if (!cost)
            return std::nullopt;
        return DecoderCost{cost->bytes, cost->pixels};
    }
    return DecoderCost{0, stored};
}

} // namespace

bool scalesAsItReads(const QByteArray &format)
{
    return format == "jpeg" || format == "heic";
}

std::optional<qint64> imageBytes(const QByteArray &data, const ImageReading &reading,
                                 const ImageLimits &limits)
{
    const auto decoder = decoderCost(data, reading);
    if (!decoder)
        return std::nullopt;
    const bool isKnown = reading.pixels != QImage::Format_Invalid;
    const qint64 depth =
        isKnown ? qMax(1, QImage::toPixelFormat(reading.pixels).bitsPerPixel() / 8) : fourBytes;
    const bool isScaled = reading.read != reading.stored;
    const bool isPlain = reading.pixels == QImage::Format_RGB32;
    const qint64 copyDepth = qMax(depth, fourBytes);
    // Turning takes a copy, and so does scaling of what is no plain image.
    const bool isCopied = !isPlain || reading.isTurned;
    const qint64 stored = isScaled && !scalesAsItReads(reading.format)
                              ? area(reading.stored) * (isCopied ? depth + copyDepth : depth)
                              : 0;
    const qint64 result = area(reading.read) * depth;
    const qint64 copy = isCopied ? area(reading.read) * copyDepth : 0;
    // The decoder and the stored image are gone before the result is copied.
    const qint64 bytes = result + qMax(decoder->bytes + stored, copy);
    if (bytes > mostImageBytes(data.size(), decoder->pixels, limits))
        return std::nullopt;
    return bytes;
}

qint64 mostImageBytes(qint64 fileBytes, qint64 pixels, const ImageLimits &limits)
{
    const bool isPhoto = fileBytes * limits.pixelsOfPhotoByte >= pixels;
    return isPhoto ? limits.heldBytesOfPhoto : limits.heldBytes;
}

} // namespace zelkam
