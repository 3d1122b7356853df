#include "platform/photos/saved_photos_album.h"
#include "support/sample_files.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <thread>

using namespace zelkam;
using namespace std::chrono_literals;

class SavedPhotosAlbumTest : public QObject
{
    Q_OBJECT

private slots:
    void imagesAreAddedToTheAlbum()
    {
        QTemporaryDir folder;
        const QString album = folder.filePath(QStringLiteral("made/when/needed"));
        setPicturesDirectory(album);
        const auto photo = UIImage::fromData(sample::image({60, 40}, "png"));
        const auto drawing =
            UIImage::fromData(sample::image({60, 40}, "png", QColor(0, 0, 255, 100)));
        QVERIFY(photo && drawing && drawing->hasTransparency());
        constexpr int threads = 4;
        std::vector<std::thread> writers;
        for (int i = 0; i < threads; ++i) {
            writers.emplace_back([&photo, &drawing] {
                UIImageWriteToSavedPhotosAlbum(*photo);
                UIImageWriteToSavedPhotosAlbum(*drawing);
            });
        }
        for (std::thread &writer : writers)
            writer.join();
        setPicturesDirectory({}); // writes that were asked for before keep theirs
        QVERIFY(waitForAlbumWrites(20s));

        const QStringList names = QDir(album).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(names.size(), 2 * threads);
        const QRegularExpression pattern(QStringLiteral("^IMG_\\d{8}_\\d{6}(_\\d+)?\\.(jpg|png)$"));
        for (const QString &name : names) {
            QVERIFY2(pattern.match(name).hasMatch(), qPrintable(name));
            QFile file(album + u'/' + name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY(file.permissions() & QFile::ReadOther);
            const QByteArray bytes = file.readAll();
            QCOMPARE(bytes.startsWith("\x89PNG"), name.endsWith(QLatin1String("png")));
            QVERIFY(!bytes.contains("made at home"));
            QVERIFY(UIImage::fromData(bytes));
        }
        QCOMPARE(names.filter(QStringLiteral(".png")).size(), threads);
    }
};

QTEST_GUILESS_MAIN(SavedPhotosAlbumTest)
#include "tst_saved_photos_album.moc"
