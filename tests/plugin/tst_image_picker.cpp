#include "platform/foundation/coder.h"
#include "platform/images/heif_writer.h"
#include "platform/images/picture_comparison.h"
#include "platform/photos/ph_photo_library.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos/thumbnail_store.h"
#include "platform/photos_ui/camera_device.h"
#include "platform/photos_ui/camera_view.h"
#include "platform/photos_ui/image_grid_picker_controller.h"
#include "platform/photos_ui/photo_grid_view.h"
#include "platform/photos_ui/photo_library_view.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_document_picker_message.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "plugin/zelkam_mobile_single_image_picker.h"
#include "support/recording_call.h"
#include "support/sample_files.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>
#include <cstdio>
#include <limits>
#include <unistd.h>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

QByteArray encoded(const QImage &image, const char *format, int quality = -1)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.write(image);
    return buffer.data();
}

/// What a data URL holds; a null image when it is none of the MIME type.
QImage fromDataUrl(const QVariant &value, const QByteArray &mimeType = "image/jpeg")
{
    const QByteArray url = value.toByteArray();
    const QByteArray head = "data:" + mimeType + ";base64,";
    return url.startsWith(head) ? QImage::fromData(QByteArray::fromBase64(url.mid(head.size())))
                                : QImage();
}

QVariantMap several(QVariantMap more = {})
{
    more.insert(u"multiselect"_s, true);
    return more;
}

const QString noImage = u"error 2042: File picker error."_s;
const QString data = u"success with data"_s;

} // namespace

/// The command through the plug-in's meta-object, as a host calls it, with real files and screens.
class TestImagePicker : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<UIWindow> window;
    std::shared_ptr<UIViewController> page;
    std::shared_ptr<ZelkamMobileContentsPlugin> plugin;

    std::shared_ptr<RecordingCall> call(const std::optional<QVariantMap> &arguments)
    {
        auto recording = std::make_shared<RecordingCall>(arguments);
        QMetaObject::invokeMethod(plugin.get(), "imagePicker",
                                  Q_ARG(zelkam::CallBackManagerPtr, recording));
        return recording;
    }

    template<typename Screen>
    std::shared_ptr<Screen> shown()
    {
        std::shared_ptr<Screen> screen;
        const bool isThere = QTest::qWaitFor([&] {
            screen = std::dynamic_pointer_cast<Screen>(page->presentedViewController());
            return screen && screen->isVisible() && !window->isInTransition();
        });
        return isThere ? screen : nullptr;
    }

    bool allGone()
    {
        return QTest::qWaitFor([this] { return !page->presentedViewController(); });
    }

    /// A file of the pictures folder; the later one is the newer one.
    QString picture(const QString &name, const QByteArray &content)
    {
        const QString path = root->filePath(u"pictures/"_s + name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return path;
    }

    /// The replies to a pick of these files with these options; the last is waited for.
    std::shared_ptr<RecordingCall> pick(const QStringList &paths, const QVariantMap &options,
                                        qsizetype replies = 1)
    {
        const auto recording = call(options);
        const auto picker = shown<ImageGridPickerController>();
        if (!picker)
            return recording;
        QSignalSpy selected(picker.get(), &ImageGridPickerController::selectionShown);
        picker->showSelection(paths);
        if (selected.isEmpty())
            selected.wait();
        picker->accept();
        (void)QTest::qWaitFor([&] { return recording->replies().size() >= replies; });
        QTest::qWait(20); // what would be one too many
        return recording;
    }

    std::shared_ptr<RecordingCall> pickSingle(const QString &path)
    {
        const auto recording = call(QVariantMap());
        if (const auto screen = shown<ZelkamMobileSingleImagePicker>()) {
            screen->imagePicker->pick(path);
            (void)QTest::qWaitFor([&] { return !recording->replies().isEmpty(); });
        }
        return recording;
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        setMotionReduced(true);
        root = std::make_unique<QTemporaryDir>();
        QDir().mkpath(root->filePath(u"pictures"_s));
        setPicturesDirectory(root->filePath(u"pictures"_s));
        setVirtualCameraImage({});
        window = std::make_unique<UIWindow>();
        page = std::make_shared<UIViewController>();
        window->setRootViewController(page);
        window->resize(390, 844);
        window->makeKeyAndVisible();
        plugin = makePlugin<ZelkamMobileContentsPlugin>();
        plugin->setViewController(page.get());
    }

    void whichScreenOpens_data()
    {
        QTest::addColumn<QVariantMap>("options");
        QTest::addColumn<bool>("isSeveral");
        QTest::addColumn<bool>("isCamera");
        QTest::addColumn<qint64>("limit");
        QTest::newRow("nothing said") << QVariantMap() << false << false << qint64(0);
        QTest::newRow("the camera")
            << QVariantMap{{u"camera"_s, true}} << false << true << qint64(0);
        QTest::newRow("a text that says true")
            << QVariantMap{{u"multiselect"_s, u"true"_s}, {u"camera"_s, u"true"_s}} << false
            << false << qint64(0);
        QTest::newRow("a number that is true")
            << QVariantMap{{u"multiselect"_s, 1}, {u"camera"_s, 1}} << false << false << qint64(0);
        QTest::newRow("several") << several() << true << false << qint64(0);
        QTest::newRow("several with a camera tile")
            << several({{u"camera"_s, true}}) << true << true << qint64(0);
        QTest::newRow("a limit") << several({{u"maxcount"_s, 3LL}}) << true << false << qint64(3);
        QTest::newRow("a limit of another type")
            << several({{u"maxcount"_s, u"3"_s}}) << true << false << qint64(0);
        QTest::newRow("a limit with a fraction")
            << several({{u"maxcount"_s, 2.5}}) << true << false << qint64(0);
    }
    void whichScreenOpens()
    {
        QFETCH(QVariantMap, options);
        QFETCH(bool, isSeveral);
        QFETCH(bool, isCamera);
        QFETCH(qint64, limit);
        const auto recording = call(options);
        if (isSeveral) {
            const auto picker = shown<ImageGridPickerController>();
            QVERIFY(picker);
            QCOMPARE(picker->takePhotos, isCamera);
            QCOMPARE(picker->maxNumberOfSelections, limit);
            picker->cancel();
            QCOMPARE(recording->replies(), {u"error 2045: Image picker is canceled."_s});
        } else {
            const auto screen = shown<ZelkamMobileSingleImagePicker>();
            QVERIFY(screen);
            QCOMPARE(screen->imagePicker->cameraView() != nullptr, isCamera);
            QCOMPARE(plugin->currentImagePicker(), screen);
            // Esc reaches the screen, which has no say in it.
            QTest::keyClick(window.get(), Qt::Key_Escape);
            QCOMPARE(recording->replies(), {u"error 2041: File picker is canceled."_s});
            QVERIFY(!plugin->currentImagePicker());
        }
        QVERIFY(allGone());
    }

    void saysThatItLooksForPhotos()
    {
        const PhotoLibraryView view(false);
        QStringList said;
        for (const auto *part : view.findChildren<QWidget *>())
            said.append(part->accessibleName());
        QVERIFY(said.contains(u"Looking for photos…"_s));
    }

    void withoutArgumentsOrAPageNothingIsShown()
    {
        QCOMPARE(call(std::nullopt)->replies(), {u"error INVALID_PARAM"_s});
        plugin->setViewController(nullptr);
        const auto single = call(QVariantMap());
        const auto many = call(several());
        QTest::qWait(50);
        QVERIFY(!page->presentedViewController());
        QCOMPARE(single->replies() + many->replies(), QStringList());
    }

    void onePictureComesAsJpeg_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QImage>("expected");
        const QImage image = corners({96, 64});
        QTest::newRow("a JPEG") << u"a.jpg"_s << encoded(image, "jpeg", 95) << image;
        QTest::newRow("a PNG") << u"a.png"_s << encoded(image, "png") << image;
        QTest::newRow("a HEIC") << u"a.heic"_s << heic(image) << image;
        QTest::newRow("a text") << u"a.jpg"_s << QByteArray("no picture") << QImage();
        QTest::newRow("half of one") << u"a.png"_s << encoded(image, "png").chopped(60) << QImage();
    }
    void onePictureComesAsJpeg()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(QImage, expected);
        const auto recording = pickSingle(picture(name, content));
        if (expected.isNull()) {
            QCOMPARE(recording->replies(), {u"error UNKNOWN: Creating UIImage failed"_s});
        } else {
            QCOMPARE(recording->replies(), {data});
            const QVariantMap reply = recording->data().value(0).toMap();
            QCOMPARE(reply.keys(), {u"image"_s});
            QCOMPARE_LE(difference(fromDataUrl(reply.value(u"image"_s)), expected), 24);
        }
        QVERIFY(allGone());
        QVERIFY(!plugin->currentImagePicker());
    }

    void theCameraTakesOne()
    {
        const QImage scene = corners({120, 80});
        setVirtualCameraImage(picture(u"../scene.png"_s, encoded(scene, "png")));
        const auto recording = call(QVariantMap{{u"camera"_s, true}});
        const auto screen = shown<ZelkamMobileSingleImagePicker>();
        QVERIFY(screen);
        CameraView *camera = screen->imagePicker->cameraView();
        QTRY_COMPARE(camera->state(), CameraView::State::live);
        camera->takePhoto();
        QTRY_COMPARE(camera->state(), CameraView::State::review);
        camera->retake();
        QTRY_COMPARE(camera->state(), CameraView::State::live);
        screen->imagePicker->viewDidDisappear(false);
        camera->switchCamera();                                 // to the mirrored side
        QCOMPARE(camera->state(), CameraView::State::starting); // no frame comes unseen
        screen->imagePicker->viewDidAppear(false);
        QTRY_COMPARE(camera->state(), CameraView::State::live);
        camera->takePhoto();
        QTRY_COMPARE(camera->state(), CameraView::State::review);
        QCOMPARE(recording->replies(), QStringList());
        QTest::keyClick(window->focusWidget(), Qt::Key_Space);
        QTRY_COMPARE(recording->replies(), QStringList(data));
        const QVariant url = recording->data().value(0).toMap().value(u"image"_s);
        QCOMPARE_LE(difference(fromDataUrl(url), scene.mirrored(true, false)), 24);
        QVERIFY(allGone());
    }

    void withoutACameraThereIsCancel()
    {
        const auto recording = call(QVariantMap{{u"camera"_s, true}});
        const auto screen = shown<ZelkamMobileSingleImagePicker>();
        QVERIFY(screen);
        if (screen->imagePicker->cameraView()->state() != CameraView::State::unavailable)
            QSKIP("This machine has a camera.");
        screen->imagePicker->cameraView()->takePhoto(); // there is nothing to take one with
        screen->imagePicker->cancel();
        QCOMPARE(recording->replies(), {u"error 2041: File picker is canceled."_s});
        QVERIFY(allGone());
    }

    void severalComeInTheOrderOfTheirSelection()
    {
        QList<QImage> images;
        QStringList paths;
        for (int i = 0; i < 3; ++i) {
            images.append(corners({90 + 30 * i, 60}));
            paths.append(picture(u"%1.png"_s.arg(i), encoded(images.last(), "png")));
        }
        // The first takes longest: it is the largest by far.
        images[0] = corners({3000, 2000});
        picture(u"0.png"_s, encoded(images[0], "png"));
        const auto recording = pick(paths, several());
        QCOMPARE(recording->replies(), {data});
        const QVariantList list = recording->data().value(0).toList();
        QCOMPARE(list.size(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(difference(fromDataUrl(list.at(i), "image/png"), images.at(i)), 0);

        const auto single = pick({paths.at(1)}, several());
        QCOMPARE(single->data().value(0).toMap().keys(), {u"image"_s});
        QVERIFY(allGone());
    }

    void whatFailsAmongSeveral_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("replies");
        QTest::addColumn<int>("images");
        QTest::newRow("the first")
            << QStringList{u"bad"_s, u"1"_s, u"2"_s} << QStringList{noImage, data} << 2;
        QTest::newRow("the middle one")
            << QStringList{u"1"_s, u"bad"_s, u"2"_s} << QStringList{noImage, data} << 2;
        QTest::newRow("the last: no success ever")
            << QStringList{u"1"_s, u"2"_s, u"bad"_s} << QStringList{noImage} << 0;
        QTest::newRow("all but the last: one image is no list")
            << QStringList{u"bad"_s, u"gone"_s, u"1"_s} << QStringList{noImage, noImage, data} << 1;
        QTest::newRow("the only one") << QStringList{u"bad"_s} << QStringList{noImage} << 0;
    }
    void whatFailsAmongSeveral()
    {
        QFETCH(QStringList, names);
        QFETCH(QStringList, replies);
        QFETCH(int, images);
        QStringList paths;
        for (const QString &name : names)
            paths.append(picture(name + u".jpg"_s, name.size() == 1
                                                       ? sample::image({60, 40}, "jpeg")
                                                       : QByteArray("no picture")));
        const auto recording = pick(paths, several(), replies.size());
        QCOMPARE(recording->replies(), replies);
        const QVariant result = recording->data().value(0);
        QCOMPARE(images == 1 ? qsizetype(result.toMap().size()) : result.toList().size(), images);
    }

    void noneCanBePickedByCancelOnly()
    {
        const auto recording = call(several());
        const auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker);
        picker->accept();
        QTest::qWait(20);
        QCOMPARE(recording->replies(), QStringList());
        QVERIFY(page->presentedViewController());
        picker->cancel();
        QCOMPARE(recording->replies().size(), 1);
    }

    void whatIsBeingReadCanBeCancelled()
    {
        const QStringList paths{picture(u"bad.jpg"_s, "no picture"),
                                picture(u"a.jpg"_s, sample::image({3000, 2000}, "jpeg"))};
        const auto recording = call(several());
        const auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker);
        QTRY_VERIFY(PHPhotoLibrary::shared().isLoaded());
        picker->showSelection(paths);
        for (int times = 0; times < 2; ++times) // Enter twice is one Done
            QTest::keyClick(window->focusWidget(), Qt::Key_Return);
        QVERIFY(!picker->isBeingDismissed());
        QVERIFY(!picker->view()->findChild<PhotoGridView *>()->isEnabled());
        QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
        picker->cancel(); // once more
        QVERIFY(allGone());
        // Replies that were still to come would go to this call.
        QCOMPARE(pick({paths.last()}, several())->replies(), {data});
        QCOMPARE(recording->replies(), {u"error 2045: Image picker is canceled."_s});
        QVERIFY(allGone());
    }

    void imagesAreConvertedAsAsked_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QVariantMap>("options");
        QTest::addColumn<QSize>("size"); // empty: an error
        QTest::addColumn<int>("quality");
        const auto resize = [](const QVariant &width, const QVariant &height) {
            return QVariantMap{{u"resizeWidth"_s, width}, {u"resizeHeight"_s, height}};
        };
        const auto row = [](const char *name, const QString &file, const QVariantMap &options,
                            QSize size, int quality = 100) {
            QTest::newRow(name) << file << options << size << quality;
        };
        const QString jpeg = u"a.jpg"_s;
        const QSize own(96, 64);
        const double infinite = std::numeric_limits<double>::infinity();
        row("as it is", jpeg, {}, own);
        row("smaller, of another shape", jpeg, resize(20LL, 50LL), {20, 50});
        row("larger", jpeg, resize(200.0, 100LL), {200, 100});
        row("a fraction of a point", jpeg, resize(0.25, 10.5), {1, 11});
        row("no width", jpeg, {{u"resizeHeight"_s, 50}}, own);
        row("a height of nothing", jpeg, resize(100LL, 0LL), own);
        row("a negative width", jpeg, resize(-5LL, 10LL), own);
        row("texts", jpeg, resize(u"20"_s, u"50"_s), own);
        row("booleans", jpeg, resize(true, true), own);
        row("no numbers", jpeg, resize(std::nan(""), 10.0), own);
        row("endless", jpeg, resize(infinite, 10.0), {});
        row("100,000 in both directions", jpeg, resize(100'000LL, 100'000LL), {});
        row("100,000 in one direction", jpeg, resize(100'000LL, 10LL), {});
        row("half the quality", jpeg, {{u"resizeQuality"_s, 0.5}}, own, 50);
        row("more than all quality", jpeg, {{u"resizeQuality"_s, 1.5}}, own, 50);
        row("all quality as a whole number", jpeg, {{u"resizeQuality"_s, 1LL}}, own, 100);
        row("no quality", jpeg, {{u"resizeQuality"_s, 0LL}}, own, 0);
        row("less than no quality", jpeg, {{u"resizeQuality"_s, -3.0}}, own, 0);
        row("a quality in words", jpeg, {{u"resizeQuality"_s, u"0.5"_s}}, own, 100);
        row("a HEIC", u"a.heic"_s, {}, own);
        row("a HEIC, smaller", u"a.heic"_s, resize(48LL, 32LL), {48, 32});
        row("a drawing", u"a.svg"_s, resize(48LL, 32LL), {48, 32});
        row("a PNG, smaller", u"a.png"_s, resize(48LL, 32LL), {48, 32}, -1);
        row("a PNG by its content, not by its name", u"png.jpg"_s, {{u"resizeQuality"_s, 0.1}}, own,
            -1);
    }
    void imagesAreConvertedAsAsked()
    {
        QFETCH(QString, name);
        QFETCH(QVariantMap, options);
        QFETCH(QSize, size);
        QFETCH(int, quality); // -1: PNG
        const QImage image = corners({96, 64});
        const QByteArray content =
            name == u"a.heic"_s ? heic(image)
            : name == u"a.svg"_s
                ? QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='96' height='64'>"
                             "<rect width='48' height='32' fill='red'/>"
                             "<rect x='48' width='48' height='32' fill='#00ff00'/>"
                             "<rect x='48' y='32' width='48' height='32' fill='blue'/>"
                             "<rect y='32' width='48' height='32' fill='yellow'/></svg>")
                : encoded(image, name.contains(u"png") ? "png" : "jpeg", 100);
        const auto recording = pick({picture(name, content)}, several(options));
        if (size.isEmpty()) {
            QCOMPARE(recording->replies(), {noImage});
            return;
        }
        QCOMPARE(recording->replies(), {data});
        const QVariant url = recording->data().value(0).toMap().value(u"image"_s);
        const bool isPng = quality < 0;
        const QImage result = fromDataUrl(url, isPng ? "image/png" : "image/jpeg");
        QCOMPARE(result.size(), size);
        if (size.width() < 2)
            return;
        QImage expected = corners(size);
        if (name == u"a.svg"_s)
            expected = image.scaled(size);
        QCOMPARE_LE(difference(result, expected), isPng ? 8 : quality < 50 ? 255 : 24);
        if (isPng || size != own(image))
            return;
        // The same pixels at the same quality are the same file.
        const QImage decoded = UIImage::fromData(content)->toQImage();
        QCOMPARE(QByteArray::fromBase64(url.toByteArray().mid(23)),
                 encoded(decoded, "jpeg", quality));
    }
    static QSize own(const QImage &image) { return image.size(); }

    void whatIsTransparentLiesOnWhite()
    {
        QImage clear(40, 40, QImage::Format_ARGB32);
        clear.fill(QColor(0, 0, 255, 0));
        const auto recording = pick({picture(u"a.webp"_s, encoded(clear, "webp", 100))}, several());
        const QVariant url = recording->data().value(0).toMap().value(u"image"_s);
        QVERIFY(fromDataUrl(url).pixelColor(20, 20).lightness() > 250);
        const auto png = pick({picture(u"a.png"_s, encoded(clear, "png"))}, several());
        const QVariant kept = png->data().value(0).toMap().value(u"image"_s);
        QCOMPARE(fromDataUrl(kept, "image/png").pixelColor(20, 20).alpha(), 0);
    }

    void aLimitIsKept()
    {
        QStringList paths;
        for (int i = 0; i < 4; ++i)
            paths.append(picture(u"%1.jpg"_s.arg(i), sample::image({60, 40}, "jpeg")));
        QCOMPARE(pick(paths, several({{u"maxcount"_s, 2LL}}))->data().value(0).toList().size(), 2);
        for (const qint64 none : {0LL, -1LL})
            QCOMPARE(pick(paths, several({{u"maxcount"_s, none}}))->data().value(0).toList().size(),
                     4);
    }

    void theGridFindsItsPhoto_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<int>("current");
        // Three columns, of which two whole rows are in view.
        const auto row = [](const char *name, const QList<int> &keys, int current,
                            Qt::LayoutDirection direction = Qt::LeftToRight) {
            QTest::newRow(name) << direction << keys << current;
        };
        row("right and down", {Qt::Key_Home, Qt::Key_Right, Qt::Key_Down}, 4);
        row("a page down", {Qt::Key_Home, Qt::Key_PageDown}, 6);
        row("up from the end", {Qt::Key_End, Qt::Key_Up}, 26);
        row("a page up", {Qt::Key_End, Qt::Key_PageUp}, 23);
        row("from right to left", {Qt::Key_Home, Qt::Key_Left, Qt::Key_Left}, 2, Qt::RightToLeft);
    }
    void theGridFindsItsPhoto()
    {
        QFETCH(Qt::LayoutDirection, direction);
        QFETCH(QList<int>, keys);
        QFETCH(int, current);
        ThumbnailStore store(ThumbnailDiskCache(root->filePath(u"cache"_s)));
        PhotoGridView grid(store);
        QList<PHAsset> assets;
        for (int i = 0; i < 30; ++i)
            assets.append(PHAsset(u"/none/%1"_s.arg(i), 0, 0));
        grid.setLayoutDirection(direction);
        grid.setAssets(assets);
        grid.resize(390, 300);
        grid.show();
        for (const int key : keys)
            QTest::keyClick(&grid, Qt::Key(key));
        QCOMPARE(grid.accessibleDescription(), QString::number(current));
        grid.setSelection({assets.at(3), assets.at(current)});
        QCOMPARE(grid.accessibleDescription(), u"%1, selected as number 2"_s.arg(current));

        QSignalSpy tapped(&grid, &PhotoGridView::tapped);
        QTest::keyClick(&grid, Qt::Key_Home);
        QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, {20, 20});
        QTest::mouseMove(grid.viewport(), {200, 20});
        QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, {20, 20}); // it was elsewhere
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {360, 20});
        QCOMPARE(tapped.size(), 1);
        QCOMPARE(tapped.first().first().value<PHAsset>(),
                 assets.at(direction == Qt::LeftToRight ? 2 : 0));
        grid.setHasCameraTile(true);
        grid.scrollTo(assets.at(20));
        QCOMPARE(grid.accessibleDescription(), u"20"_s);
    }

    void theHandlersHearWhatBecomesOfTheSelection()
    {
        QStringList paths;
        for (const QString &name : {u"a.jpg"_s, u"b.jpg"_s, u"c.jpg"_s})
            paths.append(picture(name, sample::image({60, 40}, "jpeg")));
        const auto picker = std::make_shared<ImageGridPickerController>();
        QStringList events;
        ImageGridPickerController::Handlers handlers;
        handlers.select = [&](const PHAsset &asset) { events.append(u"+"_s + asset.fileName()); };
        handlers.deselect = [&](const PHAsset &asset) { events.append(u"-"_s + asset.fileName()); };
        handlers.selectLimitReached = [&](qint64 limit) { events.append(QString::number(limit)); };
        picker->maxNumberOfSelections = 2;
        picker->presentFrom(*page, false, handlers);
        QVERIFY(shown<ImageGridPickerController>());
        QTRY_VERIFY(PHPhotoLibrary::shared().assets().size() == 3);
        picker->showSelection(paths + QStringList(paths.first()));
        const auto texts = [&picker] {
            QStringList names;
            for (const QWidget *each : picker->view()->findChildren<QWidget *>())
                names.append(each->isVisible() ? each->accessibleName() : QString());
            return names;
        };
        QVERIFY(texts().contains(u"1 of 2 selected"_s));
        QVERIFY(texts().contains(u"You can select up to 2 photo(s)."_s));
        QVERIFY(QFile::remove(paths.at(1)));
        const QStringList expected{u"+a.jpg"_s, u"+b.jpg"_s, u"2"_s, u"-a.jpg"_s, u"-b.jpg"_s};
        QTRY_COMPARE(events, expected);
        QTRY_VERIFY(!texts().contains(u"You can select up to 2 photo(s)."_s));
    }

    void anEmptyLibrarySaysWhy()
    {
        call(several());
        const auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker);
        const auto *message = picker->view()->findChild<DocumentPickerMessage *>();
        QTRY_COMPARE(message->accessibleName(), u"No photos yet"_s);
        QVERIFY(QDir(root->filePath(u"pictures"_s)).removeRecursively());
        QTRY_COMPARE(message->accessibleName(), u"There is no pictures folder"_s);
    }

    void anEmptyLibraryHasACameraTile()
    {
        PHPhotoLibrary::shared().open();
        QTRY_VERIFY(PHPhotoLibrary::shared().isLoaded());
        call(several({{u"camera"_s, true}}));
        const auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker && picker->view()->findChild<PhotoGridView *>()->isVisible());
    }

    void aPickThatWasCancelledIsNotTold()
    {
        const QString path = picture(u"a.jpg"_s, sample::image({60, 40}, "jpeg"));
        const auto recording = call(QVariantMap());
        const auto screen = shown<ZelkamMobileSingleImagePicker>(); // kept beyond its end
        QVERIFY(screen);
        screen->imagePicker->pick(path);
        screen->imagePicker->cancel();
        QVERIFY(allGone());
        QTest::qWait(100); // for what would be one too many
        QCOMPARE(recording->replies(), {u"error 2041: File picker is canceled."_s});
    }

    void aFullSelectionTakesNoFurtherPhoto()
    {
        const QStringList paths{picture(u"a.jpg"_s, sample::image({60, 40}, "jpeg")),
                                picture(u"b.jpg"_s, sample::image({60, 40}, "jpeg"))};
        call(several({{u"camera"_s, true}, {u"maxcount"_s, 1LL}}));
        const auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker);
        QTRY_VERIFY(PHPhotoLibrary::shared().isLoaded());
        picker->showSelection(paths); // the selection moves to the second
        QCOMPARE(picker->selection().size(), 1);
        QCOMPARE(picker->selection().first().filePath(), paths.last());
        QWidget *tile = picker->view()->findChild<PhotoGridView *>()->viewport();
        QTest::mouseClick(tile, Qt::LeftButton, {}, {20, 20});
        picker->openCamera();
        QVERIFY(!picker->presentedViewController());
        const QImage off = tile->grab({0, 0, 90, 90}).toImage();
        picker->showSelection({paths.last()});
        QVERIFY(tile->grab({0, 0, 90, 90}).toImage() != off);
        QTest::mouseClick(tile, Qt::LeftButton, {}, {20, 20});
        QVERIFY(picker->presentedViewController());
    }

    void aTakenPhotoJoinsTheLibraryAndTheSelection()
    {
        setVirtualCameraImage(picture(u"../scene.png"_s, encoded(corners({120, 80}), "png")));
        picture(u"old.jpg"_s, sample::image({60, 40}, "jpeg"));
        const auto recording = call(several({{u"camera"_s, true}}));
        const auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker);
        picker->openCamera();
        std::shared_ptr<UIImagePickerController> camera;
        QTRY_VERIFY((camera = std::dynamic_pointer_cast<UIImagePickerController>(
                         picker->presentedViewController())) &&
                    camera->cameraView()->state() == CameraView::State::live);
        camera->cameraView()->takePhoto();
        QTRY_COMPARE(camera->cameraView()->state(), CameraView::State::review);
        camera->cameraView()->usePhoto();
        QTRY_COMPARE(picker->selection().size(), 1);
        QTRY_VERIFY(!picker->presentedViewController());
        QTRY_COMPARE(PHPhotoLibrary::shared().assets().size(), 2);
        QCOMPARE(PHPhotoLibrary::shared().assets().first(), picker->selection().first());
        picker->accept();
        QTRY_COMPARE(recording->replies(), QStringList(data));
        QVERIFY(allGone());
    }

    void theScreenFollowsItsLifeCycle()
    {
        const auto screen = std::make_shared<ZelkamMobileSingleImagePicker>();
        page->present(screen, false);
        QTRY_VERIFY(screen->isVisible());
        screen->sourceType = UIImagePickerControllerSourceType::camera; // too late
        QVERIFY(!screen->imagePicker->cameraView());
        QWidget *embedded = screen->imagePicker->view();
        QCOMPARE(embedded->parentWidget(), screen->view());
        window->resize(800, 600);
        QTRY_COMPARE(embedded->size(), screen->view()->size());

        // Covered by another screen and seen again.
        const auto cover = std::make_shared<UIViewController>();
        screen->present(cover, false);
        QTRY_VERIFY(cover->isVisible());
        cover->dismiss(false);
        QTRY_VERIFY(!screen->presentedViewController());
        screen->viewDidAppear(false);
        QCOMPARE(screen->children().size(), 1);
        QCOMPARE(screen->imagePicker->view(), embedded);
        QVERIFY(embedded->isVisible());
    }

    void theEndOfTheScreenIsWritten()
    {
        auto screen = std::make_shared<ZelkamMobileSingleImagePicker>(
            NSCoder({{u"UITitle"_s, u"Title"_s}, {u"UINibName"_s, u"Nib"_s}}));
        QCOMPARE(screen->title() + screen->nibName().value_or(u""_s), u"TitleNib"_s);
        QCOMPARE(screen->sourceType, UIImagePickerControllerSourceType::photoLibrary);
        screen->didReceiveMemoryWarning();
        const auto picker = screen->imagePicker;
        screen->addChild(picker);
        QTemporaryFile output;
        QVERIFY(output.open());
        std::fflush(stdout);
        const int console = ::dup(STDOUT_FILENO);
        ::dup2(output.handle(), STDOUT_FILENO);
        screen.reset();
        ::dup2(console, STDOUT_FILENO);
        ::close(console);
        QVERIFY(output.seek(0));
        const QByteArray lines = output.readAll();
        QVERIFY2(lines.startsWith("dealloc ") && lines.count('\n') == 1, lines.constData());
        QVERIFY(!picker->parentViewController());
    }

    void cleanup()
    {
        plugin.reset();
        window.reset();
        page.reset();
    }
};

QTEST_MAIN(TestImagePicker)
#include "tst_image_picker.moc"
