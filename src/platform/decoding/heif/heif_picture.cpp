#include "platform/decoding/heif/heif_picture.h"

#include "platform/decoding/heif/heif_colors.h"
#include "platform/decoding/heif/hevc_decoder.h"

#include <cmath>

namespace zelkam {

namespace {

struct OptionsRelease
{
    void operator()(heif_decoding_options *options) const { heif_decoding_options_free(options); }
};

HeifImage decodeHandle(const heif_image_handle *handle, heif_colorspace colors, heif_chroma chroma)
{
    const std::unique_ptr<heif_decoding_options, OptionsRelease> options(
        heif_decoding_options_alloc());
    if (!options)
        return {};
    // A picture with a part missing is refused, not handed out with grey in its place.
    options->strict_decoding = 1;
    heif_image *image = nullptr;
    const heif_error error = heif_decode_image(handle, &image, colors, chroma, options.get());
    HeifImage owned(image);
    return error.code == heif_error_Ok ? std::move(owned) : HeifImage();
}

/// The way for planes of a kind of their own: libheif makes the colours.
QImage decodeInterleaved(const heif_image_handle *handle, bool premultiplied)
{
    const bool alpha = heif_image_handle_has_alpha_channel(handle) != 0;
    const auto picture =
        decodeHandle(handle, heif_colorspace_RGB,
                     alpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB);
    int stride = 0;
    const uint8_t *bytes =
        picture ? heif_image_get_plane_readonly(picture.get(), heif_channel_interleaved, &stride)
                : nullptr;
    if (!bytes)
        return {};
    const QImage view(bytes, heif_image_get_width(picture.get(), heif_channel_interleaved),
                      heif_image_get_height(picture.get(), heif_channel_interleaved), stride,
                      !alpha          ? QImage::Format_RGB888
                      : premultiplied ? QImage::Format_RGBA8888_Premultiplied
                                      : QImage::Format_RGBA8888);
    return view.convertToFormat(!alpha          ? QImage::Format_RGB32
                                : premultiplied ? QImage::Format_ARGB32_Premultiplied
                                                : QImage::Format_ARGB32);
}

} // namespace

HeifPicture::HeifPicture(QByteArray file, HeifImageHandle handle, HeifCoding coding)
    : m_file(std::move(file)), m_handle(std::move(handle)), m_coding(coding)
{
}

std::optional<HeifPicture> HeifPicture::open(const QByteArray &file)
{
    registerHevcDecoder();
    const HeifContext context(heif_context_alloc());
    heif_image_handle *handle = nullptr;
    if (!context ||
        heif_context_read_from_memory_without_copy(context.get(), file.constData(),
                                                   size_t(file.size()), nullptr)
                .code != heif_error_Ok ||
        heif_context_get_primary_image_handle(context.get(), &handle).code != heif_error_Ok)
        return std::nullopt;
    return HeifPicture(file, HeifImageHandle(handle), heifCoding(file));
}

QSize HeifPicture::size() const
{
    return {heif_image_handle_get_width(m_handle.get()),
            heif_image_handle_get_height(m_handle.get())};
}

std::optional<HeifPicture> HeifPicture::thumbnail(QSize atLeast) const
{
    heif_item_id item = 0;
    heif_image_handle *found = nullptr;
    if (heif_image_handle_get_list_of_thumbnail_IDs(m_handle.get(), &item, 1) != 1 ||
        heif_image_handle_get_thumbnail(m_handle.get(), item, &found).code != heif_error_Ok)
        return std::nullopt;
    HeifPicture small(m_file, HeifImageHandle(found), {true, m_coding.chromaFormat});
    const QSize whole = size();
    const QSize own = small.size();
    const double shape = double(whole.width()) / whole.height();
    const double ownShape = double(own.width()) / qMax(1, own.height());
    constexpr double tolerance = 0.03;
    if (own.width() < atLeast.width() || own.height() < atLeast.height() ||
        std::abs(shape - ownShape) > tolerance * shape)
        return std::nullopt;
    return small;
}

QImage HeifPicture::decode(QSize target) const
{
    const bool premultiplied = heif_image_handle_is_premultiplied_alpha(m_handle.get()) != 0;
    constexpr heif_chroma stored[] = {heif_chroma_monochrome, heif_chroma_420, heif_chroma_422,
                                      heif_chroma_444};
    const bool isGrey = m_coding.chromaFormat == 0;
    // libheif decodes the tiles of a grid on threads of its own.
    constexpr qint64 pixelsWorthThreads = 2'000'000;
    setHevcDecoding(
        {.isDraft = 2 * target.width() <= size().width() && 2 * target.height() <= size().height(),
         .isThreaded =
             m_coding.isPlain && qint64(size().width()) * size().height() >= pixelsWorthThreads});
    const auto picture =
        m_coding.isPlain ? decodeHandle(m_handle.get(),
                                        isGrey ? heif_colorspace_monochrome : heif_colorspace_YCbCr,
                                        stored[m_coding.chromaFormat])
                         : decodeHandle(m_handle.get(), heif_colorspace_RGB, heif_chroma_444);
    if (!picture)
        return {};
    const QSize own(heif_image_get_primary_width(picture.get()),
                    heif_image_get_primary_height(picture.get()));
    QImage image = imageFromPlanes(picture.get(), target.boundedTo(own), premultiplied);
    if (image.isNull())
        image = decodeInterleaved(m_handle.get(), premultiplied);
    if (!image.isNull() && image.size() != target)
        image = image.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.setColorSpace(heifColorSpace(m_handle.get()));
    return image;
}

} // namespace zelkam
