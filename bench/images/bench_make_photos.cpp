// Makes 12-megapixel photos, as detailed as a camera's: ten JPEGs, and one HEIC.
//
//     bench_make_photos FOLDER

#include "heif_writer.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

namespace {

/// Soft shapes with the grain of a sensor, which is what takes a decoder its time.
QImage photo(int seed)
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    QRandomGenerator random(static_cast<quint32>(seed) + 1);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double u = x / 4000.0;
            const double v = y / 3000.0;
            const double shape = std::sin(u * 9 + seed) * std::cos(v * 7 - seed) +
                                 0.4 * std::sin(u * 61 + v * 43) + 0.2 * std::sin(v * 211 + seed);
            const int grain = int(random.generate() & 15) - 8;
            const auto level = [&](double base, double swing) {
                return std::clamp(int(base + swing * shape) + grain, 0, 255);
            };
            line[x] = qRgb(level(140, 60), level(120 + 60 * v, 45), level(90 + 110 * u, 50));
        }
    }
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 1;
    const QDir folder(QFile::decodeName(argv[1]));
    constexpr int photos = 10;
    constexpr int quality = 90;
    for (int i = 0; i < photos; ++i) {
        if (!photo(i).save(folder.filePath(QStringLiteral("photo%1.jpg").arg(i)), "jpeg", quality))
            return 1;
    }
    QFile heic(folder.filePath(QStringLiteral("photo.heic")));
    // As phones write it: tiles of 512 points, here of one content, and some 2 MB in all.
    const QByteArray tile = zelkam::bench::heic(photo(0).copy(0, 0, 512, 512), {.quality = 45});
    const QByteArray coded =
        zelkam::bench::heicGrid(tile, {.columns = 8, .rows = 6, .canvas = {4000, 3000}});
    return heic.open(QIODevice::WriteOnly) && heic.write(coded) == coded.size() ? 0 : 1;
}
