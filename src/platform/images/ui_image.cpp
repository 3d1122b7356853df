#include "platform/images/ui_image.h"

#include "platform/images/decoder.h"
#include "platform/images/picture_kind.h"

#include <algorithm>

namespace zelkam {

std::optional<UIImage> UIImage::fromData(const QByteArray &data)
{
    if (rasterFormat(data).isEmpty())
        return std::nullopt;
    return fromQImage(decode(DecodeWish(), data).image);
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
    // Piece by piece: another form of all of it could be half a gigabyte.
    constexpr int linesOfPiece = 64;
    for (int top = 0; top < m_image.height(); top += linesOfPiece) {
        const QImage pixels = m_image.copy(0, top, m_image.width(), linesOfPiece)
                                  .convertToFormat(QImage::Format_ARGB32);
        const int lines = qMin(linesOfPiece, m_image.height() - top);
        for (int y = 0; y < lines; ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
            if (std::any_of(line, line + pixels.width(),
                            [](QRgb pixel) { return qAlpha(pixel) < 255; }))
                return true;
        }
    }
    return false;
}

} // namespace zelkam
