#include "platform/decoding/jpeg_cmyk.h"

#include "platform/decoding/color_profile.h"
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

    /// Whether it is of the four inks and has a profile.
    bool readHeader(const QByteArray &file)
    {
        m_info.err = m_errors.use();
        if (setjmp(m_errors.wayOut) != 0)
            return false;
        jpeg_create_decompress(&m_info);
        jpeg_mem_src(&m_info, reinterpret_cast<const uchar *>(file.constData()),
                     static_cast<unsigned long>(file.size()));
        jpeg_save_markers(&m_info, JPEG_APP0 + 2, 0xffff);
        jpeg_read_header(&m_info, TRUE);
        return (m_info.jpeg_color_space == JCS_CMYK || m_info.jpeg_color_space == JCS_YCCK) &&
               jpeg_read_icc_profile(&m_info, &m_profile, &m_profileSize);
    }

    QByteArray profile() const
    {
        return {reinterpret_cast<const char *>(m_profile), qsizetype(m_profileSize)};
    }

    bool start(QSize atLeast)
    {
        if (setjmp(m_errors.wayOut) != 0)
            return false;
        m_info.out_color_space = JCS_CMYK;
        m_info.scale_denom = 8;
        for (m_info.scale_num = 1; m_info.scale_num < 8; ++m_info.scale_num) {
            jpeg_calc_output_dimensions(&m_info);
            if (size().expandedTo(atLeast) == size())
                break;
        }
        jpeg_start_decompress(&m_info);
        return true;
    }

    QSize size() const { return {int(m_info.output_width), int(m_info.output_height)}; }

    bool readLine(uchar *line)
    {
        if (setjmp(m_errors.wayOut) != 0)
            return false;
        return jpeg_read_scanlines(&m_info, &line, 1) == 1;
    }

private:
    JpegErrors m_errors{};
    jpeg_decompress_struct m_info{};
    JOCTET *m_profile = nullptr;
    unsigned m_profileSize = 0;
};

} // namespace

std::optional<QImage> readCmykJpeg(const QByteArray &file, QSize atLeast)
{
    Reader reader;
    if (!reader.readHeader(file))
        return std::nullopt;
    // Every program that writes such JPEGs does as the first one did, whether it says so or not.
    const auto converter =
        CmykConverter::fromProfile(reader.profile(), CmykConverter::Ink::isSmall);
    if (!converter)
        return std::nullopt;
    if (!reader.start(atLeast))
        return QImage();
    QImage image(reader.size(), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    std::vector<uchar> inks(size_t(image.width()) * 4);
    for (int y = 0; y < image.height(); ++y) {
        if (!reader.readLine(inks.data()))
            return QImage();
        converter->convert(inks.data(), reinterpret_cast<QRgb *>(image.scanLine(y)), image.width());
    }
    image.setColorSpace(QColorSpace::SRgb);
    return image;
}

} // namespace zelkam
