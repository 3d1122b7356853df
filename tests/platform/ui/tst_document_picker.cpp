#include "platform/foundation/bundle.h"
#include "platform/foundation/file_name.h"
#include "platform/ui/document_browser.h"
#include "platform/ui/ui_document_picker_model.h"
#include "platform/ui/ui_document_picker_places.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "support/cut_texts.h"
#include "support/data_table.h"
#include "support/sample_files.h"
#include "support/screen_test.h"

#include <QDir>
#include <QListView>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <sys/stat.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

const QByteArray jpeg("\xff\xd8\xff\xe0\0\x10JFIF", 10);

class Delegate : public UIDocumentPickerDelegate
{
public:
    void documentPicker(UIDocumentPickerViewController *, const QList<URL> &urls) override
    {
        for (const URL &url : urls)
            heard.append(displayName(url.lastPathComponent()));
    }
    void documentPickerWasCancelled(UIDocumentPickerViewController *) override
    {
        heard.append(u"cancelled"_s);
    }

    QStringList heard;
};

} // namespace

/// The screen as a person has it: what it shows, and what fingers, keys and a search field do.
class TestDocumentPicker : public ScreenTest
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root;
    std::shared_ptr<Delegate> delegate;
    std::shared_ptr<UIDocumentPickerViewController> picker;

    void write(const QString &name, const QByteArray &content = "x")
    {
        QDir().mkpath(QFileInfo(root->filePath(name)).path());
        QVERIFY(sample::write(root->filePath(name), content));
    }

    void present(const QStringList &types = {u"public.item"_s}, bool multiple = true)
    {
        picker =
            std::make_shared<UIDocumentPickerViewController>(types, UIDocumentPickerMode::import);
        picker->allowsMultipleSelection = multiple;
        picker->setDelegate(delegate);
        picker->setDirectory(root->path());
        show(picker);
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
            result.append(displayName(path.section(u'/', -1)));
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

private slots:
    void initTestCase() { installTranslations(QLocale::c()); }
    void init()
    {
        applyTheme(ColorScheme::light);
        root = std::make_unique<QTemporaryDir>();
        qputenv("HOME", QFile::encodeName(root->path()));
        for (const char *name : {"Minutes 10.txt", "minutes 2.txt", "Über.pdf"})
            write(QString::fromUtf8(name));
        write(u"b.docx"_s, "\177ELF\2");
        write(u"c.mp3"_s, "");
        write(u"invoice"_s, "%PDF-1.5\n");
        write(u".hidden.pdf"_s);
        write(u"folder/b.docx"_s);
        write(u"folder/z.pdf"_s);
        openWindow();
        delegate = std::make_shared<Delegate>();
    }

    void cleanup()
    {
        picker.reset();
        closeWindow();
    }

    void sortsAsPeopleDo()
    {
        present();
        QCOMPARE(names(), QStringList({u"folder"_s, u"b.docx"_s, u"c.mp3"_s, u"invoice"_s,
                                       u"minutes 2.txt"_s, u"Minutes 10.txt"_s, u"Über.pdf"_s}));
        press(Qt::Key_H, Qt::ControlModifier);
        QVERIFY(names().contains(u".hidden.pdf"_s));
    }

    // A known extension decides, whatever a file holds; its content where the name says nothing.
    void letsAllowedTypesBePicked_data() { test::addRows({"ui/document_picker.json"}); }
    void letsAllowedTypesBePicked()
    {
        const test::Row row;
        const QString picked = row.text("picked");
        write(u"data.nobody-knows"_s, QByteArray("\0\1\2", 3));
        write(u"photo.nobody-knows"_s, jpeg);
        // What never can be picked, whatever it is called.
        QCOMPARE(::mkfifo(QFile::encodeName(root->filePath(u"pipe.pdf"_s)).constData(), 0600), 0);
        QVERIFY(QFile::link(root->filePath(u"nothing"_s), root->filePath(u"dangling.pdf"_s)));
        QVERIFY(QFile::link(u"/dev/zero"_s, root->filePath(u"device.pdf"_s)));
        const QByteArray latin = QFile::encodeName(root->path()) + "/\xfc.pdf";
        const auto remove = qScopeGuard([&latin] { std::remove(latin.constData()); });
        std::fclose(std::fopen(latin.constData(), "w"));

        present({row.text("type")});
        QTRY_COMPARE(names().size(), 13);
        const QString photo = u"photo.nobody-knows"_s;
        if (!picked.contains(photo)) {
            QSignalSpy shown(picker.get(), &UIDocumentPickerViewController::selectionShown);
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot pick .*photo"_s));
            picker->setDirectory(root->path());
            picker->showSelection({root->filePath(photo)});
            // It is accepted while it is looked at. The person has to see that it is left out.
            connect(static_cast<DocumentBrowser *>(picker->view()), &DocumentBrowser::ready,
                    picker.get(), &UIDocumentPickerViewController::accept);
            QTRY_COMPARE(shown.size(), 1);
            QVERIFY(!item(photo).flags().testFlag(Qt::ItemIsEnabled));
            QCOMPARE(delegate->heard, QStringList());
        }
        for (const QString &name : names().mid(1))
            tap(name);
        QTRY_COMPARE(selected().join(u", "_s), picked);
        for (const QString &name : {u"pipe.pdf"_s, u"dangling.pdf"_s, u"device.pdf"_s})
            QVERIFY2(!item(name).flags().testFlag(Qt::ItemIsEnabled), qPrintable(name));
        picker->accept();
        picker->cancel(); // the screen takes that still when there is nothing to accept
        QCOMPARE(delegate->heard.join(u", "_s), picked.isEmpty() ? u"cancelled"_s : picked);
    }

    void namesCannotLie()
    {
        const QByteArray folder = QFile::encodeName(root->path()) + "/\xe9\u202Ea\u05D0";
        const QByteArray file = folder + "/\u202Efdp.\xe9";
        const auto remove = qScopeGuard([&] {
            std::remove(file.constData());
            std::remove(folder.constData());
        });
        QCOMPARE(::mkdir(folder.constData(), 0700), 0);
        std::fclose(std::fopen(file.constData(), "w"));
        present({u"public.item"_s}, false);
        tap(u"\u2068éa\u05D0\u2069"_s);
        QTRY_COMPARE(names(), QStringList(u"fdp.é"_s));
        QVERIFY(button(u"\u2068éa\u05D0\u2069"_s)); // in the path
        QCOMPARE(item(u"fdp.é"_s).data(Qt::ToolTipRole), u"fdp.é"_s);
        search()->setText(u"p.É"_s);
        tap(u"fdp.é"_s);
        QStringList lines;
        for (const auto *line : picker->view()->findChildren<QLabel *>())
            lines.append(line->text());
        QVERIFY(lines.contains(u"fdp.é"_s));
        QCOMPARE(picker->selection(), QStringList(decodeFileName(file)));
        picker->accept();
        QTRY_COMPARE(delegate->heard, QStringList(u"fdp.é"_s));
        QCOMPARE(DocumentBrowser::firstFolder(), decodeFileName(folder));
    }

    void picksAcrossFoldersInOrder()
    {
        present();
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
        show(picker);
        QTRY_COMPARE(names(), QStringList({u"b.docx"_s, u"z.pdf"_s}));
    }

    void picksOnlyOneWithoutMultipleSelection()
    {
        present({u"public.item"_s}, false);
        picker->accept(); // nothing is selected
        tap(u"c.mp3"_s);
        tap(u"b.docx"_s);
        QCOMPARE(picker->selection(), QStringList(root->filePath(u"b.docx"_s)));
        const QString mp3 = item(u"c.mp3"_s).data(Qt::AccessibleDescriptionRole).toString();
        QVERIFY(!mp3.contains(u"Selected"_s));
        picker->accept();
        QTRY_COMPARE(delegate->heard, QStringList(u"b.docx"_s));
    }

    void searchesAsOneTypes()
    {
        present();
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
        present();
        press(Qt::Key_Return); // into the folder, which is the first
        QTRY_COMPARE(names(), QStringList({u"b.docx"_s, u"z.pdf"_s}));
        press(Qt::Key_Backspace);
        QTRY_COMPARE(names().size(), 7);
        QCOMPARE(list()->currentIndex().data(), u"folder"_s); // where one came from
        press(Qt::Key_Return);
        QTRY_COMPARE(names().size(), 2);
        press(Qt::Key_Up, Qt::AltModifier);
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
        present();
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
        present();
        tap(u"b.docx"_s);
        const auto told = [this](const QString &name) {
            return item(name).data(Qt::AccessibleDescriptionRole).toString();
        };
        const QLocale locale;
        const QString size = locale.formattedDataSize(5, 1, QLocale::DataSizeSIFormat);
        QCOMPARE(told(u"b.docx"_s), size + u", "_s +
                                        locale.toString(QDate(2001, 2, 3), QLocale::ShortFormat) +
                                        u", Selected"_s);
        const QFileInfo folder(root->filePath(u"folder"_s));
        QCOMPARE(told(u"folder"_s),
                 locale.toString(folder.lastModified().time(), QLocale::ShortFormat));
    }

    void goesAlongThePath()
    {
        write(u"Documents/a.txt"_s); // a place, which is not above the next
        write(u"Documents 2/deep/a.txt"_s);
        present();
        QSignalSpy ready(picker->view(), SIGNAL(ready()));
        picker->setDirectory(root->path()); // read by then, and given up
        QTest::qSleep(50);
        picker->setDirectory(root->filePath(u"Documents 2/deep"_s));
        QTRY_COMPARE(names(), QStringList(u"a.txt"_s));
        QCOMPARE(ready.size(), 1);
        button(u"Documents 2"_s)->click();
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
        present();
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

    void fitsTheNarrowestScreen_data() { test::addCases({"en", "de", "es", "fr", "ja", "ko"}); }
    void fitsTheNarrowestScreen()
    {
        QFETCH(QString, what);
        const auto speaks = test::speak(what);
        window->resize(320, 568);
        for (const bool multiple : {false, true}) {
            present({u"public.item"_s}, multiple);
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
        present();
        QDir(root->filePath(u"gone"_s)).removeRecursively();
        tap(u"gone"_s);
        QTRY_VERIFY(!list()->isVisible());
        QVERIFY(names().isEmpty());
        button(u"Folder above"_s)->click();
        QTRY_COMPARE(names().size(), 7);
    }

    void answersFromOutside()
    {
        present({u"com.adobe.pdf"_s});
        QSignalSpy shown(picker.get(), &UIDocumentPickerViewController::selectionShown);
        QStringList paths;
        for (const QString &name : {u"folder/z.pdf"_s, u"gone"_s, u"invoice"_s})
            paths.append(root->filePath(name));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot pick .*gone"_s));
        picker->showSelection(paths);
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(picker->selection(), QStringList({paths.at(0), paths.at(2)}));
        picker->accept();
        QCOMPARE(delegate->heard, QStringList({u"z.pdf"_s, u"invoice"_s}));
    }

    void outlivesItsDelegate()
    {
        present();
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
