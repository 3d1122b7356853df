#include "platform/images/heif/heif_image_handler.h"

#include "platform/images/image_costs.h"
#include "platform/images/image_decoding.h"

namespace zelkam {

namespace {

constexpr qint64 longestBrands = 64;

/// For readers that did not come by decodeImageTo(), which has asked already.
bool isWithinLimit(const HeifPicture &picture, qint64 fileBytes)
{
    return picture.cost().bytes <= mostImageBytes(fileBytes, picture.cost().pixels);
}

} // namespace

bool HeifImageHandler::canRead(QIODevice *device)
{
    const QByteArray format = rasterFormat(device->peek(longestBrands));
    return format == "heic" || format == "avif";
}

bool HeifImageHandler::canRead() const
{
    if (m_opened)
        return m_picture.has_value();
    if (!canRead(device()))
        return false;
    setFormat(rasterFormat(device()->peek(longestBrands)));
    return true;
}

const HeifPicture *HeifImageHandler::picture() const
{
    if (!m_opened) {
        m_opened = true;
        m_picture = HeifPicture::open(device()->readAll());
    }
    return m_picture ? &*m_picture : nullptr;
}

bool HeifImageHandler::read(QImage *image)
{
    const HeifPicture *whole = picture();
    if (!whole)
        return false;
    constexpr int fastBelow = 50;
    const auto small = m_quality >= 0 && m_quality < fastBelow && !m_scaledSize.isEmpty()
                           ? whole->thumbnail(m_scaledSize)
                           : std::nullopt;
    const HeifPicture &chosen = small ? *small : *whole;
    const QSize size = m_scaledSize.isEmpty() ? chosen.size() : m_scaledSize;
    // Asked for first, so that what is too large fails before anything is decoded.
    if (!isWithinLimit(chosen, device()->size()) ||
        !allocateImage(size, QImage::Format_RGB32, image))
        return false;
    *image = QImage();
    *image = chosen.decode(size);
    m_picture.reset(); // one picture, once
    return !image->isNull();
}

QVariant HeifImageHandler::option(ImageOption option) const
{
    const HeifPicture *found = option == Size || option == ImageFormat ? picture() : nullptr;
    switch (option) {
    case Size:
        return found ? QVariant(found->size()) : QVariant();
    case ImageFormat:
        if (!found)
            return {};
        return found->hasAlpha() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    case ScaledSize:
        return m_scaledSize;
    case Quality:
        return m_quality;
    default:
        return {};
    }
}

void HeifImageHandler::setOption(ImageOption option, const QVariant &value)
{
    if (option == ScaledSize)
        m_scaledSize = value.toSize();
    else if (option == Quality)
        m_quality = value.toInt();
}

bool HeifImageHandler::supportsOption(ImageOption option) const
{
    return option == Size || option == ImageFormat || option == ScaledSize || option == Quality;
}

} // namespace zelkam
