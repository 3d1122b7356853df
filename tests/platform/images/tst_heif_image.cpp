#include "platform/images/picture.h"
#include "platform/images/picture_comparison.h"
#include "support/data_table.h"
#include "support/sample_files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace zelkam;
using namespace zelkam::test;

namespace {

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

class TestHeifImage : public QObject
{
    Q_OBJECT

private slots:
    void readsAtTheAskedSize()
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

    void takesTheStoredSmallVersionOnlyWhereAskedForSpeed()
    {
        const QByteArray file = heif("thumbnail"); // of 320 by 240, all that can be shown
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
        const QByteArray file = heif("grid");
        const QImage image = readScaled(file);
        QCOMPARE(image.size(), QSize(180, 120));
        QVERIFY(difference(image.copy(64, 0, 64, 64), corners({64, 64})) <= 12);
        QCOMPARE(readScaled(file, QSize(90, 60)).size(), QSize(90, 60));
    }

    void refuses_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a text") << QByteArray("ftypheic is only a text");
        for (const char *name : {"grid-of-30000", "grid-of-many-tiles", "extents-of-60000",
                                 "turned-twice", "another-coding"})
            QTest::newRow(name) << heif(name);
    }
    void refuses()
    {
        QFETCH(QByteArray, file);
        QVERIFY(readScaled(file).isNull());
        QVERIFY(!UIImage::fromData(file));
    }

    void survivesEveryTruncationAndFlip()
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
};

QTEST_GUILESS_MAIN(TestHeifImage)
#include "tst_heif_image.moc"
