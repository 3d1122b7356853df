#include "platform/decoding/heif/heif_picture.h"

#include "platform/decoding/heif/hevc_decoder.h"
#include "platform/decoding/heif/plane_scaler.h"

#include <QColorSpace>
#include <algorithm>
#include <array>
#include <cmath>
#include <libheif/heif.h>
#include <memory>
#include <optional>

namespace zelkam {

namespace {

template<auto release>
using ReleaseBy = decltype([](auto *object) { release(object); });
using Context = std::unique_ptr<heif_context, ReleaseBy<heif_context_free>>;
using Options = std::unique_ptr<heif_decoding_options, ReleaseBy<heif_decoding_options_free>>;
using Handle = std::unique_ptr<heif_image_handle, ReleaseBy<heif_image_handle_release>>;
using Image = std::unique_ptr<heif_image, ReleaseBy<heif_image_release>>;
using Profile = std::unique_ptr<heif_color_profile_nclx, ReleaseBy<heif_nclx_color_profile_free>>;

/// Planes of red, green and blue, as libheif has the tiles of a grid at once.
Image decodePlanes(const heif_image_handle *handle)
{
    const Options options(heif_decoding_options_alloc());
    if (!options)
        return {};
    // A picture with a part missing is refused, not handed out with grey in its place.
    options->strict_decoding = 1;
    heif_image *image = nullptr;
    const heif_error error =
        heif_decode_image(handle, &image, heif_colorspace_RGB, heif_chroma_444, options.get());
    Image owned(image);
    return error.code == heif_error_Ok ? std::move(owned) : Image();
}

std::optional<PlaneScaler> scaler(const heif_image *picture, heif_channel channel, QSize target)
{
    SamplePlane plane;
    plane.bytes = heif_image_get_plane_readonly(picture, channel, &plane.stride);
    plane.size = {heif_image_get_width(picture, channel), heif_image_get_height(picture, channel)};
    plane.bits = heif_image_get_bits_per_pixel_range(picture, channel);
    if (!plane.bytes || plane.size != plane.size.expandedTo(target) || plane.bits < 8 ||
        plane.bits > 16)
        return std::nullopt;
    return PlaneScaler(plane, target);
}

/// @param target  at most the picture's own size in both directions
QImage imageOfPlanes(const heif_image *picture, QSize target, bool isPremultiplied)
{
    constexpr std::array channels{heif_channel_R, heif_channel_G, heif_channel_B,
                                  heif_channel_Alpha};
    const bool isTransparent = heif_image_has_channel(picture, heif_channel_Alpha) != 0;
    std::vector<PlaneScaler> planes;
    for (size_t i = 0; i < (isTransparent ? 4 : 3); ++i) {
        auto plane = scaler(picture, channels[i], target);
        if (!plane)
            return {};
        planes.push_back(std::move(*plane));
    }
    QImage image(target, !isTransparent    ? QImage::Format_RGB32
                         : isPremultiplied ? QImage::Format_ARGB32_Premultiplied
                                           : QImage::Format_ARGB32);
    if (image.isNull())
        return {};
    const std::vector<float> opaque(size_t(target.width()), 255.0F);
    const auto toByte = [](float value) { return uint(std::clamp(value + 0.5F, 0.0F, 255.0F)); };
    for (int y = 0; y < target.height(); ++y) {
        const auto &reds = planes[0].row(y);
        const auto &greens = planes[1].row(y);
        const auto &blues = planes[2].row(y);
        const auto &alphas = isTransparent ? planes[3].row(y) : opaque;
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (size_t x = 0; x < size_t(target.width()); ++x)
            line[x] = toByte(alphas[x]) << 24 | toByte(reds[x]) << 16 | toByte(greens[x]) << 8 |
                      toByte(blues[x]);
    }
    return image;
}

/// The colour space of a coded image: its ICC profile, otherwise the primaries and the transfer
/// that it names. Invalid where it says nothing or what Qt cannot express.
QColorSpace colorSpaceOf(const heif_image_handle *handle)
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

QSize sizeOf(const Handle &handle)
{
    return {heif_image_handle_get_width(handle.get()), heif_image_handle_get_height(handle.get())};
}

/// The first of the smaller versions beside an image, if it has the same shape and is at least of
/// this size.
Handle smallVersion(const Handle &handle, QSize atLeast)
{
    heif_item_id item = 0;
    heif_image_handle *found = nullptr;
    if (heif_image_handle_get_list_of_thumbnail_IDs(handle.get(), &item, 1) != 1 ||
        heif_image_handle_get_thumbnail(handle.get(), item, &found).code != heif_error_Ok)
        return {};
    Handle small(found);
    const QSize whole = sizeOf(handle);
    const QSize own = sizeOf(small);
    const double shape = double(whole.width()) / whole.height();
    const double ownShape = double(own.width()) / qMax(1, own.height());
    constexpr double tolerance = 0.03;
    const bool fits =
        own == own.expandedTo(atLeast) && std::abs(shape - ownShape) <= tolerance * shape;
    return fits ? std::move(small) : Handle();
}

} // namespace

QImage readHeif(const QByteArray &file, const ImageTarget &target, bool hurried)
{
    registerHevcDecoder();
    const Context context(heif_context_alloc());
    heif_image_handle *primary = nullptr;
    if (!context ||
        heif_context_read_from_memory_without_copy(context.get(), file.constData(),
                                                   size_t(file.size()), nullptr)
                .code != heif_error_Ok ||
        heif_context_get_primary_image_handle(context.get(), &primary).code != heif_error_Ok)
        return {};
    Handle handle(primary);
    const QSize wanted = target(sizeOf(handle));
    if (!wanted.isValid())
        return {};
    if (Handle small = hurried ? smallVersion(handle, wanted) : Handle())
        handle = std::move(small);
    const QSize own = sizeOf(handle);
    setHevcDraft(2 * wanted.width() <= own.width() && 2 * wanted.height() <= own.height());
    const Image picture = decodePlanes(handle.get());
    if (!picture)
        return {};
    const QSize decoded(heif_image_get_primary_width(picture.get()),
                        heif_image_get_primary_height(picture.get()));
    QImage image = imageOfPlanes(picture.get(), wanted.boundedTo(decoded),
                                 heif_image_handle_is_premultiplied_alpha(handle.get()) != 0);
    if (!image.isNull() && image.size() != wanted)
        image = image.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.setColorSpace(colorSpaceOf(handle.get()));
    return image;
}

} // namespace zelkam
