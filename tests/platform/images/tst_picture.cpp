#include "heif_writer.h"
#include "picture_comparison.h"
#include "platform/images/image_decoding.h"
#include "platform/images/image_memory.h"
#include "platform/images/image_representation.h"
#include "platform/images/picture.h"
#include "support/sample_files.h"

#include <QBuffer>
#include <QImageWriter>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>
#include <QTransform>
#include <QtEndian>
#include <atomic>
#include <cmath>
#include <limits>
#include <sys/resource.h>
#include <thread>
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

/// A JPEG of some hundred bytes whose components lie in scans of their own, most of them missing.
QByteArray jpegInPieces(quint16 edge, int scans)
{
    const auto segment = [](char marker, const QByteArray &content) {
        const auto length = int(content.size()) + 2;
        return QByteArray("\xff") + marker + char(length >> 8) + char(length & 255) + content;
    };
    const QByteArray edgeBytes = QByteArray(1, char(edge >> 8)) + char(edge & 255);
    const QByteArray shortest = QByteArray(1, 1) + QByteArray(16, 0); // one code, of one bit
    QByteArray file = "\xff\xd8" + segment('\xdb', QByteArray(1, 0) + QByteArray(64, 1)) +
                      segment('\xc0', QByteArray(1, 8) + edgeBytes + edgeBytes +
                                          QByteArray("\3\1\x11\0\2\x11\0\3\x11\0", 10)) +
                      segment('\xc4', QByteArray(1, 0) + shortest) +
                      segment('\xc4', QByteArray(1, 0x10) + shortest);
    for (int scan = 0; scan < scans; ++scan)
        file +=
            segment('\xda', QByteArray(1, 1) + char(scan % 3 + 1) + QByteArray("\0\0\x3f\0", 4)) +
            '\0';
    return file + "\xff\xd9";
}

/// An icon file that says it is small and holds a PNG.
QByteArray icoOf(const QByteArray &png)
{
    QByteArray head("\0\0\1\0\1\0\x10\x10\0\0\1\0\x20\0", 14);
    const quint32 numbers[] = {qToLittleEndian(quint32(png.size())), qToLittleEndian(quint32(22))};
    return head.append(reinterpret_cast<const char *>(numbers), sizeof numbers) + png;
}

QByteArray drawing(const QByteArray &content)
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "xmlns:z='urn:z' width='512' height='512'>" +
           content + "</svg>";
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

    QTemporaryDir folder;

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
        row("heic of the general brand", heic(image).replace(8, 4, "mif1"), "public.heic");
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

    void anyFormOfPixelsIsStretched_data()
    {
        QTest::addColumn<QImage>("stored");
        QTest::addColumn<QByteArray>("file");
        const QImage image = corners({64, 64});
        const auto row = [](const char *name, const QImage &stored) {
            for (const char *format : {"png", "bmp", "tiff"}) {
                const QByteArray file = encoded(stored, format);
                if (!file.isEmpty())
                    QTest::addRow("%s, as %s", name, format)
                        << QImage::fromData(file).convertToFormat(QImage::Format_ARGB32) << file;
            }
        };
        for (const int alpha : {255, 100}) {
            for (const auto form :
                 {QImage::Format_Mono, QImage::Format_MonoLSB, QImage::Format_Indexed8}) {
                QImage two(64, 64, form);
                two.setColorTable({qRgba(0, 200, 0, alpha), qRgb(255, 0, 0)});
                for (int at = 0; at < 64 * 64; ++at)
                    two.setPixel(at % 64, at / 64, at % 64 < 32 ? 0 : 1);
                row(qPrintable(QStringLiteral("two colours of %1 bits, alpha %2")
                                   .arg(two.depth())
                                   .arg(alpha)),
                    two);
            }
        }
        row("8 bits of grey", image.convertToFormat(QImage::Format_Grayscale8));
        row("16 bits of grey", image.convertToFormat(QImage::Format_Grayscale16));
        row("64 bits of colour", image.convertToFormat(QImage::Format_RGBA64));
    }
    void anyFormOfPixelsIsStretched()
    {
        QFETCH(QImage, stored);
        QFETCH(QByteArray, file);
        const auto small = decodePicture(file, QSize(16, 32));
        QVERIFY(small);
        QCOMPARE_LE(difference(small->toQImage(), stored.scaled(16, 32)), 8);
        QImage white(64, 64, QImage::Format_RGB32);
        white.fill(Qt::white);
        QPainter(&white).drawImage(0, 0, stored);
        const auto jpeg = UIImageJPEGRepresentation(*decodePicture(file), 1.0);
        QCOMPARE_LE(difference(QImage::fromData(*jpeg), white), 8);
    }

    void whatWouldTakeTooMuchIsRefused_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QSize>("size"); // that it is asked for
        QTest::newRow("a PNG of 900 million pixels") << sample::pngHeader(30000, 30000) << QSize();
        QTest::newRow("the same, asked for small")
            << sample::pngHeader(30000, 30000) << QSize(10, 10);
        QTest::newRow("300 scans of a few pixels")
            << sample::jpegWithScans({64, 64}, 300) << QSize();
        QTest::newRow("200 scans of many pixels")
            << sample::jpegWithScans({4000, 4000}, 200) << QSize(10, 10);
        // The frame's size lies behind the marker, its length and the sample depth.
        QByteArray large = encoded(corners({64, 64}), "jpeg");
        large.replace(large.indexOf("\xff\xc0") + 5, 4, "\x75\x30\x75\x30");
        QTest::newRow("a JPEG of 900 million pixels") << large << QSize();
        QTest::newRow("the same, asked for small too") << large << QSize(10, 10);
        QTest::newRow("a grid of one HEIC tile, 40,000 times")
            << heicGrid(heic(corners({64, 64})),
                        {.columns = 200, .rows = 200, .canvas = {12800, 12800}})
            << QSize(10, 10);
        for (const int scans : {3, 256})
            QTest::addRow("a JPEG in %d pieces, asked for small", scans)
                << jpegInPieces(16000, scans) << QSize(10, 10);
        const QByteArray flat = encoded(QImage(QSize(8192, 8000), QImage::Format_Mono), "png");
        const QByteArray flatColors = sample::image({8192, 8000}, "png", QColor(1, 2, 3, 4));
        QTest::newRow("a colour that fills 65 megapixels") << flatColors << QSize();
        QTest::newRow("an icon that is none") << icoOf(flat) << QSize();
        const QByteArray line = "<path stroke='red' fill='none' stroke-width='1' ";
        QByteArray zigzag = "d='M0 0";
        for (int i = 0; i < 20000; ++i)
            zigzag += "L500 " + QByteArray::number(i % 500) + "L0 " + QByteArray::number(i % 500);
        QTest::newRow("an outline of a million turns") << drawing(line + zigzag + "'/>") << QSize();
        QTest::newRow("a canvas of 100 million pixels") << drawing({}) << QSize(10000, 10000);
        QTest::newRow("a line of millions of dashes")
            << drawing(line + "stroke-dasharray='0.0001' d='M0 0L500 500'/>") << QSize();
        QTest::newRow("sixty thousand times the whole canvas")
            << drawing(QByteArray("<rect width='512' height='512' fill-opacity='0.5'/>")
                           .repeated(60000))
            << QSize();
    }
    void whatWouldTakeTooMuchIsRefused()
    {
        QFETCH(QByteArray, file);
        QFETCH(QSize, size);
        const qint64 before = peakMemory();
        QVERIFY(!(size.isEmpty() ? decodePicture(file) : decodePicture(file, size)));
        QCOMPARE_LE(peakMemory() - before, 256LL << 20);
    }

    void imagesWaitForEachOthersMemory_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("an image") << encoded(corners({64, 64}), "png");
        QTest::newRow("a drawing") << drawing("<rect width='9' height='9'/>");
    }
    void imagesWaitForEachOthersMemory()
    {
        QFETCH(QByteArray, file);
        std::atomic_bool isDecoded = false;
        std::thread other;
        {
            ImageMemoryShare all;
            all.reserve(ImageLimits().heldBytesOfPhoto); // more than there is: all of it
            QVERIFY(decodePicture(file));                // within one's own share
            other = std::thread([&] { isDecoded = decodePicture(file).has_value(); });
            QTest::qWait(50);
            QVERIFY(!isDecoded);
        }
        other.join();
        QVERIFY(isDecoded);
    }

    void drawingsShowNothingFromOutside_data()
    {
        QTest::addColumn<QByteArray>("reference");
        QTest::addColumn<bool>("isShown");
        const QByteArray path = folder.filePath(QStringLiteral("red.png")).toUtf8();
        const QByteArray red = sample::image({8, 8}, "png");
        QVERIFY(sample::write(folder.filePath(QStringLiteral("red.png")), red));
        QTest::newRow("the address of a file") << "xlink:href='" + path + "'" << false;
        QTest::newRow("the same behind another reference")
            << "z:href='data:,' xlink:href='" + path + "'" << false;
        QTest::newRow("the same in a drawing within")
            << "xlink:href='data:image/png;base64," +
                   drawing("<image width='512' height='512' xlink:href='" + path + "'/>")
                       .toBase64() +
                   "'"
            << false;
        QTest::newRow("a picture within")
            << "xlink:href='data:image/png;base64," + red.toBase64() + "'" << true;
        QTest::newRow("the same as it is written today")
            << "href='data:;base64," + red.toBase64() + "'" << true;
    }
    void drawingsShowNothingFromOutside()
    {
        QFETCH(const QByteArray, reference);
        QFETCH(const bool, isShown);
        const auto picture = decodePicture(drawing(
            "<rect width='512' height='512' fill='white'/><image width='512' height='512' " +
            reference + "/>"));
        QVERIFY(picture);
        QCOMPARE(picture->toQImage().pixelColor(256, 256), QColor(isShown ? Qt::red : Qt::white));
    }

    void drawingsLookAsTheRendererDrawsThem()
    {
        const QByteArray svg = drawing(
            "<defs><linearGradient id='g'><stop offset='0' stop-color='red'/><stop offset='1' "
            "stop-color='blue'/></linearGradient><clipPath id='c'><circle cx='256' cy='256' "
            "r='200'/></clipPath></defs><rect width='512' height='256' fill='url(#g)'/>"
            "<g transform='rotate(20 256 256)' opacity='0.5'><ellipse cx='256' cy='256' rx='200' "
            "ry='90' stroke='green' stroke-width='12' stroke-dasharray='30 9'/></g>"
            "<polyline points='9,9 90,400 300,100' fill='none' stroke='black' stroke-width='7'/>"
            "<polygon points='300,300 500,300 400,500' fill='yellow' fill-rule='evenodd'/>"
            "<text x='40' y='480' font-size='60'>Text</text>");
        QImage expected(512, 512, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            QSvgRenderer(svg).render(&painter);
        }
        const auto picture = decodePicture(svg);
        QVERIFY(picture);
        QCOMPARE_LE(difference(picture->toQImage(), expected), 2);
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
        QImage last(8, 70, QImage::Format_ARGB32);
        last.fill(Qt::red);
        last.setPixelColor(7, 69, Qt::transparent);
        QVERIFY(UIImage::fromQImage(last)->hasTransparency());
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

QTEST_MAIN(TestPicture)
#include "tst_picture.moc"
