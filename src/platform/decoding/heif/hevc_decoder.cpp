#include "platform/decoding/heif/hevc_decoder.h"

#include <QtEndian>
#include <algorithm>
#include <atomic>
#include <cstring>
#include <libde265/de265.h>
#include <libheif/heif.h>
#include <libheif/heif_plugin.h>
#include <memory>
#include <mutex>
#include <thread>

namespace zelkam {

namespace {

std::atomic_bool isDraft;

constexpr heif_error fine{heif_error_Ok, heif_suberror_Unspecified, "Success"};
constexpr heif_error noMemory{heif_error_Memory_allocation_error, heif_suberror_Unspecified,
                              "no memory for the decoder"};
constexpr heif_error broken{heif_error_Decoder_plugin_error, heif_suberror_Unspecified,
                            "the coded picture is corrupt or cut short"};

template<auto release>
using ReleaseBy = decltype([](auto *object) { release(object); });
using Context = std::unique_ptr<de265_decoder_context, ReleaseBy<de265_free_decoder>>;
using Image = std::unique_ptr<heif_image, ReleaseBy<heif_image_release>>;
using Profile = std::unique_ptr<heif_color_profile_nclx, ReleaseBy<heif_nclx_color_profile_free>>;

class Decoder
{
public:
    Decoder() : m_context(de265_new_decoder())
    {
        if (m_context && isDraft) {
            de265_set_parameter_bool(m_context.get(), DE265_DECODER_PARAM_DISABLE_DEBLOCKING, 1);
            de265_set_parameter_bool(m_context.get(), DE265_DECODER_PARAM_DISABLE_SAO, 1);
        }
    }

    bool isUsable() const { return m_context != nullptr; }

    void setStrict(bool isStrict) { m_isStrict = isStrict; }

    /// Takes units, each behind its length in four bytes.
    bool push(QByteArrayView units)
    {
        // Starting threads takes longer than a small picture, and libheif decodes the tiles of a
        // grid on threads of its own. Without them it is slower and nothing else.
        constexpr qsizetype worthThreads = 256 * 1024;
        if (units.size() >= worthThreads)
            de265_start_worker_threads(
                m_context.get(), int(std::clamp(std::thread::hardware_concurrency(), 1U, 4U)));
        constexpr qsizetype lengthSize = 4;
        while (units.size() >= lengthSize) {
            const auto length = qsizetype(qFromBigEndian<quint32>(units.data()));
            units = units.sliced(lengthSize);
            if (length > units.size())
                return false;
            const QByteArrayView unit = units.first(length);
            units = units.sliced(length);
            if (de265_push_NAL(m_context.get(), unit.data(), int(length), 0, nullptr) != DE265_OK)
                return false;
        }
        return units.isEmpty();
    }

    /// The last picture of what was pushed; null when it cannot be decoded.
    Image decode()
    {
        Image result;
        if (de265_flush_data(m_context.get()) != DE265_OK)
            return result;
        int more = 1;
        while (more != 0) {
            if (de265_decode(m_context.get(), &more) != DE265_OK)
                return nullptr;
            if (const de265_image *picture = de265_get_next_picture(m_context.get()))
                result = copied(picture);
        }
        return m_isStrict && hasFault() ? nullptr : std::move(result);
    }

private:
    /// Whether the decoder has met what a whole picture does not have. Asking takes a warning away.
    bool hasFault()
    {
        for (;;) {
            switch (de265_get_warning(m_context.get())) {
            case DE265_OK:
                return false;
            case DE265_WARNING_NO_WPP_CANNOT_USE_MULTITHREADING:
            case DE265_WARNING_NUMBER_OF_THREADS_LIMITED_TO_MAXIMUM:
            case DE265_WARNING_SPS_MISSING_CANNOT_DECODE_SEI:
                break;
            default:
                return true;
            }
        }
    }

    static bool copyPlane(const de265_image *from, int index, heif_image *to, heif_channel channel)
    {
        const int width = de265_get_image_width(from, index);
        const int height = de265_get_image_height(from, index);
        const int bits = de265_get_bits_per_pixel(from, index);
        int stride = 0;
        const uint8_t *source = de265_get_image_plane(from, index, &stride);
        if (!source || width <= 0 || height <= 0 ||
            heif_image_add_plane(to, channel, width, height, bits).code != heif_error_Ok)
            return false;
        int targetStride = 0;
        uint8_t *target = heif_image_get_plane(to, channel, &targetStride);
        if (!target)
            return false;
        const auto rowSize = size_t(width) * (bits > 8 ? 2 : 1);
        for (ptrdiff_t y = 0; y < height; ++y)
            std::memcpy(target + y * targetStride, source + y * stride, rowSize);
        return true;
    }

    static Image copied(const de265_image *picture)
    {
        const de265_chroma chroma = de265_get_chroma_format(picture);
        const bool isGrey = chroma == de265_chroma_mono;
        // Both libraries count the kinds of chroma as H.265 does.
        heif_image *made = nullptr;
        const heif_error error =
            heif_image_create(de265_get_image_width(picture, 0), de265_get_image_height(picture, 0),
                              isGrey ? heif_colorspace_monochrome : heif_colorspace_YCbCr,
                              static_cast<heif_chroma>(chroma), &made);
        Image image(made);
        if (error.code != heif_error_Ok || !copyPlane(picture, 0, made, heif_channel_Y))
            return nullptr;
        if (!isGrey && (!copyPlane(picture, 1, made, heif_channel_Cb) ||
                        !copyPlane(picture, 2, made, heif_channel_Cr)))
            return nullptr;
        setColors(picture, made);
        return image;
    }

    /// What the stream says of its colours. Where the file says something, that holds.
    static void setColors(const de265_image *picture, heif_image *image)
    {
        const Profile profile(heif_nclx_color_profile_alloc());
        if (!profile)
            return;
        profile->full_range_flag = de265_get_image_full_range_flag(picture) != 0;
        profile->color_primaries =
            static_cast<heif_color_primaries>(de265_get_image_colour_primaries(picture));
        profile->transfer_characteristics = static_cast<heif_transfer_characteristics>(
            de265_get_image_transfer_characteristics(picture));
        profile->matrix_coefficients =
            static_cast<heif_matrix_coefficients>(de265_get_image_matrix_coefficients(picture));
        heif_image_set_nclx_color_profile(image, profile.get());
    }

    Context m_context;
    bool m_isStrict = false;
};

// What libheif calls. No exception may pass through it.

heif_error newDecoder(void **decoder)
{
    auto made = std::unique_ptr<Decoder>(new (std::nothrow) Decoder);
    if (!made || !made->isUsable())
        return noMemory;
    *decoder = made.release();
    return fine;
}

heif_error pushData(void *decoder, const void *data, size_t size)
{
    const QByteArrayView units(static_cast<const char *>(data), qsizetype(size));
    return static_cast<Decoder *>(decoder)->push(units) ? fine : broken;
}

heif_error decodeImage(void *decoder, heif_image **image)
{
    *image = static_cast<Decoder *>(decoder)->decode().release();
    return *image ? fine : broken;
}

constexpr heif_decoder_plugin plugin{
    .plugin_api_version = 3,
    .get_plugin_name = [] { return "libde265 on several threads"; },
    .init_plugin = [] { de265_init(); },
    .deinit_plugin = [] { de265_free(); },
    .does_support_format =
        [](heif_compression_format format) {
            constexpr int aboveTheirs = 200;
            return format == heif_compression_HEVC ? aboveTheirs : 0;
        },
    .new_decoder = newDecoder,
    .free_decoder = [](void *decoder) { delete static_cast<Decoder *>(decoder); },
    .push_data = pushData,
    .decode_image = decodeImage,
    .set_strict_decoding = [](void *decoder,
                              int flag) { static_cast<Decoder *>(decoder)->setStrict(flag != 0); },
    .id_name = "zelkam-libde265",
};

} // namespace

void registerHevcDecoder()
{
    static std::once_flag once;
    std::call_once(once, [] { heif_register_decoder_plugin(&plugin); });
}

void setHevcDraft(bool isOn)
{
    isDraft = isOn;
}

} // namespace zelkam
