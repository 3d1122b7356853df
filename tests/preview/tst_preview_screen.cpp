#include "platform/foundation/coder.h"
#include "platform/ui/ql_preview_controller.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_navigation_bar.h"
#include "preview/zelkam_mobile_contents_pre_view_vc.h"
#include "support/data_table.h"
#include "support/screen_test.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestPreviewScreen : public ScreenTest
{
    Q_OBJECT

private:
    QTemporaryDir folder;
    std::shared_ptr<ZelkamMobileContentsPreViewVC> screen;

    void make(const std::optional<URL> &file, bool share)
    {
        screen = std::make_shared<ZelkamMobileContentsPreViewVC>(NSCoder());
        QVERIFY(!screen->filePath && !screen->shareOpt && !screen->pluginObj.get());
        screen->modalPresentationStyle = UIModalPresentationStyle::overFullScreen;
        screen->filePath = file;
        screen->shareOpt = share;
    }
    void present(const std::optional<URL> &file, bool share)
    {
        make(file, share);
        show(screen);
    }
    URL file(const QString &name)
    {
        QFile written(folder.filePath(name));
        if (written.open(QIODevice::WriteOnly))
            written.write(QByteArray("A line.\n").repeated(500));
        return URL::fromFilePath(written.fileName());
    }
    QList<UINavigationBar *> bars() { return screen->view()->findChildren<UINavigationBar *>(); }

private slots:
    void init()
    {
        openWindow();
        window->setSafeAreaInsets(QMargins(0, 40, 0, 20));
    }
    void cleanup()
    {
        screen.reset();
        closeWindow();
        UIDevice::current().setUserInterfaceIdiom(UIUserInterfaceIdiom::phone);
    }

    void laysThePreviewUnderTheBar()
    {
        present(file(u"My Report ü.txt"_s), false);
        QCOMPARE(bars().size(), 1);
        const UINavigationBar *bar = bars().first();
        QCOMPARE(bar->geometry(), QRect(0, 40, 390, 44));
        QCOMPARE(bar->topItem()->title, u"My Report ü.txt"_s);
        QCOMPARE(bar->topItem()->titleElision, Qt::ElideMiddle);
        QCOMPARE(bar->topItem()->leftBarButtonItem->systemItem(), UIBarButtonSystemItem::done);
        QVERIFY(!bar->topItem()->rightBarButtonItem);
        QCOMPARE(screen->children().size(), 1);
        QCOMPARE(screen->children().first()->view()->geometry(), QRect(0, 90, 390, 734));
        window->resize(844, 390);
        QTRY_COMPARE(screen->children().first()->view()->geometry(), QRect(0, 90, 844, 280));
    }

    void namesCannotLie()
    {
        present(URL::fromFilePath(folder.filePath(u"photo_\u202Egpj.\u05D0"_s)), false);
        QCOMPARE(bars().first()->accessibleName(), u"\u2068photo_gpj.\u05D0\u2069"_s);
        // The one that says that the file is gone.
        QTRY_COMPARE(window->focusWidget()->accessibleName(), u"\u2068photo_gpj.\u05D0\u2069"_s);
    }

    void comesUpPaintedAndTakesKeysAtOnce()
    {
        make(file(u"long.txt"_s), true);
        page->present(screen, true);
        const auto bar = [this] { return screen->view()->grab({0, 40, 390, 44}).toImage(); };
        const QImage first = bar();
        QVERIFY(bars().isEmpty() && screen->children().isEmpty());
        QTRY_COMPARE(bars().size(), 1);
        QCOMPARE(bar(), first);
        QTRY_VERIFY(qobject_cast<QPlainTextEdit *>(window->focusWidget()));
        auto *view = static_cast<QPlainTextEdit *>(window->focusWidget());
        const auto moves = [view](Qt::Key key) {
            const int before = view->verticalScrollBar()->value();
            QTest::keyClick(view, key);
            return view->verticalScrollBar()->value() - before;
        };
        QCOMPARE_GT(moves(Qt::Key_PageDown), 20);
        QCOMPARE(moves(Qt::Key_Down), 1);
        QCOMPARE(moves(Qt::Key_Up), -1);
        QCOMPARE_GT(moves(Qt::Key_End), 100);
        QCOMPARE_LT(moves(Qt::Key_Home), -100);
        // Whoever tabs sees where the keys go.
        const auto edge = [view] { return view->parentWidget()->grab().toImage().pixel(0, 99); };
        const QRgb unmarked = edge();
        QTest::keyClick(view, Qt::Key_Tab);
        QCOMPARE(edge(), unmarked);
        QTest::keyClick(window->focusWidget(), Qt::Key_Backtab);
        QCOMPARE(window->focusWidget(), view);
        QVERIFY(edge() != unmarked);
    }

    void doneDismissesTheScreen()
    {
        present(file(u"a.txt"_s), false);
        bars().first()->topItem()->leftBarButtonItem->perform();
        QTRY_VERIFY(!page->presentedViewController());
        screen->onTapDone(nullptr); // nothing presents it any more
    }

    void shareOpensTheSheet_data()
    {
        test::addCases({"on a phone, with no anchor", "on a tablet, at the button"});
    }
    void shareOpensTheSheet()
    {
        QFETCH(QString, what);
        const bool tablet = what.startsWith(u"on a tablet");
        if (tablet)
            UIDevice::current().setUserInterfaceIdiom(UIUserInterfaceIdiom::pad);
        present(file(u"a.txt"_s), true);
        const auto share = bars().first()->topItem()->rightBarButtonItem;
        QCOMPARE(share->systemItem(), UIBarButtonSystemItem::action);
        share->perform();
        QTRY_VERIFY(screen->presentedViewController());
        const auto sheet =
            std::dynamic_pointer_cast<UIActivityViewController>(screen->presentedViewController());
        QVERIFY(sheet);
        QVERIFY(button(u"Copy File"_s)->isEnabled()); // there is something to share
        auto *popover = sheet->popoverPresentationController();
        QCOMPARE(popover != nullptr, tablet);
        if (popover)
            QCOMPARE(popover->sourceItem(), share.get());
        screen->dismiss(true);
        QTRY_VERIFY(!screen->presentedViewController());
    }

    void aSecondAppearanceBuildsASecondPreview()
    {
        present(file(u"a.txt"_s), false);
        screen->viewDidAppear(false);
        QCOMPARE(bars().size(), 2);
        QCOMPARE(screen->children().size(), 2);
        QVERIFY(screen->children().last()->view()->isAncestorOf(window->focusWidget()));
    }

    void theOldestOfManyGoes()
    {
        const auto shown = [this] { return int(window->findChildren<UINavigationBar *>().size()); };
        for (int count = 0; count <= ZelkamMobileContentsPreViewVC::mostPreviews; ++count) {
            QCOMPARE(shown(), count);
            make(file(u"a.txt"_s), false);
            window->topMostViewController()->present(screen, false);
            QTRY_VERIFY(bars().size() == 1 && !window->isInTransition());
        }
        QCOMPARE(shown(), int(ZelkamMobileContentsPreViewVC::mostPreviews));
    }

    void staysEmptyWithoutAFile()
    {
        present(std::nullopt, true);
        QVERIFY(bars().isEmpty());
        QVERIFY(screen->children().isEmpty());
    }
};

QTEST_MAIN(TestPreviewScreen)
#include "tst_preview_screen.moc"
