#include "heif_writer.h"
#include "picture_comparison.h"
#include "platform/images/picture.h"
#include "support/sample_files.h"

#include <QColorSpace>
#include <QTemporaryDir>
#include <QTest>
#include <QTransform>

using namespace zelkam;
using namespace zelkam::test;

namespace {

QImage readScaled(const QByteArray &file, std::optional<QSize> size = std::nullopt)
{
    const auto picture = decodePicture(file, size);
    return picture ? picture->toQImage() : QImage();
}

QImage oriented(const QImage &image, int orientation)
{
    QTransform turn;
    const QList<int> degrees{0, 0, 180, 180, 270, 90, 90, 270};
    const bool mirrored =
        orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
    turn.rotate(degrees.at(orientation - 1));
    const QImage first = mirrored ? image.mirrored(true, false) : image;
    return first.transformed(turn);
}

} // namespace

class TestHeifImage : public QObject
{
    Q_OBJECT

private slots:
    void decodes_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<int>("bits");
        QTest::newRow("opaque, 8 bit") << corners({128, 96}) << 8;
        QTest::newRow("opaque, 10 bit") << corners({128, 96}) << 10;
        QTest::newRow("odd edges") << corners({65, 33}) << 8;
        QImage half = corners({128, 96}, QImage::Format_ARGB32);
        half.setAlphaChannel([&half] {
            QImage alpha(half.size(), QImage::Format_Alpha8);
            alpha.fill(128);
            return alpha;
        }());
        QTest::newRow("half transparent") << half << 8;
    }

    void decodes()
    {
        QFETCH(QImage, image);
        QFETCH(int, bits);
        const QImage decoded = readScaled(heic(image, {.bits = bits}));
        QCOMPARE(decoded.hasAlphaChannel(), image.hasAlphaChannel());
        QCOMPARE_LE(difference(decoded, image), 12);
    }

    void turnsUpright()
    {
        const QImage stored = corners({128, 64});
        for (int orientation = 1; orientation <= 8; ++orientation) {
            const QImage upright = oriented(stored, orientation);
            const QByteArray file = heic(stored, {.orientation = orientation});
            QCOMPARE_LE(difference(readScaled(file), upright), 12);
        }
    }

    void readsAtTheAskedSize()
    {
        const QImage image = corners({128, 96});
        const QByteArray file = heic(image);
        for (const QSize size : {QSize(50, 30), QSize(128, 7), QSize(300, 200), QSize(300, 20)})
            QCOMPARE_LE(difference(readScaled(file, size), image.scaled(size, Qt::IgnoreAspectRatio,
                                                                        Qt::SmoothTransformation)),
                        12);
        // A single pixel is the mean of the four corners.
        QImage mean({1, 1}, QImage::Format_RGB32);
        mean.fill(QColor(128, 128, 64));
        QCOMPARE_LE(difference(readScaled(file, QSize(1, 1)), mean), 12);
    }

    void takesTheStoredSmallVersionOnlyWhereAskedForSpeed()
    {
        QByteArray file = heic(corners({640, 480}), {.thumbnailEdge = 320});
        // The large version's data comes first: without it, only the small one can be shown.
        const auto data = file.indexOf("mdat") + 4;
        constexpr int unitHeader = 4 + 2 + 4;
        file.replace(data + unitHeader, 200, QByteArray(200, '\0'));
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.heic"));
        QVERIFY(sample::write(path, file));
        const auto small = thumbnailOfPicture(path, 190);
        QVERIFY(small);
        QCOMPARE_LE(difference(small->image, corners({256, 192})), 12);
        QVERIFY(difference(readScaled(file, QSize(256, 192)), corners({256, 192})) > 12);
        const auto tooSmall = thumbnailOfPicture(path, 300);
        QVERIFY(!tooSmall || difference(tooSmall->image, corners({512, 384})) > 12);
    }

    void composesGrids()
    {
        const QByteArray tile = heic(corners({64, 64}));
        const QByteArray file = heicGrid(tile, {.columns = 3, .rows = 2, .canvas = {180, 120}});
        const QImage image = readScaled(file);
        QCOMPARE(image.size(), QSize(180, 120));
        QVERIFY(difference(image.copy(64, 0, 64, 64), corners({64, 64})) <= 12);
        QCOMPARE(readScaled(file, QSize(90, 60)).size(), QSize(90, 60));
    }

    void convertsTheProfileToSRgb()
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(QColor(200, 100, 50));
        const QByteArray file = heic(image, {.colorSpace = QColorSpace(QColorSpace::DisplayP3)});
        const auto decoded = UIImage::fromData(file);
        QVERIFY(decoded);
        image.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
        image.convertToColorSpace(QColorSpace(QColorSpace::SRgb));
        QCOMPARE(decoded->toQImage().colorSpace(), QColorSpace(QColorSpace::SRgb));
        QCOMPARE_LE(difference(decoded->toQImage(), image), 6);
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("file");
        const QByteArray tile = heic(corners({64, 64}));
        const auto patched = [](QByteArray file, const QByteArray &type, int at, QByteArray bytes) {
            const auto found = file.indexOf(type) + 4;
            return file.replace(found + at, bytes.size(), bytes);
        };
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a text") << QByteArray("ftypheic is only a text");
        QTest::newRow("a grid that declares 30,000 x 30,000")
            << heicGrid(tile, {.columns = 2, .rows = 2, .canvas = {30000, 30000}});
        QTest::newRow("a large grid whose extents are small") << heicGrid(
            tile, {.columns = 200, .rows = 200, .canvas = {12800, 12800}, .declared = {64, 64}});
        QTest::newRow("a small grid of many more tiles than it shows") << heicGrid(
            heic(corners({512, 512})), {.columns = 200, .rows = 200, .canvas = {64, 64}});
        QTest::newRow("extents of 60,000 x 60,000")
            << patched(tile, "ispe", 4, QByteArray("\0\0\xea\x60\0\0\xea\x60", 8));
        // Each of the picture's associations with its properties becomes one with the turn.
        QByteArray turnedOften = heic(corners({64, 64}), {.orientation = 6});
        const auto associations = turnedOften.indexOf("ipma") + 4;
        const int count = turnedOften.at(associations + 10);
        const char turn = turnedOften.at(associations + 10 + count);
        QTest::newRow("a picture that is turned twice")
            << turnedOften.replace(associations + 10 + count - 1, 1, QByteArray(1, turn));
        QTest::newRow("another coding") << QByteArray(tile).replace("hvc1", "av01");
    }

    void refuses()
    {
        QFETCH(QByteArray, file);
        QVERIFY(readScaled(file).isNull());
        QVERIFY(!UIImage::fromData(file));
    }

    void survivesEveryTruncationAndFlip()
    {
        const QByteArray file = heicGrid(heic(corners({64, 64})), {.canvas = {128, 128}});
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
};

QTEST_GUILESS_MAIN(TestHeifImage)
#include "tst_heif_image.moc"
