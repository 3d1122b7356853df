#include "platform/foundation/file_manager.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos_ui/image_grid_picker_controller.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "plugin/zelkam_mobile_single_image_picker.h"
#include "support/recording_call.h"
#include "support/sample_files.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

struct Kind
{
    const char *name;
    const char *command;
    QVariantMap arguments;
};

const QList<Kind> &kinds()
{
    static const auto document = [](bool several) {
        return QVariantMap{
            {u"extension"_s, u""_s}, {u"multiselect"_s, several}, {u"maxcount"_s, 1}};
    };
    static const QList<Kind> all{{"a file", "filePicker", document(false)},
                                 {"files", "filePicker", document(true)},
                                 {"a photo", "imagePicker", {}},
                                 {"photos", "imagePicker", {{u"multiselect"_s, true}}}};
    return all;
}

} // namespace

/// Several calls of the two picking commands, one soon after another.
class TestPickers : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir root;
    QString photo;
    std::unique_ptr<UIWindow> window;
    std::shared_ptr<UIViewController> page;
    std::shared_ptr<ZelkamMobileContentsPlugin> plugin;
    ZelkamMobileContentsPlugin *target = nullptr;

    std::shared_ptr<RecordingCall> call(int kind)
    {
        auto recording = std::make_shared<RecordingCall>(kinds().at(kind).arguments);
        QMetaObject::invokeMethod(target, kinds().at(kind).command,
                                  Q_ARG(zelkam::CallBackManagerPtr, recording));
        return recording;
    }

    /// The only screen over the page once nothing moves; null when there are more, or none.
    std::shared_ptr<UIViewController> onlyScreen()
    {
        std::shared_ptr<UIViewController> screen;
        (void)QTest::qWaitFor([&] {
            screen = page->presentedViewController();
            return screen && screen->isVisible() && !window->isInTransition();
        });
        QTest::qWait(10); // for one that should not come
        const bool isAlone = screen && screen == page->presentedViewController() &&
                             !screen->presentedViewController() && !window->isInTransition();
        return isAlone ? screen : nullptr;
    }

    static bool isOfKind(UIViewController *screen, int kind)
    {
        if (auto *documents = qobject_cast<UIDocumentPickerViewController *>(screen))
            return kind == (documents->allowsMultipleSelection ? 1 : 0);
        return kind == (qobject_cast<ZelkamMobileSingleImagePicker *>(screen) ? 2 : 3);
    }

    void answer(UIViewController *screen, bool isPicked)
    {
        const auto acceptOrCancel = [&](auto *picker, auto selectionShown) {
            QSignalSpy selected(picker, selectionShown);
            if (isPicked) {
                picker->showSelection({photo});
                QTRY_COMPARE(selected.size(), 1);
                picker->accept();
            } else {
                picker->cancel();
            }
        };
        if (auto *documents = qobject_cast<UIDocumentPickerViewController *>(screen))
            acceptOrCancel(documents, &UIDocumentPickerViewController::selectionShown);
        else if (auto *grid = qobject_cast<ImageGridPickerController *>(screen))
            acceptOrCancel(grid, &ImageGridPickerController::selectionShown);
        else if (auto *one = qobject_cast<ZelkamMobileSingleImagePicker *>(screen))
            isPicked ? one->imagePicker->pick(photo) : one->imagePicker->cancel();
    }

    /// That the one screen there is answers this call, once, and leaves nothing behind.
    void checkAnswer(int kind, const RecordingCall &newest, bool isPicked = false)
    {
        const auto screen = onlyScreen();
        QVERIFY(screen);
        QVERIFY(isOfKind(screen.get(), kind));
        QCOMPARE(newest.replies(), QStringList());
        answer(screen.get(), isPicked);
        QTRY_COMPARE(newest.replies().size(), 1);
        QCOMPARE(newest.replies().first() == u"success with data", isPicked);
        QTRY_VERIFY(!page->presentedViewController());
        QTest::qWait(10);
        QVERIFY(!page->presentedViewController());
        QCOMPARE(newest.replies().size(), 1);
    }

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(!setTemporaryDirectory(root.filePath(u"container"_s)));
        QVERIFY(QDir().mkpath(root.filePath(u"pictures"_s)));
        setPicturesDirectory(root.filePath(u"pictures"_s));
        photo = root.filePath(u"pictures/a.jpg"_s);
        QVERIFY(sample::write(photo, sample::image({60, 40}, "jpeg")));
    }
    void init()
    {
        setMotionReduced(true);
        window = std::make_unique<UIWindow>();
        page = std::make_shared<UIViewController>();
        window->setRootViewController(page);
        window->resize(390, 844);
        window->makeKeyAndVisible();
        plugin = makePlugin<ZelkamMobileContentsPlugin>();
        plugin->setViewController(page.get());
        target = plugin.get();
    }
    void cleanup()
    {
        plugin.reset();
        window.reset();
        page.reset();
    }

    void theOneThatIsThereAnswersTheNewestCall_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<QString>("moment");
        for (int first = 0; first < kinds().size(); ++first) {
            for (int second = 0; second < kinds().size(); ++second) {
                const auto row = [&](const char *moment) {
                    QTest::addRow("%s, then %s, %s", kinds().at(first).name,
                                  kinds().at(second).name, moment)
                        << first << second << QString::fromLatin1(moment);
                };
                row("in one tick");
                row("when it is up");
                if (second == (first + 2) % 4)
                    row("just before it answers");
                if (second == (first + 1) % 4) // these wait for a screen to slide
                    row("while it comes");
            }
        }
    }
    void theOneThatIsThereAnswersTheNewestCall()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(QString, moment);
        setMotionReduced(moment != u"while it comes");
        const auto older = call(first);
        if (moment == u"when it is up" || moment == u"just before it answers")
            QVERIFY(onlyScreen());
        else if (moment == u"while it comes")
            QTRY_VERIFY(window->isInTransition());
        const auto newer = call(second);
        if (moment == u"just before it answers")
            answer(page->presentedViewController().get(), false);
        else
            checkAnswer(first, *newer, (first + second) % 2 == 0);
        QTest::qWait(10);
        QTRY_VERIFY(!page->presentedViewController());
        QCOMPARE(newer->replies().size(), 1);
        QCOMPARE(older->replies(), QStringList());
        // And the next one works as if nothing had been.
        checkAnswer(second, *call(second));
    }

    void aCallFromAReplyGetsItsOwn_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<bool>("isPicked");
        QTest::addColumn<bool>("isMoving");
        for (int first = 0; first < kinds().size(); ++first) {
            for (int second = 0; second < kinds().size(); ++second)
                QTest::addRow("%s, then %s", kinds().at(first).name, kinds().at(second).name)
                    << first << second << (second % 2 == 0) << (first == second);
        }
    }
    void aCallFromAReplyGetsItsOwn()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(bool, isPicked);
        QFETCH(bool, isMoving);
        setMotionReduced(!isMoving);
        const auto one = call(first);
        const auto screen = onlyScreen();
        QVERIFY(screen);
        std::shared_ptr<RecordingCall> two;
        one->onReply = [&] { two = call(second); };
        answer(screen.get(), isPicked);
        QTRY_VERIFY(two);
        const auto three = call(3 - second);
        QTest::qWait(isMoving ? 150 : 0);
        const auto four = call(second);
        checkAnswer(second, *four, isPicked);
        for (const auto &older : {two, three})
            QCOMPARE(older->replies(), QStringList());
        QCOMPARE(one->replies().size(), 1);
    }

    void oneThatCouldNotComeIsForgotten_data()
    {
        QTest::addColumn<int>("kind");
        for (int kind = 0; kind < kinds().size(); ++kind)
            QTest::newRow(kinds().at(kind).name) << kind;
    }
    void oneThatCouldNotComeIsForgotten()
    {
        QFETCH(int, kind);
        const auto nowhere = std::make_shared<UIViewController>();
        plugin->setViewController(nowhere.get());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"in no window"_s));
        call(kind);
        QTest::qWait(10);
        plugin->setViewController(page.get());
        call(kind);
        QVERIFY(onlyScreen());
        page->dismiss(false); // by the host: nobody answers
        QTRY_VERIFY(!page->presentedViewController());
        checkAnswer(kind, *call(kind));
    }

    void worksHoweverItIsOwned_data()
    {
        QTest::addColumn<bool>("isShared");
        QTest::newRow("by its host alone") << false;
        QTest::newRow("by a shared pointer") << true;
    }
    void worksHoweverItIsOwned()
    {
        QFETCH(bool, isShared);
        auto shared = isShared ? std::make_shared<ZelkamMobileContentsPlugin>() : nullptr;
        auto alone = isShared ? nullptr : std::make_unique<ZelkamMobileContentsPlugin>();
        target = isShared ? shared.get() : alone.get();
        target->setViewController(page.get());
        for (int kind = 0; kind < kinds().size(); ++kind)
            checkAnswer(kind, *call(kind), true);
        const auto download = [this] {
            const QVariantMap nobody{{u"url"_s, u"http://127.0.0.1:1/"_s}};
            auto recording = std::make_shared<RecordingCall>(nobody);
            QMetaObject::invokeMethod(target, "fileDownload",
                                      Q_ARG(zelkam::CallBackManagerPtr, recording));
            return recording;
        };
        const auto whole = download();
        QTRY_COMPARE(whole->replies().size(), 1);

        // It may end while something of its own goes on.
        const auto picking = call(0);
        QVERIFY(onlyScreen());
        std::weak_ptr<RecordingCall> running = download();
        const auto waiting = std::make_shared<RecordingCall>(kinds().at(3).arguments);
        target->imagePicker(waiting);
        alone.reset();
        shared.reset();
        answer(page->presentedViewController().get(), true);
        QTRY_VERIFY(!page->presentedViewController());
        QTRY_VERIFY(running.expired());
        QTRY_COMPARE(waiting.use_count(), 1); // nobody holds it: its page hears that
    }
};

QTEST_MAIN(TestPickers)
#include "tst_pickers.moc"
