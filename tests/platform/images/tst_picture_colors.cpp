// The pictures of tests/data/pictures, upright and in sRGB as their table has them.

#include "platform/images/image_decoding.h"
#include "platform/images/image_representation.h"
#include "platform/images/picture.h"

#include <QFile>
#include <QTest>
#include <algorithm>
#include <cstdlib>

using namespace zelkam;

namespace {

constexpr int cellEdge = 16;

QByteArray dataFile(const QByteArray &name)
{
    QFile file(QStringLiteral(ZELKAM_TEST_DATA "/pictures/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The largest difference of a channel in the middle of a cell. A pixel that nobody sees has no
/// colour.
int difference(const QImage &image, int columns, const QByteArrayList &cells)
{
    const int edge = image.width() / columns;
    int largest = 0;
    for (int i = 0; i < cells.size(); ++i) {
        const QByteArray wanted = QByteArray::fromHex(cells.at(i)).append('\xff');
        const QColor found =
            image.pixelColor(i % columns * edge + edge / 2, i / columns * edge + edge / 2);
        const int channels[] = {found.red(), found.green(), found.blue(), found.alpha()};
        for (int c = wanted.at(3) == 0 ? 3 : 0; c < 4; ++c)
            largest = std::max(largest, std::abs(channels[c] - static_cast<uchar>(wanted.at(c))));
    }
    return largest;
}

} // namespace

class TestPictureColors : public QObject
{
    Q_OBJECT

private slots:
    void picturesAreRightToTheEye_data()
    {
        QTest::addColumn<QByteArrayList>("row");
        for (const QByteArray &line : dataFile("colors.txt").split('\n')) {
            if (!line.isEmpty() && !line.startsWith('#'))
                QTest::addRow("%s", line.split(' ').first().constData()) << line.split(' ');
        }
    }
    void picturesAreRightToTheEye()
    {
        QFETCH(const QByteArrayList, row);
        const QByteArray file = dataFile(row.at(0));
        const int columns = row.at(1).toInt();
        const QSize size = QSize(columns, row.at(2).toInt()) * cellEdge;
        const int allowed = row.at(3).toInt();
        const QByteArray kind = row.at(0).mid(row.at(0).lastIndexOf('.'));
        QVERIFY(pictureTypeIdentifier(file).value_or(QString()).endsWith(QLatin1String(kind)));
        QCOMPARE(imageSize(file), size);
        const auto picture = decodePicture(file);
        QVERIFY(picture);
        QCOMPARE(picture->size(), size);
        QCOMPARE_LE(difference(picture->toQImage(), columns, row.mid(4)), allowed);
        const auto small = decodePicture(file, size / 2);
        QVERIFY(small);
        QCOMPARE(small->size(), size / 2);
        QCOMPARE_LE(difference(small->toQImage(), columns, row.mid(4)), allowed + 2);
    }
};

QTEST_MAIN(TestPictureColors)
#include "tst_picture_colors.moc"
