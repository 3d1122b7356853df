#include "platform/foundation/bundle.h"
#include "platform/ui/document_browser.h"
#include "platform/ui/file_saving.h"
#include "platform/ui/system_activities.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_navigation_bar.h"
#include "support/cut_texts.h"
#include "support/data_table.h"
#include "support/sample_files.h"
#include "support/screen_test.h"
#include "toast/toast_host.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QListView>
#include <QMimeData>
#include <QTemporaryDir>
#include <csignal>
#include <sys/resource.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

class OwnActivity : public UIActivity
{
public:
    QString activityType() const override { return u"own"_s; }
    QString activityTitle() const override { return u"Own"_s; }
    QString activityIconName() const override { return u"list-add"_s; }
    bool canPerform(const QList<URL> &items) const override { return items.size() == 1; }
    void perform(const QList<URL> &, QWidget *, Done done) override { done(true); }
};

} // namespace

class ShareTest : public ScreenTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        installTranslations(QLocale::c());
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"); // no file manager of the desktop
    }
    void init()
    {
        UIDevice::current().setUserInterfaceIdiom(UIUserInterfaceIdiom::phone);
        m_folder = std::make_unique<QTemporaryDir>();
        m_file = m_folder->filePath(u"naïve & name.txt"_s);
        QVERIFY(sample::write(m_file, QByteArray("content\n").repeated(300'000)));
        m_outcome.clear();
        openWindow();
    }
    void cleanup() { closeWindow(); }

    void closingTheSheetIsNoActivity_data()
    {
        test::addCases({"by Cancel", "by a tap beside it", "by Esc", "but not by a tap inside"});
    }
    void closingTheSheetIsNoActivity()
    {
        QFETCH(QString, what);
        present();
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, {}, QString(), true);
        QCoreApplication::sendEvent(window.get(), &held);
        QVERIFY(!m_sheet->isBeingDismissed());
        if (what == u"by Cancel")
            button(u"Cancel"_s)->click();
        else if (what == u"by Esc")
            QTest::keyClick(window.get(), Qt::Key_Escape);
        else
            QTest::mouseClick(m_sheet->view(), Qt::LeftButton, {},
                              {195, what == u"but not by a tap inside" ? 520 : 60});
        if (what == u"but not by a tap inside") {
            QTest::qWait(30);
            QVERIFY(page->presentedViewController());
            QCOMPARE(m_outcome, QString());
            return;
        }
        QTRY_COMPARE(m_outcome, u"."_s);
        QVERIFY(!page->presentedViewController());
    }

    void theFileIsCopiedToTheClipboard()
    {
        present();
        button(u"Copy File"_s)->click();
        QTRY_COMPARE(m_outcome, u"copy!"_s);
        const QMimeData *data = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(data->text(), m_file);
        QCOMPARE(data->urls(), QList<QUrl>{QUrl::fromLocalFile(m_file)});
        QCOMPARE(data->data(u"x-special/gnome-copied-files"_s),
                 "copy\n" + QUrl::fromLocalFile(m_file).toEncoded());
        QCOMPARE(toast(), u"Copied"_s);
    }

    void aCopyIsSavedByKeysAlone()
    {
        save();
        QTest::keyClicks(window->focusWidget(), u"copy"_s); // its extension stays
        press(Qt::Key_Return);
        QVERIFY(!button(u"Save"_s)->isEnabled());
        QTRY_COMPARE(m_outcome, u"save-copy!"_s);
        QCOMPARE(DocumentBrowser::firstFolder(), m_folder->path()); // for the next one
        QCOMPARE(contents(u"copy.txt"_s), contents(u"naïve & name.txt"_s));
        QVERIFY(QFile::permissions(m_folder->filePath(u"copy.txt"_s)) & QFile::ReadOther);
        QCOMPARE(toast(), u"Saved to “%1”"_s.arg(QDir(m_folder->path()).dirName()));
    }

    void whatWasThereIsReplacedOnlyByAYes()
    {
        QVERIFY(sample::write(m_folder->filePath(u"old.txt"_s), "old"));
        QVERIFY(QFile::link(m_folder->filePath(u"old.txt"_s), m_folder->filePath(u"link.txt"_s)));
        save(u"link.txt"_s);
        button(u"Save"_s)->click();
        QTRY_VERIFY(top() != m_save && !window->isInTransition());
        press(Qt::Key_Escape);
        QTRY_VERIFY(isOnTop(m_save));
        QCOMPARE(contents(u"link.txt"_s), QByteArray("old"));
        QCOMPARE(window->focusWidget(), field(u"Name"_s));
        press(Qt::Key_Return);
        QTRY_VERIFY(top() != m_save && !window->isInTransition());
        QCOMPARE(top()->accessibleDescription(), u"Already in this folder"_s);
        press(Qt::Key_Return);
        QTRY_COMPARE(m_outcome, u"save-copy!"_s);
        QCOMPARE(contents(u"link.txt"_s), contents(u"naïve & name.txt"_s));
        QCOMPARE(contents(u"old.txt"_s), QByteArray("old")); // a link is not followed
    }

    void saysWhatIsWrongWithAName_data() { test::addRows({"ui/share.json"}); }
    void saysWhatIsWrongWithAName()
    {
        const test::Row row;
        QVERIFY(QDir(m_folder->path()).mkpath(u"folder"_s));
        save();
        const QString name = row.text("field");
        if (name == u"New Folder")
            button(name)->click();
        if (row["folder"].isString())
            browser()->openFolder(QDir(m_folder->path()).filePath(row.text("folder")));
        field(name)->setText(row.text("text"));
        press(Qt::Key_Return);
        QTRY_COMPARE(field(name)->accessibleDescription(), row.text("problem"));
        QCOMPARE(items(), QStringList({u"folder"_s, u"naïve & name.txt"_s}));
        field(name)->insert(u"x"_s);
        QCOMPARE(field(name)->accessibleDescription(), QString());
        press(Qt::Key_Escape);
        if (name == u"New Folder") {
            QVERIFY(button(name)->isVisible()); // the row only
            press(Qt::Key_Escape);
        }
        QTRY_COMPARE(m_outcome, u"save-copy."_s);
    }

    void whatTheDiskRefusesIsSaid()
    {
        save(u"big.txt"_s);
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit before = {};
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small = {1'000'000, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        press(Qt::Key_Return);
        QTRY_COMPARE(field(u"Name"_s)->accessibleDescription(),
                     u"The file is too large for this drive."_s);
        ::setrlimit(RLIMIT_FSIZE, &before);
        QCOMPARE(items(), QStringList(u"naïve & name.txt"_s));
        QCOMPARE(savingProblem({ENOSPC, std::generic_category()}),
                 u"There is not enough room left."_s);
    }

    void aCancelledCopyLeavesNothing()
    {
        const auto file = RegularFile::open(m_file);
        QCOMPARE(saveCopy(*file, m_folder->path(), u"a"_s, OlderFile::stays, true),
                 std::make_error_code(std::errc::operation_canceled));
        QCOMPARE(items(), QStringList(u"naïve & name.txt"_s));
    }

    void aFolderIsMadeOnTheWay()
    {
        const QString name(85, u'한'); // as long as a name may be
        save(name);
        button(u"New Folder"_s)->click();
        field(u"New Folder"_s)->setText(u"new"_s);
        button(u"Create"_s)->click();
        QTRY_COMPARE(browser()->folder(), m_folder->filePath(u"new"_s));
        button(u"Save"_s)->click();
        QTRY_COMPARE(m_outcome, u"save-copy!"_s);
        QVERIFY(QFile::exists(m_folder->filePath(u"new/"_s + name)));
    }

    void namesCannotLie()
    {
        const QString folder = m_folder->filePath(u"\u202Ea\u05D0"_s);
        m_file = folder + u"/photo_\u202Egpj.\u05D0"_s;
        QVERIFY(QDir().mkpath(folder) && sample::write(m_file, "content\n"));
        QVERIFY(sample::write(folder + u"/photo_gpj.\u05D0"_s, "older"));
        const QString shown = u"\u2068photo_gpj.\u05D0\u2069"_s;
        save();
        QCOMPARE(m_sheet->view()->accessibleName(), shown);
        QCOMPARE(field(u"Name"_s)->text(), u"photo_gpj.\u05D0"_s);
        button(u"Save"_s)->click();
        QTRY_VERIFY(top() != m_save && !window->isInTransition());
        QCOMPARE(top()->accessibleName(), shown);
        press(Qt::Key_Return);
        QTRY_COMPARE(m_outcome, u"save-copy!"_s);
        QCOMPARE(toast(), u"Saved to “\u2068a\u05D0\u2069”"_s);
    }

    void aTapOnAFileTakesItsName()
    {
        QVERIFY(sample::write(m_folder->filePath(u"old.txt\u200B"_s), "old"));
        save();
        auto *list = top()->findChild<QListView *>();
        QTRY_COMPARE(list->model()->rowCount(), 2);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(1, 0)).center());
        QCOMPARE(field(u"Name"_s)->text(), u"old.txt"_s);
    }

    void otherProgramsGetTheFile_data() { test::addRows({"ui/share.json"}); }
    void otherProgramsGetTheFile()
    {
        const test::Row row;
        for (const QString &name : {u"xdg-open"_s, u"xdg-email"_s}) {
            const QString program = m_folder->filePath(name);
            QVERIFY(sample::write(program,
                                  "#!/bin/sh\necho -n ${0##*/} \"$@\" > ${0%/*}/call\nexit 4\n"));
            QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(m_folder->path()) + ':' + path);
        present();
        button(row.text("title"))->click();
        QTRY_COMPARE(toast(), row.text("failure"));
        qputenv("PATH", path);
        QVERIFY(m_outcome.endsWith(u'.'));
        QCOMPARE(QString::fromUtf8(contents(u"call"_s)),
                 row.text("call")
                     .replace(u"%1"_s, m_folder->path())
                     .replace(u"%2"_s, QFileInfo(m_file).fileName()));
    }

    void fitsTheNarrowestScreen_data() { test::addCases({"en", "de", "es", "fr", "ja", "ko"}); }
    void fitsTheNarrowestScreen()
    {
        QFETCH(QString, what);
        applyTheme(ColorScheme::light);
        const auto speaks = test::speak(what);
        window->resize(320, 568);
        present();
        QCOMPARE(test::cutTexts(*top()).join(u", "_s), QString());
        button(QCoreApplication::translate("UIActivityViewController", "Save a Copy"))->click();
        QTRY_VERIFY(browser() && !window->isInTransition());
        button(QCoreApplication::translate("zelkam::NewFolderRow", "New Folder"))->click();
        press(Qt::Key_Return);
        // What is wrong is there at once, and its place as soon as the screen is laid out again.
        QTRY_COMPARE(test::cutTexts(*top()).join(u", "_s), QString());
    }

    void whatCannotBeDoneIsGreyedOut()
    {
        QFile::remove(m_file);
        present({}, {std::make_shared<OwnActivity>()});
        QVERIFY(button(u"Own"_s)->isEnabled());
        for (const QString &title : {u"Save a Copy"_s, u"Copy File"_s})
            QVERIFY(!button(title)->isEnabled());
        QAbstractButton *own = button(u"Own"_s);
        own->click();
        own->click(); // while the sheet goes
        QTRY_COMPARE(m_outcome, u"own!"_s);
    }

    void programsAreNotOpened()
    {
        const auto open = systemActivities().constFirst();
        const QString program = m_folder->filePath(u"a.desktop"_s);
        QVERIFY(sample::write(program, "[Desktop Entry]\nExec=true\nType=Application\n"));
        QVERIFY(!open->canPerform({URL::fromFilePath(program)}));
        QFile::setPermissions(m_file, QFile::ReadOwner | QFile::ExeOwner);
        QVERIFY(!open->canPerform({URL::fromFilePath(m_file)}));
        QFile::remove(m_file);
    }

    void onATabletItPointsToItsButton()
    {
        UIDevice::current().setUserInterfaceIdiom(UIUserInterfaceIdiom::pad);
        window->resize(1024, 1366);
        auto item = std::make_shared<UINavigationItem>(u"title"_s);
        item->rightBarButtonItem =
            std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::action, nullptr, nullptr);
        auto *bar = new UINavigationBar({0, 24, 1024, 44}, page->view());
        bar->setItems({item}, false);
        bar->show();
        QCOMPARE(bar->accessibleName(), u"title"_s);
        present(item->rightBarButtonItem.get());
        QVERIFY(!button(u"Cancel"_s)->isVisible());
        const QPoint first = button(u"Open in Another App"_s)->mapTo(window.get(), QPoint());
        QVERIFY2(first.y() > 68 && first.y() < 200 && first.x() > 600,
                 "the popover is not at its button");
        bar->move(0, 1300);
        window->resize(1000, 1366);
        QTRY_VERIFY(button(u"Show in Folder"_s)->mapTo(window.get(), QPoint()).y() < 1300);
        window->resize(320, 568); // no room for it there
        QTRY_VERIFY(button(u"Cancel"_s)->isVisible());
    }

private:
    void present(UIBarButtonItem *anchor = nullptr,
                 const QList<std::shared_ptr<UIActivity>> &own = {})
    {
        m_sheet =
            std::make_shared<UIActivityViewController>(QList<URL>{URL::fromFilePath(m_file)}, own);
        m_sheet->completionWithItemsHandler = [this](const QString &type, bool completed) {
            m_outcome += type + (completed ? u'!' : u'.');
        };
        if (auto *popover = m_sheet->popoverPresentationController())
            popover->setSourceItem(anchor);
        show(m_sheet);
    }
    /// The screen for a copy, in the folder of the file.
    void save(const std::optional<QString> &name = {})
    {
        present();
        button(u"Save a Copy"_s)->click();
        QTRY_VERIFY(browser() && !window->isInTransition());
        m_save = top();
        browser()->openFolder(QFileInfo(m_file).path());
        QTRY_VERIFY(browser()->isReady());
        if (name)
            field(u"Name"_s)->setText(*name);
    }
    DocumentBrowser *browser() const { return qobject_cast<DocumentBrowser *>(top()); }
    QByteArray contents(const QString &name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList items() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QString toast() const
    {
        const auto toasts = ToastHost::of(window.get()).activeToasts();
        return toasts->isEmpty() ? QString() : toasts->last()->accessibleName();
    }
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
    QString m_outcome; ///< the activity's type, and ! when it was completed, or .
    QWidget *m_save = nullptr;
    std::shared_ptr<UIActivityViewController> m_sheet;
};

QTEST_MAIN(ShareTest)
#include "tst_share.moc"
