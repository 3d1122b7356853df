#include "platform/decoding/color_profile.h"

#include <QColorSpace>
#include <algorithm>
#include <lcms2.h>

namespace zelkam {

namespace {

// The pixels of QImage's 32 bits, as they lie in memory.
constexpr cmsUInt32Number pixelType = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? TYPE_BGRA_8 : TYPE_ARGB_8;

using Profile = std::unique_ptr<void, decltype([](void *profile) { cmsCloseProfile(profile); })>;

/// From a profile of a kind of colours to sRGB; null when the profile is of another kind.
cmsHTRANSFORM newTransform(const QByteArray &bytes, cmsColorSpaceSignature colors,
                           cmsUInt32Number type)
{
    const Profile source(cmsOpenProfileFromMem(bytes.constData(), cmsUInt32Number(bytes.size())));
    if (!source || cmsGetColorSpace(source.get()) != colors)
        return nullptr;
    const Profile sRgb(cmsCreate_sRGBProfile());
    return cmsCreateTransform(source.get(), type, sRgb.get(), pixelType, INTENT_PERCEPTUAL, 0);
}

} // namespace

void CmykConverter::Release::operator()(void *transform) const
{
    cmsDeleteTransform(transform);
}

std::optional<CmykConverter> CmykConverter::fromProfile(const QByteArray &profile, Ink ink)
{
    Transform transform(
        newTransform(profile, cmsSigCmykData, ink == Ink::isLarge ? TYPE_CMYK_8 : TYPE_CMYK_8_REV));
    return transform ? std::optional(CmykConverter(std::move(transform))) : std::nullopt;
}

void CmykConverter::convert(const uchar *inks, QRgb *line, int pixels) const
{
    std::fill_n(line, pixels, 0xff000000); // the conversion leaves alpha as it is
    cmsDoTransform(m_transform.get(), inks, line, cmsUInt32Number(pixels));
}

QImage imageInSrgb(QImage image)
{
    const QColorSpace sRgb(QColorSpace::SRgb);
    const QColorSpace own = image.colorSpace();
    if (own.isValid() && own != sRgb) {
        image.convertToColorSpace(sRgb);
    } else if (!own.isValid() && !own.iccProfile().isEmpty()) {
        const std::unique_ptr<void, decltype(&cmsDeleteTransform)> transform(
            newTransform(own.iccProfile(), cmsSigRgbData, pixelType), cmsDeleteTransform);
        if (transform) {
            image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
            for (int y = 0; y < image.height(); ++y) {
                uchar *line = image.scanLine(y);
                cmsDoTransform(transform.get(), line, line, cmsUInt32Number(image.width()));
            }
        }
    }
    image.setColorSpace(sRgb);
    return image;
}

} // namespace zelkam
