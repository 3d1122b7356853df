#include "heif_writer.h"
#include "picture_comparison.h"
#include "platform/images/image_representation.h"
#include "platform/images/picture.h"
#include "support/sample_files.h"

#include <QBuffer>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QTest>
#include <QTransform>
#include <cmath>
#include <limits>
#include <sys/resource.h>
#include <unistd.h>

using namespace zelkam;
using namespace zelkam::test;

namespace {

QByteArray encoded(const QImage &image, const char *format)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setQuality(95);
    writer.write(image);
    return buffer.data();
}

/// A JPEG with an Exif block (a TIFF file in little-endian order) of an orientation and a place.
QByteArray withExif(const QByteArray &jpeg, int orientation)
{
    const auto u16 = [](int value) {
        const char bytes[] = {char(value & 255), char(value >> 8 & 255)};
        return QByteArray(bytes, 2);
    };
    const auto u32 = [&u16](int value) { return u16(value & 0xffff) + u16(value >> 16); };
    const auto entry = [&](int tag, int type, int count, const QByteArray &value) {
        return u16(tag) + u16(type) + u32(count) + value;
    };
    constexpr int directory = 8;
    constexpr int gps = directory + 2 + 2 * 12 + 4;
    constexpr int date = gps + 2 + 12 + 4;
    const QByteArray tiff = QByteArray("II*\0", 4) + u32(directory) + u16(2) +
                            entry(0x0112, 3, 1, u32(orientation)) + entry(0x8825, 4, 1, u32(gps)) +
                            u32(0) + u16(1) + entry(0x001d, 2, 11, u32(date)) + u32(0) +
                            "2026:01:31" + '\0';
    const QByteArray block = QByteArray("Exif\0\0", 6) + tiff;
    const int length = int(block.size()) + 2;
    return jpeg.left(2) + "\xff\xe1" + char(length >> 8) + char(length & 255) + block + jpeg.mid(2);
}

/// What a stored picture looks like when its Exif orientation is applied.
QImage oriented(const QImage &image, int orientation)
{
    const QList<int> degrees{0, 0, 180, 180, 270, 90, 90, 270};
    const QList<int> mirrored{2, 4, 5, 7};
    const QImage first = mirrored.contains(orientation) ? image.mirrored(true, false) : image;
    return first.transformed(QTransform().rotate(degrees.at(orientation - 1)));
}

qint64 peakMemory()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

} // namespace

class TestPicture : public QObject
{
    Q_OBJECT

private slots:
    void jpegsAreTurnedUpright_data()
    {
        QTest::addColumn<int>("orientation");
        for (int orientation = 1; orientation <= 8; ++orientation)
            QTest::addRow("orientation %d", orientation) << orientation;
    }
    void jpegsAreTurnedUpright()
    {
        QFETCH(int, orientation);
        const QImage stored = corners({160, 80});
        const QImage upright = oriented(stored, orientation);
        const QByteArray file = withExif(encoded(stored, "jpeg"), orientation);
        const auto whole = decodePicture(file);
        QVERIFY(whole);
        QCOMPARE_LE(difference(whole->toQImage(), upright), 24);
        // The asked size is that of the upright picture, and may be of another shape.
        const auto stretched = decodePicture(file, QSize(40, 100));
        QVERIFY(stretched);
        QCOMPARE_LE(difference(stretched->toQImage(), upright.scaled(40, 100)), 24);
        const auto small = decodePictureForThumbnail(
            file, [&upright](QSize size) { return size == upright.size() ? size / 2 : QSize(); });
        QVERIFY(small);
        QCOMPARE_LE(difference(small->toQImage(), upright.scaled(upright.size() / 2)), 24);
        // It is upright as it is: a second reading must not turn it again.
        const auto again = UIImageJPEGRepresentation(*whole, 0.95);
        QVERIFY(again);
        QCOMPARE_LE(difference(decodePicture(*again)->toQImage(), upright), 32);
        QVERIFY(file.contains("2026:01:31"));
        QVERIFY(!again->contains("2026:01:31") && !again->contains("Exif"));
    }

    void kindsAreToldByContent_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("type");
        const QImage image = corners({32, 32});
        const auto row = [](const char *name, const QByteArray &file, const char *type) {
            QTest::newRow(name) << file << QString::fromLatin1(type);
        };
        row("jpeg", encoded(image, "jpeg"), "public.jpeg");
        row("png", encoded(image, "png"), "public.png");
        row("webp", encoded(image, "webp"), "org.webmproject.webp");
        row("tiff", encoded(image, "tiff"), "public.tiff");
        row("bmp", encoded(image, "bmp"), "com.microsoft.bmp");
        row("heic", heic(image), "public.heic");
        row("a drawing",
            "<?xml version='1.0'?>\n<svg xmlns='http://www.w3.org/2000/svg' "
            "width='32' height='32'><rect width='99' height='99'/></svg>",
            "public.svg-image");
        row("a text", "only a text", "");
        row("nothing", "", "");
    }
    void kindsAreToldByContent()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, type);
        QCOMPARE(pictureTypeIdentifier(file).value_or(QString()), type);
        const auto picture = decodePicture(file);
        QCOMPARE(picture.has_value(), !type.isEmpty());
        if (picture)
            QCOMPARE(picture->size(), QSize(32, 32));
    }

    void whatWouldTakeTooMuchIsRefused_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QSize>("size"); // that it is asked for
        QTest::newRow("a PNG of 900 million pixels") << sample::pngHeader(30000, 30000) << QSize();
        QTest::newRow("the same, asked for small")
            << sample::pngHeader(30000, 30000) << QSize(10, 10);
        QTest::newRow("4,000 scans, asked for small")
            << sample::jpegWithScans({2000, 2000}, 4000) << QSize(10, 10);
        // The frame's size lies behind the marker, its length and the sample depth.
        QByteArray large = encoded(corners({64, 64}), "jpeg");
        large.replace(large.indexOf("\xff\xc0") + 5, 4, "\x75\x30\x75\x30");
        QTest::newRow("a JPEG of 900 million pixels") << large << QSize();
        QTest::newRow("the same, asked for small too") << large << QSize(10, 10);
        QTest::newRow("a grid of one HEIC tile, 40,000 times")
            << heicGrid(heic(corners({64, 64})),
                        {.columns = 200, .rows = 200, .canvas = {12800, 12800}})
            << QSize(10, 10);
    }
    void whatWouldTakeTooMuchIsRefused()
    {
        QFETCH(QByteArray, file);
        QFETCH(QSize, size);
        const qint64 before = peakMemory();
        QVERIFY(!(size.isEmpty() ? decodePicture(file) : decodePicture(file, size)));
        QCOMPARE_LE(peakMemory() - before, 256LL << 20);
    }

    void aPhotoOf200MegapixelsWorksAtASize()
    {
        QByteArray file;
        {
            QImage photo(16320, 12240, QImage::Format_Grayscale8);
            photo.fill(180);
            file = encoded(photo, "jpeg");
        }
        const auto picture = decodePicture(file, QSize(1024, 768));
        QVERIFY(picture);
        QCOMPARE(picture->size(), QSize(1024, 768));
        QVERIFY(std::abs(qGray(picture->toQImage().pixel(500, 400)) - 180) < 3);
        QVERIFY(!decodePicture(file)); // 800 MB
    }

    void transparencyIsKeptOrLiesOnWhite()
    {
        QImage half(32, 32, QImage::Format_ARGB32);
        half.fill(QColor(0, 0, 255, 128));
        const auto image = UIImage::fromQImage(half);
        const auto png = UIImagePNGRepresentation(*image);
        QCOMPARE(QImage::fromData(*png).pixelColor(9, 9), half.pixelColor(9, 9));
        const QColor mixed =
            QImage::fromData(*UIImageJPEGRepresentation(*image, 1.0)).pixelColor(9, 9);
        QVERIFY(std::abs(mixed.red() - 127) < 5 && mixed.blue() > 248);
    }

    void qualityIsClamped()
    {
        QImage noise(64, 64, QImage::Format_RGB32);
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x)
                noise.setPixel(x, y,
                               qRgb((x * 97 + y * 57) % 256, (x * y) % 256, (x + y * 3) % 256));
        }
        const auto image = UIImage::fromQImage(noise);
        const auto size = [&image](double quality) {
            return UIImageJPEGRepresentation(*image, quality)->size();
        };
        QVERIFY(size(0.0) < size(0.5) && size(0.5) < size(1.0));
        QCOMPARE(size(-2.0), size(0.0));
        QCOMPARE(size(std::nan("")), size(0.0));
        QCOMPARE(size(std::numeric_limits<double>::infinity()), size(1.0));
        const auto tooLong = UIImage::fromQImage(QImage(70000, 1, QImage::Format_RGB32));
        QVERIFY(!UIImageJPEGRepresentation(*tooLong, 1.0));
    }

    void onlyRegularFilesAreRead()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.jpg"));
        QVERIFY(!readPictureFile(path));
        QVERIFY(sample::write(path, "content"));
        QCOMPARE(readPictureFile(path), QByteArray("content"));
        QVERIFY(!readPictureFile(folder.path()));
        QVERIFY(!readPictureFile(QStringLiteral("/dev/zero")));
        QFile::resize(path, (256LL << 20) + 1);
        QVERIFY(!readPictureFile(path));
    }
};

QTEST_GUILESS_MAIN(TestPicture)
#include "tst_picture.moc"
