#include "platform/images/image_decoding.h"
#include "platform/images/ui_image.h"
#include "support/sample_files.h"

#include <QColorSpace>
#include <QTest>

using namespace zelkam;

namespace {

/// Red, 40 by 40: Qt writes no GIF.
QByteArray tinyGif()
{
    // Every code is sent with the width of the first, a clear code between each two pixels.
    QByteArray bits;
    int filled = 0;
    const auto put = [&](int code) {
        for (int bit = 0; bit < 3; ++bit, ++filled) {
            if (filled % 8 == 0)
                bits.append('\0');
            bits.back() = char(bits.back() | (((code >> bit) & 1) << (filled % 8)));
        }
    };
    for (int pixel = 0; pixel < 40 * 40; ++pixel) {
        put(4);
        put(1);
    }
    put(5);
    QByteArray blocks;
    for (qsizetype at = 0; at < bits.size(); at += 200) {
        const QByteArray block = bits.mid(at, 200);
        blocks.append(char(block.size())).append(block);
    }
    const QByteArray size("\x28\0\x28\0", 4);
    return "GIF89a" + size + QByteArray("\x80\0\0\0\0\0\xff\0\0,\0\0\0\0", 14) + size +
           QByteArray("\0\x02", 2) + blocks + QByteArray("\0;", 2);
}

} // namespace

class UIImageTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsAnImageIsDecoded_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("size");
        for (const char *format : {"jpeg", "png", "bmp", "webp", "tiff", "ico"})
            QTest::newRow(format) << sample::image({60, 40}, format) << QSize(60, 40);
        QTest::newRow("a JPEG that is to be turned")
            << sample::turnedJpeg({60, 40}) << QSize(40, 60);
        QTest::newRow("a JPEG with fill bytes")
            << sample::image({60, 40}, "jpeg").insert(2, "\xff\xff") << QSize(60, 40);
        QTest::newRow("a GIF") << tinyGif() << QSize(40, 40);
        QTest::newRow("a progressive JPEG")
            << sample::image({60, 40}, "jpeg", Qt::red, true) << QSize(60, 40);
        QTest::newRow("a JPEG with something behind its end")
            << sample::image({60, 40}, "jpeg") + "and more" << QSize(60, 40);
    }
    void whatIsAnImageIsDecoded()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, size);
        const auto image = UIImage::fromData(bytes);
        QVERIFY(image);
        QCOMPARE(image->size(), size);
        QCOMPARE(imageSize(bytes), size);
        QVERIFY(image->toQImage().textKeys().isEmpty());
        QVERIFY(!image->hasTransparency());
        QVERIFY(image->toQImage().pixelColor(20, 20).red() > 240);
    }

    void whatIsNoSoundImageIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a document") << sample::pdf(1);
        QTest::newRow("a vector image") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' "
                                                      "width='9' height='9'/>");
        QTest::newRow("a JPEG that ends in its first marker") << QByteArray("\xff\xd8\xff\xe1\xff");
        QByteArray other = sample::image({60, 40}, "png");
        other[40] = char(other.at(40) ^ 0x55);
        QTest::newRow("a PNG with a changed byte") << other;
        QTest::newRow("a GIF without its last pixels") << tinyGif().chopped(6);
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

    void colorsAreThoseOfTheCommonSpace()
    {
        QImage wide(8, 8, QImage::Format_RGB32);
        wide.fill(QColor(200, 100, 50));
        wide.setColorSpace(QColorSpace::DisplayP3);
        QBuffer buffer;
        QVERIFY(QImageWriter(&buffer, "png").write(wide));
        const auto image = UIImage::fromData(buffer.data());
        QVERIFY(image);
        QCOMPARE(image->toQImage().colorSpace(), QColorSpace(QColorSpace::SRgb));
        QVERIFY(image->toQImage().pixelColor(4, 4).red() > 203); // more red than sRGB's 200
    }
};

QTEST_GUILESS_MAIN(UIImageTest)
#include "tst_ui_image.moc"
