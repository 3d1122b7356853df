#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <optional>

namespace zelkam {

/// A still image, decoded: upright (its orientation is applied), in sRGB, without metadata.
/// Values are implicitly shared; any thread.
class UIImage
{
public:
    /// Decodes the bytes of a raster image (JPEG, PNG, GIF, BMP, WebP, TIFF, ICO, HEIC, AVIF); of
    /// an animation its first frame. Documents, vector images, what is cut short or corrupt, and
    /// what takes more time or memory than its decoder gets give nothing. Not on the main thread:
    /// it waits for the decoder.
    static std::optional<UIImage> fromData(const QByteArray &data);

    /// Takes an image that is in memory already; nothing for a null image.
    static std::optional<UIImage> fromQImage(const QImage &image);

    QSize size() const { return m_image.size(); }
    /// Whether a pixel is not opaque; not only whether the format could hold one.
    bool hasTransparency() const;
    const QImage &toQImage() const { return m_image; }

private:
    explicit UIImage(QImage image) : m_image(std::move(image)) {}
    QImage m_image;
};

} // namespace zelkam
