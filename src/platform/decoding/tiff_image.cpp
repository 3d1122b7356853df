#include "platform/decoding/color_profile.h"
#include "platform/decoding/unusual_image.h"
#include "platform/foundation/memory_file.h"

#include <QColorSpace>
#include <cstring>
#include <memory>
#include <tiffio.h>
#include <unistd.h>
#include <vector>

namespace zelkam {

namespace {

using Tiff = std::unique_ptr<TIFF, decltype([](TIFF *tiff) { TIFFCleanup(tiff); })>;

template<typename T>
T field(TIFF *tiff, uint32_t tag)
{
    T value = 0;
    return TIFFGetFieldDefaulted(tiff, tag, &value) ? value : T(0);
}

/// What the first directory says, as far as it matters here.
struct Layout
{
    QSize size;
    QSize tile; ///< empty when there are none
    int bits = 0;
    int samples = 0;
    int photometric = 0;
    int alpha = EXTRASAMPLE_UNSPECIFIED; ///< the kind of the first sample beside the colours
    bool isPlanar = false;
    QByteArray profile;

    explicit Layout(TIFF *tiff)
        : size(int(field<uint32_t>(tiff, TIFFTAG_IMAGEWIDTH)),
               int(field<uint32_t>(tiff, TIFFTAG_IMAGELENGTH))),
          bits(field<uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE)),
          samples(field<uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL)),
          photometric(field<uint16_t>(tiff, TIFFTAG_PHOTOMETRIC)),
          isPlanar(field<uint16_t>(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE)
    {
        if (TIFFIsTiled(tiff))
            tile = QSize(int(field<uint32_t>(tiff, TIFFTAG_TILEWIDTH)),
                         int(field<uint32_t>(tiff, TIFFTAG_TILELENGTH)));
        uint16_t extras = 0;
        uint16_t *kinds = nullptr;
        if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &extras, &kinds) && extras > 0)
            alpha = kinds[0];
        uint32_t length = 0;
        void *bytes = nullptr;
        if (TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &length, &bytes))
            profile = QByteArray(static_cast<const char *>(bytes), qsizetype(length));
    }

    bool isWhole() const { return bits == 8 || bits == 16; } ///< bytes
    bool isGrey() const
    {
        return photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
    }
    qsizetype sampleBytes() const { return bits / 8; }
    qsizetype pixelBytes() const { return sampleBytes() * samples; }
    qsizetype lineBytes() const { return pixelBytes() * size.width(); }
};

/// All samples, those of a pixel side by side whatever the file's order. Empty when some are
/// missing.
std::vector<uchar> readSamples(TIFF *tiff, const Layout &layout)
{
    const qsizetype partBytes = layout.isPlanar ? layout.sampleBytes() : layout.pixelBytes();
    std::vector<uchar> all(size_t(layout.lineBytes() * layout.size.height()));
    const auto place = [&](const uchar *from, int x, int y, int pixels, int plane) {
        uchar *to = all.data() + y * layout.lineBytes() + x * layout.pixelBytes() +
                    plane * layout.sampleBytes();
        for (int i = 0; i < pixels; ++i)
            std::memcpy(to + i * layout.pixelBytes(), from + i * partBytes, size_t(partBytes));
    };
    const bool isTiled = !layout.tile.isEmpty();
    const tmsize_t pieceBytes = isTiled ? TIFFTileSize(tiff) : TIFFScanlineSize(tiff);
    const int across = isTiled ? layout.tile.width() : layout.size.width();
    const int down = isTiled ? layout.tile.height() : 1;
    if (pieceBytes < partBytes * across * down)
        return {};
    std::vector<uchar> piece(size_t(pieceBytes), 0);
    for (int plane = 0; plane < (layout.isPlanar ? layout.samples : 1); ++plane) {
        for (int top = 0; top < layout.size.height(); top += down) {
            for (int left = 0; left < layout.size.width(); left += across) {
                const bool isRead =
                    isTiled
                        ? TIFFReadTile(tiff, piece.data(), uint32_t(left), uint32_t(top), 0,
                                       uint16_t(plane)) == pieceBytes
                        : TIFFReadScanline(tiff, piece.data(), uint32_t(top), uint16_t(plane)) == 1;
                if (!isRead)
                    return {};
                const int pixels = qMin(across, layout.size.width() - left);
                for (int y = 0; y < qMin(down, layout.size.height() - top); ++y)
                    place(piece.data() + y * across * partBytes, left, top + y, pixels, plane);
            }
        }
    }
    return all;
}

/// From grey or red, green and blue, with alpha or without.
QImage imageOfSamples(const std::vector<uchar> &samples, const Layout &layout)
{
    constexpr quint16 most = 0xffff;
    const bool isPremultiplied = layout.alpha == EXTRASAMPLE_ASSOCALPHA;
    const int colors = layout.isGrey() ? 1 : 3;
    const bool hasAlpha = layout.samples > colors && layout.alpha != EXTRASAMPLE_UNSPECIFIED;
    QImage image(layout.size,
                 isPremultiplied ? QImage::Format_RGBA64_Premultiplied : QImage::Format_RGBA64);
    const auto sample = [&layout](const uchar *pixel, int index) {
        constexpr quint16 byteToWord = 0x101;
        return layout.bits == 8 ? quint16(pixel[index] * byteToWord)
                                : *reinterpret_cast<const quint16 *>(pixel + 2 * index);
    };
    for (int y = 0; y < image.height(); ++y) {
        const uchar *from = samples.data() + y * layout.lineBytes();
        auto *to = reinterpret_cast<quint16 *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x, from += layout.pixelBytes(), to += 4) {
            to[3] = hasAlpha ? sample(from, colors) : most;
            const quint16 white = isPremultiplied ? to[3] : most;
            for (int c = 0; c < 3; ++c) {
                to[c] = sample(from, colors == 1 ? 0 : c);
                if (layout.photometric == PHOTOMETRIC_MINISWHITE)
                    to[c] = quint16(white - qMin(white, to[c]));
            }
        }
    }
    return image;
}

QImage imageOfInks(const std::vector<uchar> &samples, const Layout &layout,
                   const CmykConverter &converter)
{
    QImage image(layout.size, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    std::vector<uchar> inks(size_t(layout.size.width()) * 4);
    // Of 16 bits the upper half is enough.
    const qsizetype upper = layout.bits == 16 && Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? 1 : 0;
    for (int y = 0; y < image.height(); ++y) {
        const uchar *from = samples.data() + y * layout.lineBytes() + upper;
        for (int x = 0; x < image.width(); ++x, from += layout.pixelBytes()) {
            for (int ink = 0; ink < 4; ++ink)
                inks[size_t(x) * 4 + size_t(ink)] = from[ink * layout.sampleBytes()];
        }
        converter.convert(inks.data(), reinterpret_cast<QRgb *>(image.scanLine(y)), image.width());
    }
    image.setColorSpace(QColorSpace::SRgb);
    return image;
}

QImage imageByLibrary(TIFF *tiff, const Layout &layout)
{
    QImage image(layout.size, QImage::Format_RGBA8888_Premultiplied);
    constexpr int stopOnError = 1;
    // Its lines come in the order of the file when they are asked for in just that.
    const auto orientation = field<uint16_t>(tiff, TIFFTAG_ORIENTATION);
    return !image.isNull() && TIFFReadRGBAImageOriented(tiff, uint32_t(image.width()),
                                                        uint32_t(image.height()),
                                                        reinterpret_cast<uint32_t *>(image.bits()),
                                                        orientation, stopOnError)
               ? image
               : QImage();
}

} // namespace

std::optional<QImage> readUnusualTiff(const QByteArray &file)
{
    // libtiff maps what it reads.
    const FileDescriptor memory = sealedMemoryFile(file);
    const bool isAtBegin = ::lseek(memory.get(), 0, SEEK_SET) == 0;
    const Tiff tiff(isAtBegin ? TIFFFdOpen(memory.get(), "", "r") : nullptr);
    if (!tiff)
        return std::nullopt;
    const Layout layout(tiff.get());
    const bool isInk = layout.photometric == PHOTOMETRIC_SEPARATED && layout.samples >= 4 &&
                       field<uint16_t>(tiff.get(), TIFFTAG_INKSET) == INKSET_CMYK;
    const auto converter =
        isInk && layout.isWhole()
            ? CmykConverter::fromProfile(layout.profile, CmykConverter::Ink::isLarge)
            : std::nullopt;
    const bool isWide = layout.isPlanar && layout.bits == 16 && layout.samples >= 3 &&
                        layout.photometric == PHOTOMETRIC_RGB;
    const bool isGreyWithAlpha = layout.isWhole() && layout.isGrey() && layout.samples == 2;
    const bool isLargeTile =
        layout.tile.width() > layout.size.width() || layout.tile.height() > layout.size.height();
    QImage image;
    if (converter || isWide || isGreyWithAlpha) {
        const std::vector<uchar> samples = readSamples(tiff.get(), layout);
        if (samples.empty())
            return image;
        if (converter)
            return imageOfInks(samples, layout, *converter);
        image = imageOfSamples(samples, layout);
    } else if (isLargeTile) {
        image = imageByLibrary(tiff.get(), layout);
    } else {
        return std::nullopt;
    }
    if (!layout.profile.isEmpty())
        image.setColorSpace(QColorSpace::fromIccProfile(layout.profile));
    return image;
}

} // namespace zelkam
