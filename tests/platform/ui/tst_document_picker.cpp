#include "platform/foundation/bundle.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_document_picker_model.h"
#include "platform/ui/ui_document_picker_places.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "platform/ui/ui_window.h"
#include "support/cut_texts.h"

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/stat.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

class Delegate : public UIDocumentPickerDelegate
{
public:
    void documentPicker(UIDocumentPickerViewController *, const QList<URL> &urls) override
    {
        for (const URL &url : urls)
            heard.append(url.lastPathComponent());
    }
    void documentPickerWasCancelled(UIDocumentPickerViewController *) override
    {
        heard.append(u"cancelled"_s);
    }

    QStringList heard;
};

} // namespace

/// The screen as a person has it: what it shows, and what fingers, keys and a search field do.
class TestDocumentPicker : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<UIWindow> window;
    std::shared_ptr<UIViewController> page;
    std::shared_ptr<Delegate> delegate;
    std::shared_ptr<UIDocumentPickerViewController> picker;

    void write(const QString &name, const QByteArray &content = "x")
    {
        QDir().mkpath(QFileInfo(root->filePath(name)).path());
        QFile file(root->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void present(const QList<UTType> &types, bool multiple = true)
    {
        picker = std::make_shared<UIDocumentPickerViewController>(types, true);
        picker->allowsMultipleSelection = multiple;
        picker->setDelegate(delegate);
        picker->setDirectory(root->path());
        page->present(picker, true);
        QTRY_VERIFY(picker->isVisible() && !window->isInTransition());
        QTRY_VERIFY(!names().isEmpty());
    }

    QListView *list() const { return picker->view()->findChild<QListView *>(); }
    QLineEdit *search() const { return picker->view()->findChild<QLineEdit *>(); }

    QStringList names() const
    {
        QStringList result;
        for (int row = 0; row < list()->model()->rowCount(); ++row)
            result.append(list()->model()->index(row, 0).data().toString());
        return result;
    }

    QStringList selected() const
    {
        QStringList result;
        for (const QString &path : picker->selection())
            result.append(path.section(u'/', -1));
        return result;
    }

    QModelIndex item(const QString &name) const
    {
        return list()->model()->index(int(names().indexOf(name)), 0);
    }

    void tap(const QString &name)
    {
        QVERIFY2(names().contains(name), qPrintable(name));
        list()->scrollTo(item(name));
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualRect(item(name)).center());
    }

    QAbstractButton *button(const QString &name) const
    {
        for (auto *button : picker->view()->findChildren<QAbstractButton *>()) {
            if (button->accessibleName() == name)
                return button;
        }
        return nullptr;
    }

    void press(Qt::Key key) { QTest::keyClick(window->focusWidget(), key); }

private slots:
    void initTestCase() { installTranslations(QLocale::c()); }
    void init()
    {
        setMotionReduced(true);
        applyTheme(ColorScheme::light);
        root = std::make_unique<QTemporaryDir>();
        qputenv("HOME", QFile::encodeName(root->path()));
        for (const char *name : {"Minutes 10.txt", "minutes 2.txt", "Über.pdf", "b.docx", "c.mp3"})
            write(QString::fromUtf8(name));
        write(u"invoice"_s, "%PDF-1.5\n");
        write(u".hidden.pdf"_s);
        write(u"folder/b.docx"_s);
        write(u"folder/z.pdf"_s);
        window = std::make_unique<UIWindow>();
        page = std::make_shared<UIViewController>();
        window->setRootViewController(page);
        window->resize(390, 844);
        window->makeKeyAndVisible();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        delegate = std::make_shared<Delegate>();
    }

    void cleanup()
    {
        picker.reset();
        window.reset();
        page.reset();
    }

    void sortsAsPeopleDo()
    {
        present({UTType::item});
        QCOMPARE(names(), QStringList({u"folder"_s, u"b.docx"_s, u"c.mp3"_s, u"invoice"_s,
                                       u"minutes 2.txt"_s, u"Minutes 10.txt"_s, u"Über.pdf"_s}));
        QTest::keyClick(window->focusWidget(), Qt::Key_H, Qt::ControlModifier);
        QVERIFY(names().contains(u".hidden.pdf"_s));
    }

    void letsAllowedTypesBePicked_data()
    {
        QTest::addColumn<QStringList>("types");
        QTest::addColumn<QStringList>("picked");
        QTest::newRow("one type, by name and by content")
            << QStringList{u"com.adobe.pdf"_s} << QStringList{u"invoice"_s, u"Über.pdf"_s};
        QTest::newRow("content, which leaves out no document")
            << QStringList{u"public.content"_s}
            << QStringList{u"b.docx"_s,        u"c.mp3"_s,          u"invoice"_s,
                           u"minutes 2.txt"_s, u"Minutes 10.txt"_s, u"Über.pdf"_s};
        QTest::newRow("text, which an office document is not")
            << QStringList{u"public.text"_s}
            << QStringList{u"minutes 2.txt"_s, u"Minutes 10.txt"_s};
        QTest::newRow("anything") << QStringList{u"public.item"_s}
                                  << QStringList{
                                         u"b.docx"_s,  u"c.mp3"_s,         u"data.nobody-knows"_s,
                                         u"invoice"_s, u"minutes 2.txt"_s, u"Minutes 10.txt"_s,
                                         u"Über.pdf"_s};
        QTest::newRow("a type that nobody knows")
            << QStringList{u"public.nothing"_s} << QStringList{};
    }
    void letsAllowedTypesBePicked()
    {
        QFETCH(QStringList, types);
        QFETCH(QStringList, picked);
        write(u"data.nobody-knows"_s, QByteArray("\0\1\2", 3));
        // What never can be picked, whatever it is called.
        QCOMPARE(::mkfifo(QFile::encodeName(root->filePath(u"pipe.pdf"_s)).constData(), 0600), 0);
        QVERIFY(QFile::link(root->filePath(u"nothing"_s), root->filePath(u"dangling.pdf"_s)));
        QVERIFY(QFile::link(u"/dev/zero"_s, root->filePath(u"device.pdf"_s)));
        const QByteArray latin = QFile::encodeName(root->path()) + "/\xfc.pdf";
        const auto remove = qScopeGuard([&latin] { std::remove(latin.constData()); });
        std::fclose(std::fopen(latin.constData(), "w"));

        picker =
            std::make_shared<UIDocumentPickerViewController>(types, UIDocumentPickerMode::import);
        picker->allowsMultipleSelection = true;
        picker->setDirectory(root->path());
        page->present(picker, false);
        QTRY_VERIFY(picker->isVisible());
        QTRY_COMPARE(names().size(), 12);
        for (const QString &name : names().mid(1))
            tap(name);
        QTRY_COMPARE(selected(), picked);
        for (const QString &name : {u"pipe.pdf"_s, u"dangling.pdf"_s, u"device.pdf"_s})
            QVERIFY2(!item(name).flags().testFlag(Qt::ItemIsEnabled), qPrintable(name));
    }

    void theNameDecidesAndTheContentWhereItSaysNothing_data()
    {
        QTest::addColumn<QStringList>("types");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("isPicked");
        const auto row = [](const char *what, const UTType &type, const char *name,
                            const QByteArray &content, bool isPicked) {
            QTest::newRow(what) << QStringList(type.identifier()) << QString::fromLatin1(name)
                                << content << isPicked;
        };
        const QByteArray jpeg("\xff\xd8\xff\xe0\0\x10JFIF", 10);
        row("a JPEG that is called a PDF", UTType::pdf, "a.pdf", jpeg, true);
        row("a PDF that is called a page", UTType::html, "a.HTML", "%PDF-1.7\n", true);
        row("a program that is called a document", UTType::content, "a.docx", "\177ELF\2", true);
        row("nothing that is called a film", UTType::mpeg4Movie, "a.mp4", "", true);
        row("a PDF that is called nothing", UTType::pdf, "a", "%PDF-1.7\n", true);
        row("a JPEG that is called nothing", UTType::pdf, "a", jpeg, false);
        row("a JPEG of an extension that nobody knows", UTType::pdf, "a.nobody-knows", jpeg, false);
    }
    void theNameDecidesAndTheContentWhereItSaysNothing()
    {
        QFETCH(QStringList, types);
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(bool, isPicked);
        write(u"here/"_s + name, content);
        picker =
            std::make_shared<UIDocumentPickerViewController>(types, UIDocumentPickerMode::import);
        picker->setDelegate(delegate);
        picker->setDirectory(root->filePath(u"here"_s));
        page->present(picker, false);
        QTRY_VERIFY(picker->isVisible() && !names().isEmpty());
        tap(name);
        picker->accept();
        if (isPicked) {
            QTRY_COMPARE(delegate->heard, QStringList(name));
            return;
        }
        QTRY_VERIFY(!item(name).flags().testFlag(Qt::ItemIsEnabled));
        QTRY_COMPARE(picker->selection(), QStringList());
        tap(name);
        QCOMPARE(picker->selection(), QStringList());
        QCOMPARE(delegate->heard, QStringList());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot pick .*"_s));
        QSignalSpy shown(picker.get(), &UIDocumentPickerViewController::selectionShown);
        picker->showSelection({root->filePath(u"here/"_s + name)});
        QTRY_COMPARE(shown.size(), 1);
        picker->cancel(); // the screen takes that still
        QCOMPARE(delegate->heard, QStringList(u"cancelled"_s));
    }

    void picksAcrossFoldersInOrder()
    {
        present({UTType::item});
        tap(u"c.mp3"_s);
        tap(u"b.docx"_s);
        tap(u"invoice"_s);
        tap(u"c.mp3"_s); // not, after all
        tap(u"folder"_s);
        QTRY_VERIFY(names().contains(u"z.pdf"_s));
        tap(u"b.docx"_s); // another one of that name
        picker->accept();
        picker->accept();
        QTRY_COMPARE(delegate->heard, QStringList({u"b.docx"_s, u"invoice"_s, u"b.docx"_s}));
        picker->cancel();
        QCOMPARE(delegate->heard.size(), 3);
        QTRY_VERIFY(!page->presentedViewController());
        // The next one begins where this one was accepted.
        picker =
            std::make_shared<UIDocumentPickerViewController>(QList<UTType>{UTType::item}, true);
        page->present(picker, true);
        QTRY_VERIFY(picker->isVisible());
        QTRY_COMPARE(names(), QStringList({u"b.docx"_s, u"z.pdf"_s}));
    }

    void picksOnlyOneWithoutMultipleSelection()
    {
        present({UTType::item}, false);
        picker->accept(); // nothing is selected
        tap(u"c.mp3"_s);
        tap(u"b.docx"_s);
        QCOMPARE(picker->selection(), QStringList(root->filePath(u"b.docx"_s)));
        picker->accept();
        QTRY_COMPARE(delegate->heard, QStringList(u"b.docx"_s));
    }

    void searchesAsOneTypes()
    {
        present({UTType::item});
        tap(u"c.mp3"_s);
        QTest::keyClicks(window->focusWidget(), u"uBe"_s); // from the list into the field
        QCOMPARE(search()->text(), u"uBe"_s);
        QCOMPARE(names(), QStringList(u"Über.pdf"_s));
        tap(u"Über.pdf"_s);
        search()->setText(u"no such name"_s);
        QVERIFY(!list()->isVisible());
        search()->setFocus();
        press(Qt::Key_Escape); // empties the field, and does not cancel yet
        QCOMPARE(search()->text(), QString());
        QCOMPARE(names().size(), 7);
        QCOMPARE(picker->selection().size(), 2); // what a search hides stays selected
        press(Qt::Key_Escape);
        QCOMPARE(delegate->heard, QStringList(u"cancelled"_s));
        QTRY_VERIFY(!page->presentedViewController());
    }

    void worksWithKeysAlone()
    {
        present({UTType::item});
        press(Qt::Key_Return); // into the folder, which is the first
        QTRY_COMPARE(names(), QStringList({u"b.docx"_s, u"z.pdf"_s}));
        press(Qt::Key_Backspace);
        QTRY_COMPARE(names().size(), 7);
        QCOMPARE(list()->currentIndex().data(), u"folder"_s); // where one came from
        press(Qt::Key_Return);
        QTRY_COMPARE(names().size(), 2);
        QTest::keyClick(window->focusWidget(), Qt::Key_Up, Qt::AltModifier);
        QTRY_COMPARE(names().size(), 7);
        QFile::remove(root->filePath(u"invoice"_s));
        press(Qt::Key_F5);
        QTRY_COMPARE(names().size(), 6);
        list()->setCurrentIndex(item(u"folder"_s));
        press(Qt::Key_Down);
        press(Qt::Key_Space);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QTRY_COMPARE(delegate->heard, QStringList({u"b.docx"_s, u"c.mp3"_s}));
    }

    void showsTheNameOfARowThatIsSelectedAndFocused()
    {
        present({UTType::item});
        window->setAttribute(Qt::WA_KeyboardFocusChange);
        press(Qt::Key_Down);
        press(Qt::Key_Space);
        const QImage row =
            list()->viewport()->grab(list()->visualRect(item(u"b.docx"_s))).toImage();
        QCOMPARE(selected(), QStringList(u"b.docx"_s));
        QVERIFY(row.pixelColor(row.rect().center()) != accentColor(list()->palette()));
        QCOMPARE(row.pixelColor(3, row.height() / 2), accentColor(list()->palette())); // the ring
    }

    void tellsWhatARowIs()
    {
        QFile old(root->filePath(u"b.docx"_s));
        QVERIFY(old.open(QIODevice::ReadWrite));
        QVERIFY(old.setFileTime(QDateTime(QDate(2001, 2, 3), QTime(4, 5)),
                                QFileDevice::FileModificationTime));
        present({UTType::item});
        tap(u"b.docx"_s);
        const auto told = [this](const QString &name) {
            return item(name).data(Qt::AccessibleDescriptionRole).toString();
        };
        const QLocale locale;
        const QString size = locale.formattedDataSize(1, 1, QLocale::DataSizeSIFormat);
        QCOMPARE(told(u"b.docx"_s), size + u", "_s +
                                        locale.toString(QDate(2001, 2, 3), QLocale::ShortFormat) +
                                        u", Selected"_s);
        const QFileInfo folder(root->filePath(u"folder"_s));
        QCOMPARE(told(u"folder"_s),
                 locale.toString(folder.lastModified().time(), QLocale::ShortFormat));
    }

    void goesAlongThePath()
    {
        write(u"folder/deep/a.txt"_s);
        present({UTType::item});
        QSignalSpy ready(picker->view(), SIGNAL(ready()));
        picker->setDirectory(root->path()); // read by then, and given up
        QTest::qSleep(50);
        picker->setDirectory(root->filePath(u"folder/deep"_s));
        QTRY_COMPARE(names(), QStringList(u"a.txt"_s));
        QCOMPARE(ready.size(), 1);
        button(u"folder"_s)->click();
        QTRY_VERIFY(names().contains(u"deep"_s));
        picker->setDirectory(u"/"_s);
        QTRY_COMPARE(ready.size(), 3);
        QVERIFY(!button(u"Folder above"_s)->isEnabled());
    }

    void keepsWhatAContentSaid()
    {
        DocumentPickerModel model(DocumentSelection::one);
        DocumentEntry entry;
        entry.name = u"a.pdf"_s;
        entry.choice = DocumentChoice::allowed;
        model.setListing({u"/f"_s, {}, {entry}});
        model.setChoice(u"/f/a.pdf"_s, DocumentChoice::wrongType);
        model.setChoices(0, {DocumentChoice::allowed}); // what was found by the name comes later
        QVERIFY(!model.index(0).flags().testFlag(Qt::ItemIsEnabled));
    }

    void goesToPlacesByKeys()
    {
        write(u"Documents/a.txt"_s);
        present({UTType::item});
        picker->setDirectory(root->filePath(u"Documents"_s));
        QTRY_COMPARE(names(), QStringList(u"a.txt"_s));
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
        QCOMPARE(window->focusWidget()->accessibleName(), u"Documents"_s); // where one is
        press(Qt::Key_Up);
        press(Qt::Key_Return);
        QTRY_VERIFY(names().contains(u"Über.pdf"_s));
        QVERIFY(list()->hasFocus());
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
        const auto speaks = test::speak(language);
        window->resize(320, 568);
        for (const bool multiple : {false, true}) {
            present({UTType::item}, multiple);
            QCOMPARE(test::cutTexts(*picker->view()).join(u", "_s), QString());
            press(Qt::Key_Tab);
            press(Qt::Key_Space);
            QCOMPARE(test::cutTexts(*picker->view()).join(u", "_s), QString());
            picker->cancel();
            QTRY_VERIFY(!page->presentedViewController());
        }
    }

    void staysUsableInAFolderThatCannotBeRead()
    {
        write(u"gone/a.txt"_s);
        present({UTType::item});
        QDir(root->filePath(u"gone"_s)).removeRecursively();
        tap(u"gone"_s);
        QTRY_VERIFY(!list()->isVisible());
        QVERIFY(names().isEmpty());
        button(u"Folder above"_s)->click();
        QTRY_COMPARE(names().size(), 7);
    }

    void answersFromOutside()
    {
        present({UTType::pdf, UTType::content});
        QSignalSpy shown(picker.get(), &UIDocumentPickerViewController::selectionShown);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot pick .*gone"_s));
        const QStringList paths{root->filePath(u"folder/z.pdf"_s), root->filePath(u"gone"_s),
                                root->filePath(u"invoice"_s)};
        picker->showSelection(paths);
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(picker->selection(), QStringList({paths.at(0), paths.at(2)}));
        picker->accept();
        QCOMPARE(delegate->heard, QStringList({u"z.pdf"_s, u"invoice"_s}));
    }

    void outlivesItsDelegate()
    {
        present({UTType::item});
        delegate.reset();
        tap(u"c.mp3"_s);
        picker->accept();
        QTRY_VERIFY(!page->presentedViewController());
    }

    void findsDrivesThatWerePluggedIn()
    {
        QCOMPARE(
            removableMounts("/dev/sda1 / ext4 rw 0 0\n"
                            "/dev/sdb1 /media/ann/USB\\040STICK vfat rw 0 0\n"
                            "proc /proc proc rw 0 0\n"
                            "/dev/sdd /mnt/disk ext4 rw 0 0\n"
                            "/dev/sdc /run/media/ann/b\\134c ext4 rw 0 0\nbroken\n"),
            QStringList({u"/media/ann/USB STICK"_s, u"/mnt/disk"_s, u"/run/media/ann/b\\c"_s}));
    }
};

QTEST_MAIN(TestDocumentPicker)
#include "tst_document_picker.moc"
