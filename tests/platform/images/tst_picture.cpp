#include "platform/images/image_representation.h"
#include "platform/images/picture.h"
#include "platform/images/picture_comparison.h"
#include "platform/images/picture_kind.h"
#include "support/data_table.h"
#include "support/sample_files.h"

#include <QBuffer>
#include <QImageWriter>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QtEndian>
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

/// A PNG whose text chunk says that it is so long.
QByteArray pngWithText(quint32 length)
{
    const quint32 bytes = qToBigEndian(length);
    return encoded(corners({8, 8}), "png")
        .insert(33, QByteArray(reinterpret_cast<const char *>(&bytes), sizeof bytes) + "tEXtNote");
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

qint64 peakMemory()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

QImage readScaled(const QByteArray &file, std::optional<QSize> size = std::nullopt)
{
    const auto picture = decodePicture(file, size);
    return picture ? picture->toQImage() : QImage();
}

QByteArray heif(const char *name)
{
    return dataFile(QStringLiteral("heif/%1.heic").arg(QLatin1String(name)));
}

} // namespace

class TestPicture : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;

private slots:
    void kindsAreToldByContent()
    {
        const QByteArray photo = heif("corners");
        const std::pair<QByteArray, QString> kinds[] = {
            {photo, QStringLiteral("public.heic")},
            {QByteArray(photo).replace(8, 4, "mif1"), QStringLiteral("public.heic")},
            {"<?xml version='1.0'?>\n" + drawing({}), QStringLiteral("public.svg-image")},
            {"only a text", {}},
            {"", {}}};
        for (const auto &[file, type] : kinds) {
            QCOMPARE(pictureTypeIdentifier(file).value_or(QString()), type);
            QCOMPARE(decodePicture(file).has_value(), !type.isEmpty());
        }
        QVERIFY(!UIImage::fromData(drawing({})));
    }

    void whatIsAnImageIsDecodedWithoutItsTexts()
    {
        const QByteArray jpeg = sample::image({60, 40}, "jpeg");
        QByteArrayList files{jpeg + "and more", QByteArray(jpeg).insert(2, "\xff\xff")};
        for (const char *format : {"png", "bmp", "webp", "tiff", "ico"})
            files += sample::image({60, 40}, format);
        for (const QByteArray &file : files) {
            const auto image = UIImage::fromData(file);
            QVERIFY2(image, file.left(4).constData());
            QCOMPARE(image->size(), QSize(60, 40));
            QVERIFY(image->toQImage().textKeys().isEmpty());
            QVERIFY(!image->hasTransparency());
        }
    }

    void whatIsNoSoundImageIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("a document") << sample::pdf(1);
        QTest::newRow("a text") << QByteArray("ftypheic is only a text");
        for (const char *name : {"grid-of-30000", "grid-of-many-tiles", "extents-of-60000",
                                 "turned-twice", "another-coding"})
            QTest::newRow(name) << heif(name);
        QTest::newRow("a JPEG that ends in its first marker") << QByteArray("\xff\xd8\xff\xe1\xff");
        QByteArray other = sample::image({60, 40}, "png");
        other[40] = char(other.at(40) ^ 0x55);
        QTest::newRow("a PNG with a changed byte") << other;
        QTest::newRow("a GIF without its last pixels")
            << dataFile(QStringLiteral("pictures/palette.gif")).chopped(6);
        for (const char *format : {"jpeg", "png", "bmp", "webp", "tiff"}) {
            const QByteArray whole = sample::image({600, 400}, format, Qt::darkCyan);
            QTest::addRow("a %s cut in half", format) << whole.left(whole.size() / 2);
            QTest::addRow("a %s without its last bytes", format) << whole.chopped(12);
        }
    }
    void whatIsNoSoundImageIsRefused()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!UIImage::fromData(bytes));
    }

    void whatWouldTakeTooMuchIsRefused_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QSize>("size"); // that it is asked for
        QTest::newRow("a PNG of 900 million pixels") << sample::pngHeader(30000, 30000) << QSize();
        QTest::newRow("the same, asked for small")
            << sample::pngHeader(30000, 30000) << QSize(10, 10);
        QTest::newRow("1,000 scans of many pixels")
            << dataFile(QStringLiteral("pictures/scans-1000.jpeg")) << QSize(10, 10);
        // The frame's size lies behind the marker, its length and the sample depth.
        QByteArray large = encoded(corners({64, 64}), "jpeg");
        large.replace(large.indexOf("\xff\xc0") + 5, 4, "\x75\x30\x75\x30");
        QTest::newRow("a JPEG of 900 million pixels") << large << QSize();
        QTest::newRow("the same, asked for small too") << large << QSize(10, 10);
        QTest::newRow("256 pieces of a JPEG")
            << dataFile(QStringLiteral("pictures/pieces-256.jpeg")) << QSize(10, 10);
        const QByteArray flat = encoded(QImage(QSize(8192, 8000), QImage::Format_Mono), "png");
        QTest::newRow("an icon that is none") << icoOf(flat) << QSize();
        QTest::newRow("a text of 2 GB in a PNG") << pngWithText(0x7fffffff) << QSize();
        QTest::newRow("a canvas of 900 million pixels") << drawing({}) << QSize(30000, 30000);
        QTest::newRow("a million times the whole canvas")
            << drawing("<g id='a'>" +
                       QByteArray("<rect width='512' height='512' fill-opacity='0.5'/>")
                           .repeated(1000) +
                       "</g>" + QByteArray("<use xlink:href='#a'/>").repeated(1000))
            << QSize();
    }
    void whatWouldTakeTooMuchIsRefused()
    {
        QFETCH(QByteArray, file);
        QFETCH(QSize, size);
        const qint64 before = peakMemory();
        QVERIFY(!(size.isEmpty() ? decodePicture(file) : decodePicture(file, size)));
        QCOMPARE_LE(peakMemory() - before, 64LL << 20);
        QVERIFY(decodePicture(encoded(corners({32, 32}), "png"))); // the next one works
    }

    void heicIsReadAtTheAskedSize()
    {
        QCOMPARE_LE(difference(readScaled(heif("odd")), corners({65, 33})), 12);
        const QImage image = corners({96, 64});
        const QByteArray file = heif("corners");
        for (const QSize size : {QSize(50, 30), QSize(128, 7), QSize(300, 200), QSize(300, 20)})
            QCOMPARE_LE(difference(readScaled(file, size), image.scaled(size, Qt::IgnoreAspectRatio,
                                                                        Qt::SmoothTransformation)),
                        12);
        // A single pixel is the mean of the four corners.
        QImage mean({1, 1}, QImage::Format_RGB32);
        mean.fill(QColor(128, 128, 64));
        QCOMPARE_LE(difference(readScaled(file, QSize(1, 1)), mean), 12);
    }

    void aStoredSmallVersionStandsForAThumbnailOnly()
    {
        const QByteArray file = heif("thumbnail"); // of 320 by 240, all that can be shown
        const QString path = folder.filePath(QStringLiteral("a.heic"));
        QVERIFY(sample::write(path, file));
        const auto small = thumbnailOfPicture(path, 190);
        QVERIFY(small);
        QCOMPARE_LE(difference(small->image, corners({256, 192})), 12);
        QVERIFY(difference(readScaled(file, QSize(256, 192)), corners({256, 192})) > 12);
        const auto tooSmall = thumbnailOfPicture(path, 300);
        QVERIFY(!tooSmall || difference(tooSmall->image, corners({512, 384})) > 12);
    }

    void heicIsComposedOfTiles()
    {
        const QByteArray file = heif("grid");
        const QImage image = readScaled(file);
        QCOMPARE(image.size(), QSize(180, 120));
        QVERIFY(difference(image.copy(64, 0, 64, 64), corners({64, 64})) <= 12);
        QCOMPARE(readScaled(file, QSize(90, 60)).size(), QSize(90, 60));
    }

    void survivesEveryTruncationAndFlipOfAHeic()
    {
        const QByteArray file = heif("small-grid");
        const auto described = file.indexOf("mdat");
        for (qsizetype length = 0; length < file.size(); length += 3)
            QVERIFY2(readScaled(file.left(length)).isNull(),
                     QByteArray::number(length).constData());
        for (qsizetype at = 0; at < described; ++at) {
            for (const char flip : {'\x01', '\x80', '\xff'}) {
                QByteArray damaged = file;
                damaged[at] = char(damaged[at] ^ flip);
                const QSize size = readScaled(damaged).size();
                QVERIFY(size.width() <= 32768 && size.height() <= 32768);
            }
        }
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
        const QByteArray svg = dataFile(QStringLiteral("pictures/drawing.svg"));
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
        QVERIFY(!decodePicture(file)); // 800 MB in the application
        const auto again = encodedPicture(file, std::nullopt, 0.5);
        QVERIFY(again && !again->isEmpty());
    }

    void transparencyIsSeenAndKept()
    {
        QImage last(8, 70, QImage::Format_ARGB32);
        last.fill(Qt::red);
        last.setPixelColor(7, 69, Qt::transparent);
        const auto image = UIImage::fromQImage(last);
        QVERIFY(image->hasTransparency());
        const QImage kept = QImage::fromData(*UIImagePNGRepresentation(*image));
        QCOMPARE(kept.convertToFormat(last.format()), last);
    }

    void qualityIsClamped()
    {
        const auto image = UIImage::fromQImage(corners({61, 45}));
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

    void everyPixelKeepsItsColorAtAHighQuality()
    {
        QImage stripes(64, 32, QImage::Format_RGB32);
        for (int at = 0; at < 64 * 32; ++at)
            stripes.setPixel(at % 64, at / 64, at % 2 == 0 ? qRgb(255, 0, 0) : qRgb(0, 0, 255));
        const auto image = UIImage::fromQImage(stripes);
        const auto loss = [&](double quality) {
            return difference(QImage::fromData(*UIImageJPEGRepresentation(*image, quality)),
                              stripes);
        };
        QCOMPARE_LE(loss(1.0), 4);
        QCOMPARE_LE(loss(0.9), 24);
    }

    void filesOfAnyPictureAreRead()
    {
        const QString path = folder.filePath(QStringLiteral("a.jpg"));
        QVERIFY(sample::write(path, "content"));
        QCOMPARE(readPictureFile(path), QByteArray("content"));
        QFile::resize(path, (256LL << 20) + 1);
        QVERIFY(!readPictureFile(path));
    }
};

QTEST_MAIN(TestPicture)
#include "tst_picture.moc"
