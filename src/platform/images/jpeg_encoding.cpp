#include "platform/images/jpeg_encoding.h"

#include "platform/images/jpeg_library.h"

#include <QColorSpace>
#include <cmath>
#include <cstdlib>

namespace zelkam {

namespace {

/// Everything that lives across the library's jumps.
class Writer
{
public:
    Writer() = default;
    ~Writer()
    {
        jpeg_destroy_compress(&m_info);
        std::free(m_bytes);
    }
    Q_DISABLE_COPY_MOVE(Writer)

    bool write(const QImage &image, int quality, const QByteArray &profile)
    {
        m_info.err = m_errors.use();
        if (setjmp(m_errors.wayOut) != 0)
            return false;
        jpeg_create_compress(&m_info);
        jpeg_mem_dest(&m_info, &m_bytes, &m_size);
        m_info.image_width = JDIMENSION(image.width());
        m_info.image_height = JDIMENSION(image.height());
        m_info.input_components = 4;
        m_info.in_color_space = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRX : JCS_EXT_XRGB;
        jpeg_set_defaults(&m_info);
        jpeg_set_quality(&m_info, quality, TRUE);
        constexpr int fine = 90;
        if (quality >= fine) {
            m_info.comp_info[0].h_samp_factor = 1;
            m_info.comp_info[0].v_samp_factor = 1;
        }
        constexpr UINT8 dotsPerInch = 1;
        m_info.density_unit = dotsPerInch;
        m_info.X_density = UINT16(std::lround(image.dotsPerMeterX() * 0.0254));
        m_info.Y_density = UINT16(std::lround(image.dotsPerMeterY() * 0.0254));
        jpeg_start_compress(&m_info, TRUE);
        if (!profile.isEmpty())
            jpeg_write_icc_profile(&m_info, reinterpret_cast<const JOCTET *>(profile.constData()),
                                   unsigned(profile.size()));
        while (m_info.next_scanline < m_info.image_height) {
            // The library does not write to it, but has no word for that.
            auto *line = const_cast<JSAMPROW>(image.constScanLine(int(m_info.next_scanline)));
            jpeg_write_scanlines(&m_info, &line, 1);
        }
        jpeg_finish_compress(&m_info);
        return true;
    }

    QByteArray bytes() const
    {
        return {reinterpret_cast<const char *>(m_bytes), qsizetype(m_size)};
    }

private:
    JpegErrors m_errors{};
    jpeg_compress_struct m_info{};
    unsigned char *m_bytes = nullptr;
    unsigned long m_size = 0;
};

} // namespace

std::optional<QByteArray> encodeJpeg(const QImage &image, int quality)
{
    Writer writer;
    if (image.depth() != 32 || !writer.write(image, quality, image.colorSpace().iccProfile()))
        return std::nullopt;
    return writer.bytes();
}

} // namespace zelkam
