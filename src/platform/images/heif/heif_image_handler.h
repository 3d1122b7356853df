#pragma once

#include "platform/images/heif/heif_picture.h"

#include <QImageIOHandler>
#include <optional>

namespace zelkam {

/// Reads HEIC and AVIF pictures for QImageReader, upright: the turns and mirrorings of the file are
/// applied, whatever the reader's own setting. Supports a scaled size, which saves the memory of
/// the full picture. With a quality below 50 the small version that a camera stored beside
/// the picture may be used, when it is large enough.
///
/// A picture whose decoding would take more than QImageReader::allocationLimit() is refused
/// before its decoder starts.
class HeifImageHandler : public QImageIOHandler
{
public:
    /// Whether the device's next bytes are the beginning of such a file.
    static bool canRead(QIODevice *device);

    bool canRead() const override;
    bool read(QImage *image) override;
    QVariant option(ImageOption option) const override;
    void setOption(ImageOption option, const QVariant &value) override;
    bool supportsOption(ImageOption option) const override;

private:
    const HeifPicture *picture() const;

    mutable std::optional<HeifPicture> m_picture;
    mutable bool m_opened = false;
    QSize m_scaledSize;
    int m_quality = -1;
};

} // namespace zelkam
