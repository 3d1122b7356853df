#pragma once

#include <QByteArray>
#include <QImage>
#include <memory>
#include <optional>

namespace zelkam {

/// Brings an image into sRGB, from the space that its file names; one without a space is taken for
/// sRGB. Qt knows profiles of curves and a matrix alone and keeps others as bytes: those of red,
/// green and blue are followed too.
QImage imageInSrgb(QImage image);

/// Brings lines of cyan, magenta, yellow and black into sRGB, by a profile.
class CmykConverter
{
public:
    enum class Ink {
        isLarge, ///< 255 is all of an ink
        isSmall, ///< 0 is: as JPEGs have it
    };

    /// Nothing when the bytes are no profile of these inks.
    static std::optional<CmykConverter> fromProfile(const QByteArray &profile, Ink ink);

    void convert(const uchar *inks, QRgb *line, int pixels) const;

private:
    struct Release
    {
        void operator()(void *transform) const;
    };
    using Transform = std::unique_ptr<void, Release>;

    explicit CmykConverter(Transform transform) : m_transform(std::move(transform)) {}
    Transform m_transform;
};

} // namespace zelkam
