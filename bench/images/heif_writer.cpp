#include "heif_writer.h"

#include <QtEndian>
#include <libheif/heif.h>

namespace zelkam::bench {

namespace {

QByteArray number(quint64 value, int bytes)
{
    QByteArray text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text.append(shift < 64 ? char(value >> shift & 0xff) : '\0');
    return text;
}

QByteArray box(const char *type, const QByteArray &content)
{
    return number(quint64(content.size()) + 8, 4) + type + content;
}

/// The first box of a type in a file, with its header, wherever it lies.
QByteArray findBox(const QByteArray &file, const char *type)
{
    const auto at = file.indexOf(type) - 4;
    return file.mid(at, qFromBigEndian<quint32>(file.constData() + at));
}

heif_error append(heif_context *, const void *data, size_t size, void *target)
{
    static_cast<QByteArray *>(target)->append(static_cast<const char *>(data), qsizetype(size));
    return {heif_error_Ok, heif_suberror_Unspecified, ""};
}

heif_image *toHeifImage(const QImage &image, int bits)
{
    const bool alpha = image.hasAlphaChannel();
    const bool deep = bits > 8;
    const QImage pixels = image.convertToFormat(deep    ? QImage::Format_RGBA64
                                                : alpha ? QImage::Format_RGBA8888
                                                        : QImage::Format_RGB888);
    heif_image *result = nullptr;
    heif_image_create(pixels.width(), pixels.height(), heif_colorspace_RGB,
                      deep    ? heif_chroma_interleaved_RRGGBB_LE
                      : alpha ? heif_chroma_interleaved_RGBA
                              : heif_chroma_interleaved_RGB,
                      &result);
    heif_image_add_plane(result, heif_channel_interleaved, pixels.width(), pixels.height(), bits);
    int stride = 0;
    uint8_t *plane = heif_image_get_plane(result, heif_channel_interleaved, &stride);
    for (int y = 0; y < pixels.height(); ++y) {
        if (!deep) {
            memcpy(plane + y * stride, pixels.constScanLine(y),
                   size_t(pixels.width() * (alpha ? 4 : 3)));
            continue;
        }
        const auto *from = reinterpret_cast<const quint16 *>(pixels.constScanLine(y));
        auto *to = reinterpret_cast<quint16 *>(plane + y * stride);
        for (int x = 0; x < pixels.width(); ++x) {
            for (int channel = 0; channel < 3; ++channel)
                to[3 * x + channel] = quint16(from[4 * x + channel] >> (16 - bits));
        }
    }
    return result;
}

} // namespace

QByteArray heic(const QImage &image, const HeicOptions &options)
{
    heif_context *context = heif_context_alloc();
    heif_encoder *encoder = nullptr;
    heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder);
    heif_encoder_set_lossy_quality(encoder, options.quality);
    heif_image *source = toHeifImage(image, options.bits);
    if (options.colorSpace.isValid()) {
        const QByteArray profile = options.colorSpace.iccProfile();
        heif_image_set_raw_color_profile(source, "prof", profile.constData(),
                                         size_t(profile.size()));
    }
    heif_encoding_options *encoding = heif_encoding_options_alloc();
    encoding->image_orientation = heif_orientation(options.orientation);
    heif_image_handle *handle = nullptr;
    heif_context_encode_image(context, source, encoder, encoding, &handle);
    if (options.thumbnailEdge > 0) {
        heif_image_handle *thumbnail = nullptr;
        heif_context_encode_thumbnail(context, source, handle, encoder, encoding,
                                      options.thumbnailEdge, &thumbnail);
        heif_image_handle_release(thumbnail);
    }
    QByteArray file;
    heif_writer writer{1, append};
    heif_context_write(context, &writer, &file);
    heif_image_handle_release(handle);
    heif_encoding_options_free(encoding);
    heif_image_release(source);
    heif_encoder_release(encoder);
    heif_context_free(context);
    return file;
}

QByteArray heicGrid(const QByteArray &tile, const GridOptions &options)
{
    const QByteArray coded = findBox(tile, "mdat").mid(8);
    const QSize declared = options.declared.isEmpty() ? options.canvas : options.declared;
    const int tiles = options.columns * options.rows;
    const QByteArray grid = number(0, 1) + number(1, 1) + number(quint64(options.rows - 1), 1) +
                            number(quint64(options.columns - 1), 1) +
                            number(quint64(options.canvas.width()), 4) +
                            number(quint64(options.canvas.height()), 4);
    const auto entry = [](int item, const char *type) {
        return box("infe", number(2, 1) + number(0, 3) + number(quint64(item), 2) + number(0, 2) +
                               type + number(0, 1));
    };
    const QByteArray extents = box("ispe", number(0, 4) + number(quint64(declared.width()), 4) +
                                               number(quint64(declared.height()), 4));
    // Item 1 is the grid, item 2 the tile, named once for every place.
    QByteArray references = number(1, 2) + number(quint64(tiles), 2);
    for (int i = 0; i < tiles; ++i)
        references += number(2, 2);
    const QByteArray ftyp = box("ftyp", QByteArray("heic") + number(0, 4) + "mif1heic");
    const auto meta = [&](int offset) {
        const QByteArray locations = number(1, 1) + number(0, 3) + number(0x4400, 2) +
                                     number(2, 2)
                                     // in the item data box
                                     + number(1, 2) + number(1, 2) + number(0, 2) + number(1, 2) +
                                     number(0, 4) +
                                     number(quint64(grid.size()), 4)
                                     // in the file
                                     + number(2, 2) + number(0, 2) + number(0, 2) + number(1, 2) +
                                     number(quint64(offset), 4) + number(quint64(coded.size()), 4);
        return box(
            "meta",
            number(0, 4) + box("hdlr", number(0, 8) + "pict" + number(0, 12) + number(0, 1)) +
                box("pitm", number(0, 4) + number(1, 2)) +
                box("iinf", number(0, 4) + number(2, 2) + entry(1, "grid") + entry(2, "hvc1")) +
                box("iref", number(0, 4) + box("dimg", references)) +
                box("iprp", box("ipco", extents + findBox(tile, "ispe") + findBox(tile, "hvcC")) +
                                box("ipma", number(0, 4) + number(2, 4) + number(1, 2) +
                                                number(1, 1) + number(1, 1) + number(2, 2) +
                                                number(2, 1) + number(2, 1) + number(3, 1))) +
                box("iloc", locations) + box("idat", grid));
    };
    const auto head = ftyp.size() + meta(0).size() + 8;
    return ftyp + meta(int(head)) + box("mdat", coded);
}

} // namespace zelkam::bench
