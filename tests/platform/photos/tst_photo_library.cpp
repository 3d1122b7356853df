#include "platform/images/image_scaling.h"
#include "platform/images/picture_comparison.h"
#include "platform/photos/ph_image_manager.h"
#include "platform/photos/ph_photo_library.h"
#include "platform/photos/photo_workers.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos/thumbnail_store.h"
#include "support/sample_files.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <array>
#include <atomic>
#include <latch>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

const QString hangingProgram = u"hang"_s;

int endWhileAWorkerHangs(int argc, char **argv)
{
    QCoreApplication program(argc, argv);
    PhotoWorkers::start([](PhotoReading &) { std::latch(1).wait(); },
                        PhotoWorkers::Kind::requested);
    QTimer::singleShot(100, &program, &QCoreApplication::quit);
    return program.exec();
}

} // namespace

class TestPhotoLibrary : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root;
    QDateTime now;

    QString path(const QString &name) const { return root->filePath(u"pictures/"_s + name); }

    /// A picture that is this many seconds old.
    PHAsset add(const QString &name, int age, const QByteArray &content = {})
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        file.open(QIODevice::WriteOnly);
        file.write(content.isEmpty() ? sample::image({60, 40}, "jpeg") : content);
        file.flush();
        file.setFileTime(now.addSecs(-age), QFileDevice::FileModificationTime);
        const QFileInfo info(file);
        return {path(name), info.lastModified().toMSecsSinceEpoch(), info.size()};
    }

    QStringList names(const PHPhotoLibrary &library) const
    {
        QStringList result;
        for (const PHAsset &asset : library.assets())
            result.append(asset.filePath().mid(path({}).size()));
        return result;
    }

    ThumbnailDiskCache cache() const { return ThumbnailDiskCache(root->filePath(u"cache"_s)); }

    static bool settle(ThumbnailStore &store)
    {
        return QTest::qWaitFor([&store] { return store.isIdle(); }, 20000);
    }

private slots:
    void init()
    {
        root = std::make_unique<QTemporaryDir>();
        now = QDateTime::currentDateTime();
        setPicturesDirectory(path({}).chopped(1));
    }

    void theNewestComesFirst()
    {
        add(u"old.jpg"_s, 300);
        add(u"new.JPEG"_s, 100);
        add(u"burst2.jpg"_s, 250);
        add(u"burst1.jpg"_s, 250);
        add(u"trip/day 2/middle.png"_s, 200);
        add(u"notes.txt"_s, 50);
        add(u".hidden.jpg"_s, 50);
        add(u".cache/hidden.jpg"_s, 50);
        QVERIFY(QFile::link(path({}), path(u"trip/round"_s))); // leads back to where it began
        QVERIFY(QFile::link(path(u"gone"_s), path(u"broken.jpg"_s)));
        PHPhotoLibrary library;
        QSignalSpy changed(&library, &PHPhotoLibrary::changed);
        library.open();
        QVERIFY(changed.wait());
        QCOMPARE(names(library), QStringList({u"new.JPEG"_s, u"trip/day 2/middle.png"_s,
                                              u"burst2.jpg"_s, u"burst1.jpg"_s, u"old.jpg"_s}));
        library.open();
        QTest::qWait(300);
        QCOMPARE(changed.size(), 1); // nothing is different
        setPicturesDirectory(path(u"trip"_s));
        library.open();
        QVERIFY(!library.isLoaded() && library.assets().isEmpty());
    }

    void changesShow()
    {
        PHPhotoLibrary library;
        library.open();
        QTRY_VERIFY(library.isLoaded());
        QVERIFY(library.isUnavailable());
        add(u"first.jpg"_s, 300); // makes the folder
        QTRY_COMPARE(names(library), QStringList(u"first.jpg"_s));
        QVERIFY(!library.isUnavailable());
        add(u"sub/second.jpg"_s, 200);
        QTRY_COMPARE(library.assets().size(), 2);
        add(u"sub/third.jpg"_s, 100); // in a folder that came after the opening
        QTRY_COMPARE(library.assets().size(), 3);
        QVERIFY(QFile::remove(path(u"first.jpg"_s)));
        QTRY_COMPARE(names(library), QStringList({u"sub/third.jpg"_s, u"sub/second.jpg"_s}));
    }

    void aFileThatGrowsIsReadAgain()
    {
        PHPhotoLibrary library;
        add(u"a.jpg"_s, 300);
        library.open();
        QTRY_VERIFY(library.isLoaded());
        QFile slow(path(u"slow.jpg"_s));
        QVERIFY(slow.open(QIODevice::WriteOnly));
        QTRY_COMPARE(library.assets().size(), 2);
        const QByteArray whole = sample::image({60, 40}, "jpeg");
        slow.write(whole);
        slow.close();
        QTRY_COMPARE(library.assets().first().fileSize(), whole.size());
    }

    void whatWasSavedIsThereAtOnce()
    {
        PHPhotoLibrary library;
        add(u"a.jpg"_s, 300);
        library.open();
        QTRY_VERIFY(library.isLoaded());
        std::optional<QString> saved;
        UIImageWriteToSavedPhotosAlbum(*UIImage::fromQImage(corners({60, 40})),
                                       [&saved](const auto &filePath) { saved = filePath; });
        QTRY_VERIFY(saved);
        const auto asset = library.insert(*saved);
        QVERIFY(asset);
        QCOMPARE(library.assets().first(), *asset);
        const QString outside = root->filePath(u"outside.jpg"_s);
        QVERIFY(QFile::copy(*saved, outside));
        QVERIFY(!library.insert(outside));
        QVERIFY(!library.insert(path(u"gone.jpg"_s)));
        QTest::qWait(400);
        QCOMPARE(library.assets().size(), 2); // the watcher found the same
    }

    void dataComesInTheOrderOfTheRequests()
    {
        PHImageManager manager;
        const QByteArray large = sample::image({3000, 2000}, "png");
        const QList<PHAsset> assets{add(u"large.png"_s, 9, large), add(u"small.jpg"_s, 8),
                                    add(u"text.jpg"_s, 7, "only a text"),
                                    PHAsset(path(u"gone.jpg"_s), 0, 0), add(u"last.jpg"_s, 6)};
        QStringList order;
        for (const PHAsset &asset : assets) {
            manager.requestImageDataAndOrientation(
                asset, {},
                [&order, asset](const auto &data, const auto &type, auto orientation,
                                const auto &) {
                    QVERIFY(QThread::currentThread() == qApp->thread());
                    QCOMPARE(orientation, CGImagePropertyOrientation::up);
                    order.append(asset.fileName() + u' ' + (data ? type.value_or(u"?"_s) : u"-"_s));
                });
        }
        QCOMPARE(order, QStringList()); // never from within the request
        QTRY_COMPARE(order,
                     QStringList({u"large.png public.png"_s, u"small.jpg public.jpeg"_s,
                                  u"text.jpg ?"_s, u"gone.jpg -"_s, u"last.jpg public.jpeg"_s}));
    }

    void whatHangsHoldsUpNobodyElse()
    {
        PhotoWorkers::setTimeLimit(std::chrono::milliseconds(1500));
        const auto reset =
            qScopeGuard([] { PhotoWorkers::setTimeLimit(PhotoWorkers::defaultTimeLimit); });
        constexpr int more = 40; // than there are threads, and stand-ins
        std::latch end(1);
        int givenUp = 0;
        for (int i = 0; i < more; ++i)
            PhotoWorkers::start([&end](PhotoReading &) { end.wait(); },
                                PhotoWorkers::Kind::requested, [&givenUp] { ++givenUp; });
        PHImageManager manager;
        QStringList order;
        const auto request = [&, asset = add(u"a.jpg"_s, 5)](const QString &name,
                                                             int milliseconds) {
            manager.requestPreparedImageData(asset, {}, [&order, name, milliseconds](auto...) {
                QThread::msleep(milliseconds);
                return [&order, name] { order.append(name); };
            });
        };
        request(u"takes longer than a file may"_s, 2000);
        request(u"last"_s, 0);
        const QStringList both{u"takes longer than a file may"_s, u"last"_s};
        QTRY_COMPARE_WITH_TIMEOUT(order, both, 20000);
        QTRY_COMPARE(givenUp, more);
        end.count_down(); // what hung comes back, too late
        request(u"later"_s, 0);
        QTRY_COMPARE(order.size(), 3);
        QCOMPARE(givenUp, more);
    }

    void theProgramEndsThoughAWorkerHangs()
    {
        // Not by QProcess, after which the thread sanitizer allows no new threads.
        QByteArray path = QFile::encodeName(QCoreApplication::applicationFilePath());
        QByteArray argument = hangingProgram.toLocal8Bit();
        char *arguments[] = {path.data(), argument.data(), nullptr};
        pid_t program = 0;
        QCOMPARE(::posix_spawn(&program, path.constData(), nullptr, nullptr, arguments, environ),
                 0);
        int status = -1;
        QVERIFY(QTest::qWaitFor([&] { return ::waitpid(program, &status, WNOHANG) == program; },
                                30000));
        QCOMPARE(status, 0);
    }

    void thumbnailsShowTheMiddle()
    {
        // Only the middle square is of the four colours; the rest is black.
        QImage wide(1200, 400, QImage::Format_RGB32);
        wide.fill(Qt::black);
        QPainter(&wide).drawImage(400, 0, corners({400, 400}));
        QBuffer buffer;
        QVERIFY(QImageWriter(&buffer, "png").write(wide));
        ThumbnailStore store(cache());
        store.setEdge(100);
        const PHAsset photo = add(u"wide.png"_s, 9, buffer.data());
        const PHAsset text = add(u"text.jpg"_s, 8, "only a text");
        QVERIFY(!store.thumbnail(photo));
        store.setWanted({photo, text});
        QVERIFY(settle(store));
        QCOMPARE_LE(difference(*store.thumbnail(photo), corners({100, 100})), 8);
        QVERIFY(store.thumbnail(text) && store.thumbnail(text)->isNull());
    }

    void aRelayoutLeavesNoThumbnailOut()
    {
        ThumbnailStore store(cache());
        const PHAsset photo = add(u"a.jpg"_s, 9);
        for (const int edge : {60, 100}) {
            store.setEdge(edge);
            store.setWanted({photo});
        }
        QVERIFY(settle(store));
        QCOMPARE(store.thumbnail(photo).value_or(QImage()).size(), QSize(100, 100));
        store.setEdge(60);
        QVERIFY(!store.thumbnail(photo));
    }

    void thumbnailsAreSharedWithTheDesktop()
    {
        const PHAsset asset = add(u"a b.jpg"_s, 9, sample::image({1000, 800}, "jpeg"));
        const auto waitFor = [&] {
            ThumbnailStore store(cache());
            store.setEdge(100);
            store.setWanted({asset});
            return settle(store) ? store.thumbnail(asset) : std::nullopt;
        };
        QVERIFY(waitFor());
        // The place and the text that the thumbnail standard asks for.
        const QByteArray uri = QUrl::fromLocalFile(asset.filePath()).toEncoded();
        const QString stored = root->filePath(u"cache/normal/%1.png"_s.arg(
            QLatin1String(QCryptographicHash::hash(uri, QCryptographicHash::Md5).toHex())));
        QTRY_VERIFY(QFile::exists(stored));
        QImage thumbnail(stored);
        QCOMPARE(thumbnail.size(), QSize(128, 102));
        QCOMPARE(thumbnail.text(u"Thumb::URI"_s), QString::fromUtf8(uri));
        QCOMPARE(thumbnail.text(u"Thumb::MTime"_s),
                 QString::number(asset.modificationDate() / 1000));
        QCOMPARE(QFile::permissions(stored) & 0x0077, QFileDevice::Permissions());

        // One that another program made is taken; one of an older picture is not.
        thumbnail.fill(Qt::blue);
        QVERIFY(thumbnail.save(stored));
        QCOMPARE(waitFor()->pixelColor(50, 50), QColor(Qt::blue));
        QImage older = thumbnail;
        older.setText(u"Thumb::MTime"_s, u"1"_s);
        QImage ofAnother = thumbnail;
        ofAnother.setText(u"Thumb::URI"_s, u"file:///b.jpg"_s);
        for (const QImage &wrong : {older, ofAnother, thumbnail.scaled(200, 160)}) {
            QVERIFY(wrong.save(stored));
            QVERIFY(waitFor()->pixelColor(50, 50).red() > 240);
            QTRY_VERIFY(QImage(stored).pixelColor(50, 50).red() > 240); // made anew
        }
        // What lies in the cache itself has none.
        const ThumbnailDiskCache own(path(u"own"_s));
        own.store(PHAsset(path(u"own/a.jpg"_s), 0, 0), thumbnail);
        QVERIFY(!QFile::exists(path(u"own"_s)));
    }

    void thumbnailsAreOfAStandardSize()
    {
        const auto stored = storedThumbnailSize;
        QCOMPARE(stored({4000, 3000}, 96), QSize(128, 96));
        QCOMPARE(stored({4000, 3000}, 97), QSize(256, 192)); // its shorter edge would be too short
        QCOMPARE(stored({3000, 4000}, 300), QSize(384, 512));
        QCOMPARE(stored({8000, 1000}, 200), QSize(1024, 128)); // no size covers it
        QCOMPARE(stored({90, 300}, 256), QSize(90, 300));      // it is small itself
        QCOMPARE(stored({5000, 1}, 100), QSize(1024, 1));
    }

    void memoryIsBounded()
    {
        constexpr qint64 memory = 20 * (100 * 100 * 4 + 256);
        ThumbnailStore store(cache(), memory);
        store.setEdge(100);
        QList<PHAsset> assets;
        for (int i = 0; i < 40; ++i)
            assets.append(add(u"%1.jpg"_s.arg(i), 100 - i));
        for (const PHAsset &asset : assets) {
            store.setWanted({asset});
            QVERIFY(settle(store));
        }
        const auto kept = std::count_if(assets.cbegin(), assets.cend(), [&](const PHAsset &asset) {
            return store.thumbnail(asset).has_value();
        });
        QCOMPARE(kept, 20);
        QVERIFY(store.thumbnail(assets.last()));
    }

    void whatIsNoLongerWantedIsNotMade()
    {
        ThumbnailStore store(cache());
        store.setEdge(100);
        QList<PHAsset> assets;
        for (int i = 0; i < 60; ++i)
            assets.append(add(u"%1.jpg"_s.arg(i), 100 - i, sample::image({1500, 1000}, "jpeg")));
        QSignalSpy made(&store, &ThumbnailStore::ready);
        store.setWanted(assets);
        store.setWanted({assets.last()});
        QVERIFY(settle(store));
        QVERIFY(store.thumbnail(assets.last()));
        QCOMPARE_LT(made.size(), 10);
    }
};

int main(int argc, char **argv)
{
    if (argc > 1 && QString::fromLocal8Bit(argv[1]) == hangingProgram)
        return endWhileAWorkerHangs(argc, argv);
    QGuiApplication program(argc, argv);
    TestPhotoLibrary test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "tst_photo_library.moc"
