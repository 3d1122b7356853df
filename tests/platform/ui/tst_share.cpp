#include "platform/foundation/bundle.h"
#include "platform/ui/document_browser.h"
#include "platform/ui/file_saving.h"
#include "platform/ui/system_activities.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_navigation_bar.h"
#include "platform/ui/ui_window.h"
#include "support/cut_texts.h"
#include "support/sample_files.h"
#include "toast/toast_host.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/resource.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

class OwnActivity : public UIActivity
{
public:
    QString activityType() const override { return QStringLiteral("own"); }
    QString activityTitle() const override { return QStringLiteral("Own"); }
    QString activityIconName() const override { return QStringLiteral("list-add"); }
    bool canPerform(const QList<URL> &items) const override { return items.size() == 1; }
    void perform(const QList<URL> &, QWidget *, Done done) override { done(true); }
};

} // namespace

class ShareTest : public QObject
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
        setMotionReduced(true);
        UIDevice::current().setUserInterfaceIdiom(UIUserInterfaceIdiom::phone);
        m_file = m_folder.filePath(QStringLiteral("naïve & name.txt"));
        QVERIFY(sample::write(m_file, QByteArray("content\n").repeated(300'000)));
        m_window = std::make_unique<UIWindow>();
        m_window->resize(390, 844);
        m_root = std::make_shared<UIViewController>();
        m_window->setRootViewController(m_root);
        m_window->show();
        m_outcome.reset();
    }
    void cleanup()
    {
        m_root.reset();
        m_window.reset();
        for (const QString &name : items()) {
            const QString path = m_folder.filePath(name);
            QVERIFY(QFile::remove(path) || QDir(path).removeRecursively());
        }
    }

    void closingTheSheetIsNoActivity_data()
    {
        QTest::addColumn<int>("how");
        QTest::newRow("by Cancel") << 0;
        QTest::newRow("by a tap beside it") << 1;
        QTest::newRow("by Esc") << 2;
    }
    void closingTheSheetIsNoActivity()
    {
        QFETCH(int, how);
        present();
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, {}, QString(), true);
        QCoreApplication::sendEvent(m_window.get(), &held);
        QVERIFY(!m_sheet->isBeingDismissed());
        if (how == 0)
            row(QStringLiteral("Cancel"))->click();
        else if (how == 1)
            QTest::mouseClick(m_sheet->view(), Qt::LeftButton, {}, {195, 60});
        else
            QTest::keyClick(m_window.get(), Qt::Key_Escape);
        QTRY_VERIFY(m_outcome);
        QCOMPARE(*m_outcome, qMakePair(QString(), false));
        QVERIFY(!m_root->presentedViewController());
    }

    void aTapInsideThePanelDoesNotCloseIt()
    {
        present();
        const QPoint head = row(QStringLiteral("Copy File"))->mapTo(m_window.get(), QPoint()) -
                            QPoint(0, 4 * metrics::row);
        QTest::mouseClick(m_sheet->view(), Qt::LeftButton, {}, {195, qMax(500, head.y())});
        QTest::qWait(30);
        QVERIFY(m_root->presentedViewController() && !m_outcome);
    }

    void theFileIsCopiedToTheClipboard()
    {
        present();
        row(QStringLiteral("Copy File"))->click();
        QTRY_VERIFY(m_outcome);
        QCOMPARE(*m_outcome, qMakePair(QStringLiteral("copy"), true));
        const QMimeData *data = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(data->text(), m_file);
        QCOMPARE(data->urls(), QList<QUrl>{QUrl::fromLocalFile(m_file)});
        QCOMPARE(data->data(QStringLiteral("x-special/gnome-copied-files")),
                 "copy\n" + QUrl::fromLocalFile(m_file).toEncoded());
        QCOMPARE(toast(), u"Copied"_s);
    }

    void aCopyIsSavedByKeysAlone()
    {
        save();
        QTest::keyClicks(m_window->focusWidget(), u"copy"_s); // its extension stays
        press(Qt::Key_Return);
        QVERIFY(!row(u"Save"_s)->isEnabled());
        QTRY_VERIFY(m_outcome);
        QCOMPARE(*m_outcome, qMakePair(u"save-copy"_s, true));
        QCOMPARE(DocumentBrowser::firstFolder(), m_folder.path()); // for the next one
        QCOMPARE(contents(u"copy.txt"_s), contents(u"naïve & name.txt"_s));
        QVERIFY(QFile::permissions(m_folder.filePath(u"copy.txt"_s)) & QFile::ReadOther);
        QCOMPARE(toast(), u"Saved to “%1”"_s.arg(QDir(m_folder.path()).dirName()));
    }

    void whatWasThereIsReplacedOnlyByAYes()
    {
        QVERIFY(sample::write(m_folder.filePath(u"old.txt"_s), "old"));
        QVERIFY(QFile::link(m_folder.filePath(u"old.txt"_s), m_folder.filePath(u"link.txt"_s)));
        save(u"link.txt"_s);
        row(u"Save"_s)->click();
        QTRY_VERIFY(top() != m_save && !m_window->isInTransition());
        press(Qt::Key_Escape);
        QTRY_VERIFY(top() == m_save && !m_window->isInTransition());
        QCOMPARE(contents(u"link.txt"_s), QByteArray("old"));
        QCOMPARE(m_window->focusWidget(), field(u"Name"_s));
        press(Qt::Key_Return);
        QTRY_VERIFY(top() != m_save && !m_window->isInTransition());
        QCOMPARE(top()->accessibleDescription(), u"Already in this folder"_s);
        press(Qt::Key_Return);
        QTRY_VERIFY(m_outcome);
        QCOMPARE(contents(u"link.txt"_s), contents(u"naïve & name.txt"_s));
        QCOMPARE(contents(u"old.txt"_s), QByteArray("old")); // a link is not followed
    }

    void aNameIsTakenAsTheFileSystemDoes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("problem");
        QTest::newRow("none") << QString() << u"Enter a name."_s;
        QTest::newRow("blanks") << u"  "_s << u"Enter a name."_s;
        QTest::newRow("with a slash") << u"../a.txt"_s << u"A name cannot contain a slash."_s;
        QTest::newRow("the folder above") << u".."_s << u"This name is not possible here."_s;
        QTest::newRow("of a folder") << u"folder"_s << u"This name is taken already."_s;
        QTest::newRow("of 258 bytes") << QString(86, u'한') << u"This name is too long."_s;
        QTest::newRow("of 255 bytes") << QString(85, u'한') << QString();
    }
    void aNameIsTakenAsTheFileSystemDoes()
    {
        QFETCH(QString, name);
        QFETCH(QString, problem);
        QVERIFY(QDir(m_folder.path()).mkpath(u"folder"_s));
        save(name);
        press(Qt::Key_Return);
        if (problem.isEmpty()) {
            QTRY_VERIFY(m_outcome);
            QVERIFY(QFile::exists(m_folder.filePath(name)));
            return;
        }
        QTRY_COMPARE(field(u"Name"_s)->accessibleDescription(), problem);
        QCOMPARE(items(), QStringList({u"folder"_s, u"naïve & name.txt"_s}));
        field(u"Name"_s)->insert(u"x"_s);
        QCOMPARE(field(u"Name"_s)->accessibleDescription(), QString());
        press(Qt::Key_Escape);
        QTRY_VERIFY(m_outcome);
        QCOMPARE(*m_outcome, qMakePair(u"save-copy"_s, false));
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
        browser()->openFolder(u"/sys"_s);
        press(Qt::Key_Return);
        QTRY_COMPARE(field(u"Name"_s)->accessibleDescription(),
                     u"You may not save in this folder."_s);
        browser()->openFolder(m_folder.filePath(u"gone"_s));
        press(Qt::Key_Return);
        QTRY_COMPARE(field(u"Name"_s)->accessibleDescription(),
                     u"This folder is no longer there."_s);
        QCOMPARE(savingProblem({ENOSPC, std::generic_category()}),
                 u"There is not enough room left."_s);
    }

    void aCancelledCopyLeavesNothing()
    {
        const auto file = RegularFile::open(m_file);
        QCOMPARE(saveCopy(*file, m_folder.path(), u"a"_s, OlderFile::stays, true),
                 std::make_error_code(std::errc::operation_canceled));
        QCOMPARE(items(), QStringList(u"naïve & name.txt"_s));
    }

    void aFolderIsMadeOnTheWay()
    {
        save(u"copy.txt"_s);
        row(u"New Folder"_s)->click();
        press(Qt::Key_Escape); // the row only
        QVERIFY(row(u"New Folder"_s)->isVisible());
        row(u"New Folder"_s)->click();
        press(Qt::Key_Return);
        QCOMPARE(field(u"New Folder"_s)->accessibleDescription(), u"Enter a name."_s);
        field(u"New Folder"_s)->setText(u"naïve & name.txt"_s);
        press(Qt::Key_Return);
        QTRY_COMPARE(field(u"New Folder"_s)->accessibleDescription(),
                     u"This name is taken already."_s);
        field(u"New Folder"_s)->setText(u"new"_s);
        row(u"Create"_s)->click();
        QTRY_COMPARE(browser()->folder(), m_folder.filePath(u"new"_s));
        row(u"Save"_s)->click();
        QTRY_VERIFY(m_outcome);
        QVERIFY(QFile::exists(m_folder.filePath(u"new/copy.txt"_s)));
    }

    void aTapOnAFileTakesItsName()
    {
        QVERIFY(sample::write(m_folder.filePath(u"old.txt"_s), "old"));
        save();
        auto *list = m_save->findChild<QListView *>();
        QTRY_COMPARE(list->model()->rowCount(), 2);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(1, 0)).center());
        QCOMPARE(field(u"Name"_s)->text(), u"old.txt"_s);
    }

    void otherProgramsGetTheFile_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("failure");
        QTest::newRow("to open it") << u"Open in Another App"_s << u"xdg-open %1/%2"_s
                                    << u"No application could open the file."_s;
        QTest::newRow("to mail it") << u"Send by E-Mail"_s << u"xdg-email --attach %1/%2"_s
                                    << u"No e-mail application could be started."_s;
        QTest::newRow("to show it")
            << u"Show in Folder"_s << u"xdg-open %1"_s << u"The folder could not be opened."_s;
    }
    void otherProgramsGetTheFile()
    {
        QFETCH(QString, title);
        QFETCH(QString, call);
        QFETCH(QString, failure);
        for (const QString &name : {u"xdg-open"_s, u"xdg-email"_s}) {
            const QString program = m_folder.filePath(name);
            QVERIFY(sample::write(program,
                                  "#!/bin/sh\necho -n ${0##*/} \"$@\" > ${0%/*}/call\nexit 4\n"));
            QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ':' + path);
        present();
        row(title)->click();
        QTRY_COMPARE(toast(), failure);
        qputenv("PATH", path);
        QCOMPARE(m_outcome->second, false);
        QCOMPARE(QString::fromUtf8(contents(u"call"_s)),
                 QString(call)
                     .replace(u"%1"_s, m_folder.path())
                     .replace(u"%2"_s, QFileInfo(m_file).fileName()));
    }

    void fitsTheNarrowestScreen_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"en", "de", "es", "fr", "ja", "ko"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }
    void fitsTheNarrowestScreen()
    {
        QFETCH(QString, language);
        applyTheme(ColorScheme::light);
        const auto speaks = test::speak(language);
        m_window->resize(320, 568);
        present();
        QCOMPARE(test::cutTexts(*top()).join(u", "_s), QString());
        m_save = nullptr;
        row(QCoreApplication::translate("UIActivityViewController", "Save a Copy"))->click();
        QTRY_VERIFY(top() != m_sheet->view() && !m_window->isInTransition() && browser());
        m_save = top();
        row(QCoreApplication::translate("zelkam::NewFolderRow", "New Folder"))->click();
        press(Qt::Key_Return);
        QTest::qWait(50);
        QCOMPARE(test::cutTexts(*top()).join(u", "_s), QString());
    }

    void whatCannotBeDoneIsGreyedOut()
    {
        QFile::remove(m_file);
        present({}, {std::make_shared<OwnActivity>()});
        QVERIFY(row(QStringLiteral("Own"))->isEnabled());
        for (const QString &title : {QStringLiteral("Save a Copy"), QStringLiteral("Copy File")})
            QVERIFY(!row(title)->isEnabled());
        QAbstractButton *own = row(QStringLiteral("Own"));
        own->click();
        own->click(); // while the sheet goes
        QTRY_VERIFY(m_outcome);
        QCOMPARE(m_outcome->first, QStringLiteral("own"));
    }

    void programsAreNotOpened()
    {
        const auto open = systemActivities().constFirst();
        const QString program = m_folder.filePath(QStringLiteral("a.desktop"));
        QVERIFY(sample::write(program, "[Desktop Entry]\nExec=true\nType=Application\n"));
        QVERIFY(!open->canPerform({URL::fromFilePath(program)}));
        QFile::setPermissions(m_file, QFile::ReadOwner | QFile::ExeOwner);
        QVERIFY(!open->canPerform({URL::fromFilePath(m_file)}));
        QFile::remove(m_file);
    }

    void onATabletItPointsToItsButton()
    {
        UIDevice::current().setUserInterfaceIdiom(UIUserInterfaceIdiom::pad);
        m_window->resize(1024, 1366);
        bool didShare = false;
        auto item = std::make_shared<UINavigationItem>(QStringLiteral("title"));
        item->rightBarButtonItem =
            std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::action, m_root.get(),
                                              [&didShare](QObject *) { didShare = true; });
        auto *bar = new UINavigationBar({0, 24, 1024, 44}, m_root->view());
        bar->setItems({item}, false);
        bar->show();
        QCOMPARE(bar->accessibleName(), u"title"_s);
        item->rightBarButtonItem->setEnabled(false);
        item->rightBarButtonItem->perform();
        QVERIFY(!didShare);
        present(item->rightBarButtonItem.get());
        QVERIFY(!row(QStringLiteral("Cancel"))->isVisible());
        const QPoint first =
            row(QStringLiteral("Open in Another App"))->mapTo(m_window.get(), QPoint());
        QVERIFY2(first.y() > 68 && first.y() < 200 && first.x() > 600,
                 "the popover is not at its button");
        m_window->resize(320, 568); // no room for it there
        QTRY_VERIFY(row(QStringLiteral("Cancel"))->isVisible());
    }

private:
    void present(UIBarButtonItem *anchor = nullptr,
                 const QList<std::shared_ptr<UIActivity>> &own = {})
    {
        m_sheet =
            std::make_shared<UIActivityViewController>(QList<URL>{URL::fromFilePath(m_file)}, own);
        m_sheet->completionWithItemsHandler = [this](const QString &type, bool completed) {
            QVERIFY2(!m_outcome, "the handler ran twice");
            m_outcome = qMakePair(type, completed);
        };
        if (auto *popover = m_sheet->popoverPresentationController())
            popover->setSourceItem(anchor);
        bool there = false;
        m_root->present(m_sheet, true, [&there] { there = true; });
        QTRY_VERIFY(there);
    }
    /// The screen for a copy, in the folder of the file.
    void save(const std::optional<QString> &name = {})
    {
        present();
        row(u"Save a Copy"_s)->click();
        QTRY_VERIFY(top() != m_sheet->view() && browser() && !m_window->isInTransition());
        m_save = top();
        browser()->openFolder(m_folder.path());
        QTRY_VERIFY(browser()->isReady());
        if (name)
            field(u"Name"_s)->setText(*name);
    }
    QWidget *top() const { return m_window->topMostViewController()->view(); }
    DocumentBrowser *browser() const { return qobject_cast<DocumentBrowser *>(top()); }
    QLineEdit *field(const QString &name) const
    {
        for (auto *field : top()->findChildren<QLineEdit *>()) {
            if (field->accessibleName() == name)
                return field;
        }
        return nullptr;
    }
    void press(Qt::Key key) { QTest::keyClick(m_window->focusWidget(), key); }
    QByteArray contents(const QString &name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QStringList items() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    QString toast() const
    {
        const auto toasts = ToastHost::of(m_window.get()).activeToasts();
        return toasts->isEmpty() ? QString() : toasts->last()->accessibleName();
    }
    QAbstractButton *row(const QString &title) const
    {
        const auto rows = top()->findChildren<QAbstractButton *>();
        const auto found =
            std::find_if(rows.begin(), rows.end(),
                         [&title](QAbstractButton *button) { return button->text() == title; });
        return found == rows.end() ? nullptr : *found;
    }

    QTemporaryDir m_folder;
    QString m_file;
    std::unique_ptr<UIWindow> m_window;
    QWidget *m_save = nullptr;
    std::shared_ptr<UIViewController> m_root;
    std::shared_ptr<UIActivityViewController> m_sheet;
    std::optional<QPair<QString, bool>> m_outcome;
};

QTEST_MAIN(ShareTest)
#include "tst_share.moc"
