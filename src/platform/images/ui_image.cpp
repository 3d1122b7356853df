#include "platform/images/ui_image.h"

#include "platform/images/image_decoding.h"

#include <algorithm>

namespace zelkam {

std::optional<UIImage> UIImage::fromData(const QByteArray &data)
{
    auto image = decodeImage(data);
    if (!image)
        return std::nullopt;
    return UIImage(std::move(*image));
}

std::optional<UIImage> UIImage::fromQImage(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    return UIImage(image);
}

bool UIImage::hasTransparency() const
{
    if (!m_image.hasAlphaChannel())
        return false;
    const QImage pixels = m_image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        if (std::any_of(line, line + pixels.width(),
                        [](QRgb pixel) { return qAlpha(pixel) < 255; }))
            return true;
    }
    return false;
}

} // namespace zelkam
