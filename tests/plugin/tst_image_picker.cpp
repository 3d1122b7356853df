#include "platform/foundation/coder.h"
#include "platform/images/image_representation.h"
#include "platform/images/picture_comparison.h"
#include "platform/photos/ph_photo_library.h"
#include "platform/photos/thumbnail_store.h"
#include "platform/photos_ui/camera_device.h"
#include "platform/photos_ui/camera_view.h"
#include "platform/photos_ui/image_grid_picker_controller.h"
#include "platform/photos_ui/photo_grid_view.h"
#include "platform/photos_ui/photo_library_view.h"
#include "platform/ui/ui_document_picker_message.h"
#include "plugin/plugin_on_screen.h"
#include "plugin/zelkam_mobile_single_image_picker.h"
#include "support/captured_output.h"
#include "support/data_table.h"

#include <QStandardPaths>

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

/// A file of the kind that its name says, or of no kind at all.
QByteArray fileOf(const QImage &image, const QString &name)
{
    if (name.startsWith(u"bad"))
        return "no picture";
    if (name.endsWith(u"heic"))
        return dataFile(u"heif/corners.heic"_s); // 96 by 64
    if (name.endsWith(u"svg"))
        return "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 2 2' "
               "preserveAspectRatio='none'"
               " width='96' height='64'><rect width='1' height='1' fill='red'/>"
               "<rect x='1' width='1' height='1' fill='#00ff00'/>"
               "<rect x='1' y='1' width='1' height='1' fill='blue'/>"
               "<rect y='1' width='1' height='1' fill='yellow'/></svg>";
    return encoded(image, name.contains(u"png") ? "png" : "jpeg", 100);
}

/// The image of a reply; a null image when it is none of the MIME type.
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

const QString data = u"success with data"_s;

} // namespace

/// The command with real files and screens.
class TestImagePicker : public PluginOnScreen
{
    Q_OBJECT

private:
    std::shared_ptr<RecordingCall> call(const std::optional<QVariantMap> &arguments)
    {
        return PluginOnScreen::call("imagePicker", arguments);
    }

    /// A file of the pictures folder; the later one is the newer one.
    QString picture(const QString &name, const QImage &image = corners({60, 40}))
    {
        return write(u"pictures/"_s + name, fileOf(image, name));
    }
    QString scene(const QImage &image) { return write(u"scene.png"_s, encoded(image, "png")); }

    static QVariant imageOf(const RecordingCall &recording)
    {
        return recording.data().value(0).toMap().value(u"image"_s);
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

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init()
    {
        begin();
        setVirtualCameraImage({});
    }
    void cleanup() { end(); }

    void whichScreenOpens_data() { addRows({"plugin/image_picker.json"}); }
    void whichScreenOpens()
    {
        const Row row;
        const auto recording = call(row.map("options"));
        if (row.is("several")) {
            const auto picker = shown<ImageGridPickerController>();
            QVERIFY(picker);
            QCOMPARE(picker->takePhotos, row.is("camera"));
            QCOMPARE(picker->maxNumberOfSelections, row.number("limit"));
            picker->accept(); // of nothing, which only a cancel ends
            QTest::qWait(10);
            QCOMPARE(recording->replies(), QStringList());
            QVERIFY(page->presentedViewController());
            picker->cancel();
            QCOMPARE(recording->replies(), {u"error 2045: Image picker is canceled."_s});
        } else {
            const auto screen = shown<ZelkamMobileSingleImagePicker>();
            QVERIFY(screen);
            QCOMPARE(screen->imagePicker->cameraView() != nullptr, row.is("camera"));
            QCOMPARE(plugin->currentImagePicker(), screen);
            if (CameraView *camera = screen->imagePicker->cameraView())
                camera->takePhoto(); // there is no camera to take one with
            // Esc reaches the screen, which has no say in it.
            QTest::keyClick(window.get(), Qt::Key_Escape);
            QCOMPARE(recording->replies(), {u"error 2041: File picker is canceled."_s});
            QVERIFY(!plugin->currentImagePicker());
        }
        QVERIFY(allGone());
    }

    void withoutArgumentsNothingIsShown()
    {
        QCOMPARE(call(std::nullopt)->replies(), {u"error INVALID_PARAM"_s});
        QTest::qWait(10);
        QVERIFY(!page->presentedViewController());
    }

    void onePictureComesAsJpeg_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u"a.jpg"_s, u"a.png"_s, u"a.heic"_s, u"bad.jpg"_s})
            QTest::newRow(qPrintable(name)) << name;
    }
    void onePictureComesAsJpeg()
    {
        QFETCH(QString, name);
        const QImage image = corners({96, 64});
        const QString path = picture(name, image);
        const auto recording = call(QVariantMap());
        const auto screen = shown<ZelkamMobileSingleImagePicker>();
        QVERIFY(screen);
        screen->imagePicker->pick(path);
        QTRY_COMPARE(recording->replies().size(), 1);
        if (name.startsWith(u"bad")) {
            QCOMPARE(recording->replies(), {u"error UNKNOWN: Creating UIImage failed"_s});
        } else {
            QCOMPARE(recording->data().value(0).toMap().keys(), {u"image"_s});
            QCOMPARE_LE(difference(fromDataUrl(imageOf(*recording)), image), 24);
        }
        QVERIFY(allGone());
        QVERIFY(!plugin->currentImagePicker());
    }

    void theCameraTakesOne()
    {
        const QImage seen = corners({120, 80});
        setVirtualCameraImage(scene(seen));
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
        QCOMPARE_LE(difference(fromDataUrl(imageOf(*recording)), seen.mirrored(true, false)), 24);
        QVERIFY(allGone());
    }

    void whatComesOfSeveral_data() { addRows({"plugin/image_picker.json"}); }
    void whatComesOfSeveral()
    {
        const Row row;
        const auto imageNamed = [](const QString &name) {
            // The large one takes longest by far.
            return corners(name.startsWith(u"large") ? QSize(3000, 2000)
                                                     : QSize(30 * (1 + name.left(1).toInt()), 60));
        };
        QStringList paths;
        for (const QString &name : row.texts("files"))
            paths.append(picture(name, imageNamed(name)));
        const QStringList names = row.texts("images");
        QStringList replies(row.number("errors"), u"error 2042: File picker error."_s);
        if (!names.isEmpty())
            replies.append(data);
        const auto recording = pick(paths, several(row.map("options")), replies.size());
        QCOMPARE(recording->replies(), replies);
        const QVariant result = recording->data().value(0);
        const QVariantList urls =
            names.size() == 1 ? QVariantList{imageOf(*recording)} : result.toList();
        QCOMPARE(urls.size(), names.size());
        for (qsizetype i = 0; i < names.size(); ++i) {
            const bool isPng = names.at(i).endsWith(u"png");
            const QImage image = fromDataUrl(urls.at(i), isPng ? "image/png" : "image/jpeg");
            QCOMPARE_LE(difference(image, imageNamed(names.at(i))), isPng ? 0 : 24);
        }
        QVERIFY(allGone());
    }

    void whatIsBeingReadCanBeCancelled()
    {
        const QStringList paths{picture(u"bad.jpg"_s), picture(u"a.jpg"_s, corners({3000, 2000}))};
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
        addRows({"plugin/image_picker.json"});
        const auto row = [](const char *name, double width, const QJsonArray &size) {
            const QJsonObject options{{u"resizeWidth"_s, width}, {u"resizeHeight"_s, 10}};
            QTest::newRow(name) << QJsonObject{{u"options"_s, options}, {u"size"_s, size}};
        };
        row("no number", qQNaN(), {96, 64});
        row("endless", qInf(), {});
    }
    void imagesAreConvertedAsAsked()
    {
        const Row row;
        const QImage image = corners({96, 64});
        const QString name = row["file"].toString(u"a.jpg"_s);
        const QString path = picture(name, image);
        const auto recording = pick({path}, several(row.map("options")));
        const QJsonArray edges = row["size"].toArray();
        if (edges.isEmpty()) {
            QCOMPARE(recording->replies(), {u"error 2042: File picker error."_s});
            return;
        }
        QCOMPARE(recording->replies(), {data});
        const QVariant url = imageOf(*recording);
        const bool isPng = name.contains(u"png");
        const int quality = row["quality"].toInt(100);
        const QImage result = fromDataUrl(url, isPng ? "image/png" : "image/jpeg");
        const QSize size(edges[0].toInt(), edges[1].toInt());
        QCOMPARE(result.size(), size);
        if (size.width() < 2)
            return;
        QCOMPARE_LE(difference(result, corners(size)), isPng ? 8 : quality < 50 ? 255 : 24);
        if (isPng || size != image.size())
            return;
        // The same pixels at the same quality are the same file.
        const auto decoded = UIImage::fromData(fileOf(image, name));
        QCOMPARE(QByteArray::fromBase64(url.toByteArray().mid(23)),
                 UIImageJPEGRepresentation(*decoded, quality / 100.0).value());
    }

    // Three columns, of which two whole rows are in view.
    void theGridFindsItsPhoto_data() { addRows({"plugin/image_picker.json"}); }
    void theGridFindsItsPhoto()
    {
        const Row row;
        const int current = row.number("current");
        const bool isRightToLeft = row.is("isRightToLeft");
        ThumbnailStore store(ThumbnailDiskCache(root->filePath(u"cache"_s)));
        PhotoGridView grid(store);
        QList<PHAsset> assets;
        for (int i = 0; i < 30; ++i)
            assets.append(PHAsset(u"/none/%1"_s.arg(i), 0, 0));
        grid.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
        grid.setAssets(assets);
        grid.resize(390, 300);
        grid.show();
        for (const QString &key : row.texts("keys"))
            QTest::keyClick(&grid, QKeySequence(key)[0].key());
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
        QCOMPARE(tapped.first().first().value<PHAsset>(), assets.at(isRightToLeft ? 0 : 2));
        grid.setHasCameraTile(true);
        grid.scrollTo(assets.at(20));
        QCOMPARE(grid.accessibleDescription(), u"20"_s);
    }

    void theHandlersHearWhatBecomesOfTheSelection()
    {
        QStringList paths;
        for (const QString &name : {u"a.jpg"_s, u"b.jpg"_s, u"c.jpg"_s})
            paths.append(picture(name));
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

    void aLibraryWithoutPhotosSaysWhy()
    {
        const PhotoLibraryView looking(false);
        QStringList said;
        for (const auto *part : looking.findChildren<QWidget *>())
            said.append(part->accessibleName());
        QVERIFY(said.contains(u"Looking for photos…"_s));

        auto recording = call(several());
        auto picker = shown<ImageGridPickerController>();
        QVERIFY(picker);
        const auto *message = picker->view()->findChild<DocumentPickerMessage *>();
        QTRY_COMPARE(message->accessibleName(), u"No photos yet"_s);
        QVERIFY(QDir(root->filePath(u"pictures"_s)).removeRecursively());
        QTRY_COMPARE(message->accessibleName(), u"There is no pictures folder"_s);
        picker->cancel();
        QVERIFY(allGone());

        recording = call(several({{u"camera"_s, true}}));
        picker = shown<ImageGridPickerController>(); // the camera's tile is there instead
        QVERIFY(picker && picker->view()->findChild<PhotoGridView *>()->isVisible());
    }

    void aPickThatWasCancelledIsNotTold()
    {
        const QString path = picture(u"a.jpg"_s);
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
        const QStringList paths{picture(u"a.jpg"_s), picture(u"b.jpg"_s)};
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
        const auto other = [tile] { return tile->grab().toImage().pixelColor(280, 20); };
        QTRY_VERIFY(other().saturation() > 200); // not dimmed, as the next tap selects it
        const QImage off = tile->grab({0, 0, 90, 90}).toImage();
        picker->showSelection({paths.last()});
        QVERIFY(tile->grab({0, 0, 90, 90}).toImage() != off);
        QTest::mouseClick(tile, Qt::LeftButton, {}, {20, 20});
        QVERIFY(picker->presentedViewController());
    }

    void aTakenPhotoJoinsTheLibraryAndTheSelection()
    {
        setVirtualCameraImage(scene(corners({120, 80})));
        picture(u"old.jpg"_s);
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
        CapturedOutput output;
        screen.reset();
        const QByteArray lines = output.read();
        QVERIFY2(lines.startsWith("dealloc ") && lines.count('\n') == 1, lines.constData());
        QVERIFY(!picker->parentViewController());
    }
};

QTEST_MAIN(TestImagePicker)
#include "tst_image_picker.moc"
