#include "platform/photos_ui/image_grid_picker_controller.h"
#include "plugin/plugin_on_screen.h"
#include "plugin/zelkam_mobile_single_image_picker.h"

#include <QStandardPaths>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

struct Kind
{
    const char *name;
    const char *command;
    QVariantMap arguments;
};

QVariantMap documents(bool several)
{
    return {{u"extension"_s, u""_s}, {u"multiselect"_s, several}, {u"maxcount"_s, 1}};
}

const QList<Kind> kinds{{"a file", "filePicker", documents(false)},
                        {"files", "filePicker", documents(true)},
                        {"a photo", "imagePicker", {}},
                        {"photos", "imagePicker", {{u"multiselect"_s, true}}}};

} // namespace

/// Several calls of the two picking commands, one soon after another.
class TestPickers : public PluginOnScreen
{
    Q_OBJECT

private:
    QString photo;

    std::shared_ptr<RecordingCall> call(int kind)
    {
        return PluginOnScreen::call(kinds.at(kind).command, kinds.at(kind).arguments);
    }
    /// A row for each two kinds of calls.
    static void addPairs(const std::function<void(int first, int second, const QByteArray &)> &add)
    {
        for (int first = 0; first < kinds.size(); ++first) {
            for (int second = 0; second < kinds.size(); ++second)
                add(first, second,
                    QByteArray(kinds.at(first).name) + ", then " + kinds.at(second).name);
        }
    }

    /// The only screen over the page once nothing moves; null when there are more, or none.
    std::shared_ptr<UIViewController> onlyScreen()
    {
        const auto screen = shown<UIViewController>();
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
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init()
    {
        begin();
        photo = write(u"pictures/a.jpg"_s, sample::image({60, 40}, "jpeg"));
    }
    void cleanup() { end(); }

    void theOneThatIsThereAnswersTheNewestCall_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<QString>("moment");
        addPairs([](int first, int second, const QByteArray &name) {
            const auto row = [&](const char *moment) {
                QTest::newRow((name + ", " + moment).constData())
                    << first << second << QString::fromLatin1(moment);
            };
            row("in one tick");
            row("when it is up");
            if (second == (first + 2) % 4)
                row("just before it answers");
            if (second == (first + 1) % 4) // these wait for a screen to slide
                row("while it comes");
        });
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
        addPairs([](int first, int second, const QByteArray &name) {
            QTest::newRow(name.constData()) << first << second;
        });
    }
    void aCallFromAReplyGetsItsOwn()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        const bool isPicked = second % 2 == 0;
        const bool isMoving = first == second;
        setMotionReduced(!isMoving);
        if (first == 3 && second == 0)
            write(u"pictures/a.jpg"_s, "no photo"); // the first one's reply is an error
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
        for (int kind = 0; kind < kinds.size(); ++kind)
            QTest::newRow(kinds.at(kind).name) << kind;
    }
    void oneThatCouldNotComeIsForgotten()
    {
        QFETCH(int, kind);
        plugin->setViewController(nullptr);
        const auto unseen = call(kind);
        QTest::qWait(10);
        QCOMPARE(unseen->replies(), QStringList());
        QVERIFY(!page->presentedViewController());
        const auto nowhere = std::make_shared<UIViewController>();
        plugin->setViewController(nowhere.get());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"in no window"_s));
        call(kind);
        QTest::qWait(10);
        plugin->setViewController(page.get());
        call(kind);
        QVERIFY(onlyScreen());
        page->dismiss(false); // by the host: nobody answers
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
        auto alone = isShared ? nullptr : std::make_unique<ZelkamMobileContentsPlugin>();
        if (!isShared) // a pointer that owns nothing
            plugin =
                std::shared_ptr<ZelkamMobileContentsPlugin>(std::shared_ptr<void>(), alone.get());
        plugin->setViewController(page.get());
        for (int kind = 0; kind < kinds.size(); ++kind)
            checkAnswer(kind, *call(kind), true);
        const auto download = [this] {
            const QVariantMap nobody{{u"url"_s, u"http://127.0.0.1:1/"_s}};
            return PluginOnScreen::call("fileDownload", nobody);
        };
        const auto whole = download();
        QTRY_COMPARE(whole->replies().size(), 1);

        // It may end while something of its own goes on.
        const auto picking = call(0);
        QVERIFY(onlyScreen());
        std::weak_ptr<RecordingCall> running = download();
        const auto waiting = std::make_shared<RecordingCall>(kinds.at(3).arguments);
        plugin->imagePicker(waiting);
        alone.reset();
        plugin.reset();
        answer(page->presentedViewController().get(), true);
        QTRY_VERIFY(!page->presentedViewController());
        QTRY_VERIFY(running.expired());
        QTRY_COMPARE(waiting.use_count(), 1); // nobody holds it: its page hears that
    }
};

QTEST_MAIN(TestPickers)
#include "tst_pickers.moc"
