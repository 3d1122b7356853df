#include "platform/decoding/heif/heif_colors.h"

#include "platform/decoding/heif/plane_scaler.h"

#include <QByteArray>
#include <algorithm>
#include <memory>
#include <optional>

namespace zelkam {

namespace {

struct ProfileRelease
{
    void operator()(heif_color_profile_nclx *profile) const
    {
        heif_nclx_color_profile_free(profile);
    }
};
using Profile = std::unique_ptr<heif_color_profile_nclx, ProfileRelease>;

/// How luma and chroma become red, green and blue.
struct Matrix
{
    float luma = 1, lumaOffset = 0, red = 0, greenBlue = 0, greenRed = 0, blue = 0;
};

/// The share of red and blue in luma (ITU-T H.273, table 4); nothing for what is no such matrix.
std::optional<std::pair<double, double>> lumaShares(int coefficients)
{
    switch (coefficients) {
    case heif_matrix_coefficients_ITU_R_BT_709_5:
        return {{0.2126, 0.0722}};
    case heif_matrix_coefficients_unspecified:
    case heif_matrix_coefficients_ITU_R_BT_470_6_System_B_G:
    case heif_matrix_coefficients_ITU_R_BT_601_6:
        return {{0.299, 0.114}};
    case heif_matrix_coefficients_SMPTE_240M:
        return {{0.212, 0.087}};
    case heif_matrix_coefficients_ITU_R_BT_2020_2_non_constant_luminance:
        return {{0.2627, 0.0593}};
    default:
        return std::nullopt;
    }
}

std::optional<Matrix> matrixOf(const heif_image *picture)
{
    heif_color_profile_nclx *found = nullptr;
    const heif_error error = heif_image_get_nclx_color_profile(picture, &found);
    const Profile profile(found);
    // A picture that says nothing is taken as libheif takes it.
    const bool known = error.code == heif_error_Ok && profile;
    const auto shares =
        lumaShares(known ? profile->matrix_coefficients : heif_matrix_coefficients_unspecified);
    if (!shares)
        return std::nullopt;
    const bool fullRange = !known || profile->full_range_flag != 0;
    const auto [red, blue] = *shares;
    const double green = 1 - red - blue;
    // Video range: luma lies in 16..235, chroma in 16..240 (H.273, 8.3).
    const double chroma = fullRange ? 1.0 : 255.0 / 224.0;
    Matrix matrix;
    matrix.luma = fullRange ? 1.0F : 255.0F / 219.0F;
    matrix.lumaOffset = fullRange ? 0.0F : 16.0F;
    matrix.red = float(chroma * 2 * (1 - red));
    matrix.blue = float(chroma * 2 * (1 - blue));
    matrix.greenRed = float(chroma * 2 * red * (1 - red) / green);
    matrix.greenBlue = float(chroma * 2 * blue * (1 - blue) / green);
    return matrix;
}

std::optional<PlaneScaler> scaler(const heif_image *picture, heif_channel channel, QSize target)
{
    SamplePlane plane;
    plane.bytes = heif_image_get_plane_readonly(picture, channel, &plane.stride);
    plane.size = {heif_image_get_width(picture, channel), heif_image_get_height(picture, channel)};
    plane.bits = heif_image_get_bits_per_pixel_range(picture, channel);
    if (!plane.bytes || plane.size.isEmpty() || plane.bits < 8 || plane.bits > 16)
        return std::nullopt;
    return PlaneScaler(plane, target);
}

uint toByte(float value)
{
    return uint(std::clamp(value + 0.5F, 0.0F, 255.0F));
}

uint pixel(float red, float green, float blue)
{
    return toByte(red) << 16 | toByte(green) << 8 | toByte(blue);
}

uint converted(const Matrix &matrix, float luma, float blueness, float redness)
{
    const float base = matrix.luma * (luma - matrix.lumaOffset);
    const float b = blueness - 128.0F;
    const float r = redness - 128.0F;
    return pixel(base + matrix.red * r, base - matrix.greenRed * r - matrix.greenBlue * b,
                 base + matrix.blue * b);
}

} // namespace

QColorSpace heifColorSpace(const heif_image_handle *handle)
{
    constexpr size_t largestProfile = 4 << 20;
    const size_t size = heif_image_handle_get_raw_color_profile_size(handle);
    if (size > 0 && size <= largestProfile) {
        QByteArray profile(qsizetype(size), Qt::Uninitialized);
        if (heif_image_handle_get_raw_color_profile(handle, profile.data()).code == heif_error_Ok)
            return QColorSpace::fromIccProfile(profile);
    }
    heif_color_profile_nclx *found = nullptr;
    if (heif_image_handle_get_nclx_color_profile(handle, &found).code != heif_error_Ok)
        return {};
    const Profile profile(found);
    switch (profile->color_primaries) {
    case heif_color_primaries_ITU_R_BT_709_5:
        return QColorSpace(QColorSpace::SRgb);
    case heif_color_primaries_SMPTE_EG_432_1:
        return QColorSpace(QColorSpace::DisplayP3);
    case heif_color_primaries_ITU_R_BT_2020_2_and_2100_0:
        // ITU-R BT.2020, table 3
        return QColorSpace({0.3127, 0.3290}, {0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046},
                           QColorSpace::TransferFunction::SRgb);
    default:
        return {};
    }
}

QImage imageFromPlanes(const heif_image *picture, QSize target, bool premultiplied)
{
    const heif_colorspace colors = heif_image_get_colorspace(picture);
    const bool isGrey = colors == heif_colorspace_monochrome;
    const bool isRgb = colors == heif_colorspace_RGB;
    const auto matrix = isRgb ? std::optional(Matrix()) : matrixOf(picture);
    if ((colors != heif_colorspace_YCbCr && !isGrey && !isRgb) || !matrix)
        return {};
    auto first = scaler(picture, isRgb ? heif_channel_R : heif_channel_Y, target);
    auto second =
        isGrey ? std::nullopt : scaler(picture, isRgb ? heif_channel_G : heif_channel_Cb, target);
    auto third =
        isGrey ? std::nullopt : scaler(picture, isRgb ? heif_channel_B : heif_channel_Cr, target);
    const bool isTransparent = heif_image_has_channel(picture, heif_channel_Alpha) != 0;
    auto alpha = isTransparent ? scaler(picture, heif_channel_Alpha, target) : std::nullopt;
    if (!first || (!isGrey && (!second || !third)) || (isTransparent && !alpha))
        return {};

    QImage image(target, !isTransparent  ? QImage::Format_RGB32
                         : premultiplied ? QImage::Format_ARGB32_Premultiplied
                                         : QImage::Format_ARGB32);
    if (image.isNull())
        return {};
    const std::vector<float> neutral(size_t(target.width()), 128.0F);
    const std::vector<float> opaque(size_t(target.width()), 255.0F);
    for (int y = 0; y < target.height(); ++y) {
        const auto &as = alpha ? alpha->row(y) : opaque;
        const auto &firsts = first->row(y);
        const auto &seconds = isGrey ? neutral : second->row(y);
        const auto &thirds = isGrey ? neutral : third->row(y);
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (size_t x = 0; x < size_t(target.width()); ++x)
            line[x] = toByte(as[x]) << 24 |
                      (isRgb ? pixel(firsts[x], seconds[x], thirds[x])
                             : converted(*matrix, firsts[x], seconds[x], thirds[x]));
    }
    return image;
}

} // namespace zelkam
