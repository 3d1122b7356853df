#include "platform/ui/shared_files.h"
#include "platform/ui/system_activities.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_navigation_bar.h"
#include "platform/ui/ui_window.h"
#include "support/sample_files.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>

using namespace zelkam;

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
        QCOMPARE(data->urls(), QList<QUrl>{QUrl::fromLocalFile(m_file)});
        QCOMPARE(data->data(QStringLiteral("x-special/gnome-copied-files")),
                 "copy\n" + QUrl::fromLocalFile(m_file).toEncoded());
    }

    void aCopyIsSavedWhereTheUserSays()
    {
        present();
        row(QStringLiteral("Save a Copy"))->click();
        QFileDialog *dialog = nullptr;
        QTRY_VERIFY((dialog = m_window->findChild<QFileDialog *>()) && dialog->isVisible());
        QCOMPARE(QFileInfo(dialog->selectedFiles().value(0)).fileName(),
                 QFileInfo(m_file).fileName());
        const QString target = m_folder.filePath(QStringLiteral("copy.txt"));
        dialog->findChild<QLineEdit *>()->setText(target);
        QMetaObject::invokeMethod(dialog, "accept");
        QTRY_VERIFY(m_outcome);
        QCOMPARE(*m_outcome, qMakePair(QStringLiteral("save-copy"), true));
        QFile copy(target);
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll().size(), QFileInfo(m_file).size());
    }

    void aCopyThatFailsLeavesWhatWasThere()
    {
        const QString target = m_folder.filePath(QStringLiteral("old.txt"));
        QVERIFY(sample::write(target, "old"));
        const QString pipe = m_folder.filePath(QStringLiteral("pipe"));
        ::mkfifo(QFile::encodeName(pipe).constData(), 0600);
        QVERIFY(!copyFile(m_folder.filePath(QStringLiteral("gone")), target).isEmpty());
        QVERIFY(!copyFile(pipe, target).isEmpty());
        QVERIFY(!copyFile(m_file, m_folder.filePath(QStringLiteral("no/such/folder"))).isEmpty());
        QFile old(target);
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("old"));
    }

    void whatCannotBeDoneIsGreyedOut()
    {
        QFile::remove(m_file);
        present({}, {std::make_shared<OwnActivity>()});
        QVERIFY(row(QStringLiteral("Own"))->isEnabled());
        for (const QString &title : {QStringLiteral("Save a Copy"), QStringLiteral("Copy File")})
            QVERIFY(!row(title)->isEnabled());
        row(QStringLiteral("Own"))->click();
        row(QStringLiteral("Own"))->click(); // while the sheet goes
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
        auto item = std::make_shared<UINavigationItem>(QStringLiteral("title"));
        item->rightBarButtonItem = std::make_shared<UIBarButtonItem>(
            UIBarButtonSystemItem::action, m_root.get(), [](QObject *) {});
        auto *bar = new UINavigationBar({0, 24, 1024, 44}, m_root->view());
        bar->setItems({item}, false);
        bar->show();
        present(item->rightBarButtonItem.get());
        QVERIFY(!row(QStringLiteral("Cancel"))->isVisible());
        const QPoint first =
            row(QStringLiteral("Open in Another App"))->mapTo(m_window.get(), QPoint());
        QVERIFY2(first.y() < 200 && first.x() > 600, "the popover is not at its button");
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
    QAbstractButton *row(const QString &title) const
    {
        const auto rows = m_sheet->view()->findChildren<QAbstractButton *>();
        const auto found =
            std::find_if(rows.begin(), rows.end(),
                         [&title](QAbstractButton *button) { return button->text() == title; });
        return found == rows.end() ? nullptr : *found;
    }

    QTemporaryDir m_folder;
    QString m_file;
    std::unique_ptr<UIWindow> m_window;
    std::shared_ptr<UIViewController> m_root;
    std::shared_ptr<UIActivityViewController> m_sheet;
    std::optional<QPair<QString, bool>> m_outcome;
};

QTEST_MAIN(ShareTest)
#include "tst_share.moc"
