// The pictures of tests/data/pictures, upright and in sRGB as their table has them.

#include "platform/images/image_representation.h"
#include "platform/images/picture.h"
#include "platform/images/picture_kind.h"
#include "support/data_table.h"

#include <QPainter>
#include <algorithm>
#include <cstdlib>

using namespace zelkam;

namespace {

constexpr int cellEdge = 16;

/// What the row says, with a pixel for each cell.
QImage cellsOf(const QByteArrayList &row)
{
    QImage cells(row.at(1).toInt(), row.at(2).toInt(), QImage::Format_ARGB32);
    for (int i = 0; i < cells.width() * cells.height(); ++i) {
        const QByteArray color = QByteArray::fromHex(row.at(4 + i)).append('\xff');
        const auto channel = [&color](int c) { return static_cast<uchar>(color.at(c)); };
        cells.setPixel(i % cells.width(), i / cells.width(),
                       qRgba(channel(0), channel(1), channel(2), channel(3)));
    }
    return cells;
}

/// The largest difference of a channel in the middle of a cell. A pixel that nobody sees has no
/// colour.
int difference(const QImage &image, const QImage &cells)
{
    const int width = image.width() / cells.width();
    const int height = image.height() / cells.height();
    int largest = 0;
    for (int i = 0; i < cells.width() * cells.height(); ++i) {
        const QPoint at(i % cells.width(), i / cells.width());
        const QColor wanted = cells.pixelColor(at);
        const QColor found =
            image.pixelColor(at.x() * width + width / 2, at.y() * height + height / 2);
        largest = std::max(largest, std::abs(found.alpha() - wanted.alpha()));
        if (wanted.alpha() > 0)
            largest = std::max({largest, std::abs(found.red() - wanted.red()),
                                std::abs(found.green() - wanted.green()),
                                std::abs(found.blue() - wanted.blue())});
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
        for (const QByteArray &line :
             test::dataFile(QStringLiteral("pictures/colors.txt")).split('\n')) {
            if (!line.isEmpty() && !line.startsWith('#'))
                QTest::addRow("%s", line.split(' ').first().constData()) << line.split(' ');
        }
    }
    void picturesAreRightToTheEye()
    {
        QFETCH(const QByteArrayList, row);
        const QByteArray file =
            test::dataFile(QStringLiteral("pictures/") + QLatin1String(row.at(0)));
        const QImage cells = cellsOf(row);
        const QSize size = cells.size() * cellEdge;
        const int allowed = row.at(3).toInt();
        const QByteArray kind = row.at(0).mid(row.at(0).lastIndexOf('.'));
        QVERIFY(pictureTypeIdentifier(file).value_or(QString()).endsWith(QLatin1String(kind)));
        const auto picture = decodePicture(file);
        QVERIFY(picture);
        QCOMPARE(picture->size(), size);
        QCOMPARE_LE(difference(picture->toQImage(), cells), allowed);
        const QSize other(size.width() / 4, size.height() / 2); // smaller, of another shape
        const auto small = decodePicture(file, other);
        QVERIFY(small);
        QCOMPARE(small->size(), other);
        QCOMPARE_LE(difference(small->toQImage(), cells), allowed + 2);
        // What is saved of it is upright as it is, lies on white and holds nothing else.
        QImage onWhite(cells.size(), QImage::Format_RGB32);
        onWhite.fill(Qt::white);
        QPainter(&onWhite).drawImage(0, 0, cells);
        const auto saved = UIImageJPEGRepresentation(*picture, 0.95);
        QVERIFY(saved && !saved->contains("Exif"));
        QCOMPARE_LE(difference(QImage::fromData(*saved), onWhite), allowed + 6);
    }
};

QTEST_MAIN(TestPictureColors)
#include "tst_picture_colors.moc"
