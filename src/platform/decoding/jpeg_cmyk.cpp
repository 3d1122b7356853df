#include "platform/decoding/color_profile.h"
#include "platform/decoding/unusual_image.h"
#include "platform/images/jpeg_library.h"

#include <QColorSpace>
#include <cstdlib>
#include <vector>

namespace zelkam {

namespace {

/// Everything that lives across the library's jumps.
class Reader
{
public:
    Reader() = default;
    ~Reader()
    {
        jpeg_destroy_decompress(&m_info);
        std::free(m_profile);
    }
    Q_DISABLE_COPY_MOVE(Reader)

    std::optional<QImage> read(const QByteArray &file, QSize atLeast)
    {
        m_info.err = m_errors.use();
        if (setjmp(m_errors.wayOut) != 0)
            return m_converter ? std::optional(QImage()) : std::nullopt;
        jpeg_create_decompress(&m_info);
        jpeg_mem_src(&m_info, reinterpret_cast<const uchar *>(file.constData()),
                     static_cast<unsigned long>(file.size()));
        // The library would go on with an end that is not there.
        m_info.src->fill_input_buffer = [](j_decompress_ptr info) -> boolean {
            info->err->error_exit(reinterpret_cast<j_common_ptr>(info));
            return FALSE;
        };
        jpeg_save_markers(&m_info, JPEG_APP0 + 2, 0xffff);
        jpeg_read_header(&m_info, TRUE);
        if ((m_info.jpeg_color_space != JCS_CMYK && m_info.jpeg_color_space != JCS_YCCK) ||
            !jpeg_read_icc_profile(&m_info, &m_profile, &m_profileSize))
            return std::nullopt;
        // Every program that writes such JPEGs does as the first one did, whether it says so or
        // not.
        m_converter = CmykConverter::fromProfile(
            {reinterpret_cast<const char *>(m_profile), qsizetype(m_profileSize)},
            CmykConverter::Ink::isSmall);
        if (!m_converter)
            return std::nullopt;
        m_info.out_color_space = JCS_CMYK;
        m_info.scale_denom = 8;
        for (m_info.scale_num = 1; m_info.scale_num < 8; ++m_info.scale_num) {
            jpeg_calc_output_dimensions(&m_info);
            if (int(m_info.output_width) >= atLeast.width() &&
                int(m_info.output_height) >= atLeast.height())
                break;
        }
        jpeg_start_decompress(&m_info);
        m_image = QImage(int(m_info.output_width), int(m_info.output_height), QImage::Format_RGB32);
        m_inks.resize(size_t(m_info.output_width) * 4);
        for (int y = 0; y < m_image.height(); ++y) {
            uchar *inks = m_inks.data();
            jpeg_read_scanlines(&m_info, &inks, 1);
            m_converter->convert(inks, reinterpret_cast<QRgb *>(m_image.scanLine(y)),
                                 m_image.width());
        }
        jpeg_finish_decompress(&m_info);
        m_image.setColorSpace(QColorSpace::SRgb);
        return m_image;
    }

private:
    JpegErrors m_errors{};
    jpeg_decompress_struct m_info{};
    JOCTET *m_profile = nullptr;
    unsigned m_profileSize = 0;
    std::optional<CmykConverter> m_converter;
    std::vector<uchar> m_inks;
    QImage m_image;
};

} // namespace

std::optional<QImage> readCmykJpeg(const QByteArray &file, QSize atLeast)
{
    return Reader().read(file, atLeast);
}

} // namespace zelkam
