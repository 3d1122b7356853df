#include "platform/decoding/unusual_image.h"

#include "platform/decoding/jpeg_cmyk.h"
#include "platform/decoding/png_image.h"
#include "platform/decoding/tiff_image.h"

namespace zelkam {

std::optional<QImage> readUnusualImage(const QByteArray &file, const QByteArray &format,
                                       QSize atLeast)
{
    if (format == "jpeg")
        return readCmykJpeg(file, atLeast);
    if (format == "png")
        return readUnusualPng(file);
    if (format == "tiff")
        return readUnusualTiff(file);
    return std::nullopt;
}

} // namespace zelkam
