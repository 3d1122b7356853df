#include "platform/ui/layout_guide.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_navigation_bar.h"
#include "platform/ui/ui_navigation_controller.h"
#include "platform/ui/ui_tab_bar_controller.h"
#include "support/data_table.h"
#include "support/screen_test.h"

#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

/// Writes down its life.
class Screen : public UIViewController
{
public:
    Screen(QString name, QString &log) : m_name(std::move(name)), m_log(log) {}
    ~Screen() override { note("released"); }

    void viewDidLoad() override { note("loaded"); }
    void viewWillAppear(bool) override { note("will appear"); }
    void viewDidAppear(bool) override { note("appeared"); }
    void viewWillDisappear(bool) override { note("will go"); }
    void viewDidDisappear(bool) override { note("gone"); }

private:
    void note(const char *what) { m_log += m_name + u' ' + QLatin1String(what) + u", "_s; }
    QString m_name;
    QString &m_log;
};

} // namespace

class PresentationTest : public ScreenTest
{
    Q_OBJECT

private slots:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"."_s));
        openWindow();
        page = screen("root");
        window->setRootViewController(page);
        m_log.clear();
    }
    void cleanup() { closeWindow(); }

    void aScreenLivesThroughPresentationAndDismissalInOrder_data()
    {
        test::addCases({"sliding", "with reduced motion"});
    }
    void aScreenLivesThroughPresentationAndDismissalInOrder()
    {
        QFETCH(QString, what);
        setMotionReduced(what != u"sliding");
        QSignalSpy appeared(window.get(), &UIWindow::screenDidAppear);
        page->present(screen("a"), true, note("presented"));
        QCOMPARE(m_log, u"a loaded, a will appear, "_s);
        QVERIFY(page->presentedViewController()->isBeingPresented());
        QTRY_COMPARE(m_log, u"a loaded, a will appear, a appeared, presented, "_s);
        QCOMPARE(appeared.count(), 1);
        QCOMPARE(top()->mapTo(window.get(), QPoint()), QPoint());

        m_log.clear();
        page->presentedViewController()->dismiss(true, note("dismissed"));
        QTRY_COMPARE(m_log, u"a will go, a gone, dismissed, a released, "_s);
        QVERIFY(!page->presentedViewController());
    }

    void onlyAFullScreenStyleSendsThePresenterAway()
    {
        auto full = screen("full");
        full->modalPresentationStyle = UIModalPresentationStyle::fullScreen;
        show(full);
        QVERIFY(m_log.contains(u"root gone"));
        m_log.clear();
        page->dismiss(false);
        QTRY_VERIFY(m_log.contains(u"root appeared"));
    }

    void screensThatAreAskedForAtOnceAllCome()
    {
        page->present(screen("a"), true, note("a is there"));
        page->present(screen("b"), true, note("b is there"));
        page->presentedViewController()->present(screen("c"), true, note("c is there"));
        QTRY_VERIFY(m_log.contains(u"c is there"));
        QCOMPARE(m_log.split(u", "_s).filter(u"is there"_s).join(u", "_s),
                 u"a is there, b is there, c is there"_s);
        QCOMPARE(UIApplication::topViewController(page.get()), window->topMostViewController());

        page->dismiss(true, note("all gone")); // from the lowest: everything goes
        QTRY_VERIFY(m_log.contains(u"c released"));
        QVERIFY(m_log.indexOf(u"c gone") < m_log.indexOf(u"a gone"));
        QCOMPARE(m_log.count(u"all gone"_s), 1);
        QCOMPARE(UIApplication::topViewController(page.get()), page.get());
    }

    void aScreenAskedForWhileItsPresenterLeavesComesFromWhatIsLeft()
    {
        auto a = screen("a");
        show(a);
        page->dismiss(true);
        a->present(screen("b"), true, note("presented"));
        a.reset();
        QTRY_VERIFY(m_log.contains(u"presented"));
        QCOMPARE(page->presentedViewController()->presentingViewController(), page.get());
    }

    void doneTappedTwiceDismissesOneScreenOnly()
    {
        auto a = screen("a");
        auto b = screen("b");
        page->present(a, false);
        a->present(b, false);
        show(screen("c"));
        b->dismiss(true, note("one"));
        b->dismiss(true, note("two"));
        QTRY_VERIFY(m_log.contains(u"two"));
        QTest::qWait(20);
        QVERIFY(!b->presentedViewController());
        QCOMPARE(a->presentedViewController(), b);
    }

    void aScreenThatIsTakenBackGoesOrDoesNotCome()
    {
        setMotionReduced(false);
        auto a = screen("a");
        auto c = screen("c");
        for (const auto &each : {a, screen("b"), c})
            page->present(each, true);
        c->withdraw(); // it waits for the others
        a->withdraw(); // it is on its way; what comes above it goes with it
        QTRY_VERIFY(m_log.contains(u"a gone"));
        QTRY_COMPARE(window->topMostViewController(), page.get());
        QVERIFY(!window->isInTransition() && !m_log.contains(u"c loaded"));
        page->present(a, false, note("never"));
        QTest::qWait(20);
        QVERIFY(!m_log.contains(u"never"));
    }

    void aCoveredScreenLeavesTheOthersInPlace()
    {
        auto *field = new QLineEdit;
        addSubview(page->view(), field);
        field->setFocus();
        auto a = screen("a");
        auto b = screen("b");
        a->removeFromBelow(); // it lies nowhere yet
        page->present(a, false);
        show(b);
        b->removeFromBelow(); // nothing lies above it
        a->removeFromBelow();
        QCOMPARE(page->presentedViewController(), b);
        QCOMPARE(b->presentingViewController(), page.get());
        QVERIFY(!a->presentedViewController() && !a->presentingViewController());
        QVERIFY(m_log.contains(u"a gone") && !m_log.contains(u"b gone"));
        page->dismiss(false);
        QTRY_COMPARE(QApplication::focusWidget(), field);
    }

    void iconsAreThereInAHostThatSetsNoTheme()
    {
        QVERIFY(!tintedIcon(u"go-next"_s, 24, Qt::black, 1.0).isNull());
    }

    void whatCannotBePresentedIsRefused()
    {
        auto a = screen("a");
        show(a);
        const auto refuse = [this](UIViewController &from,
                                   const std::shared_ptr<UIViewController> &what,
                                   const QString &why) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(why));
            from.present(what, false, note("never"));
        };
        refuse(*page, screen("b"), u"already presents another"_s);
        refuse(*a, page, u"in use"_s);
        refuse(*screen("lost"), screen("c"), u"in no window"_s);
        QTest::qWait(20);
        QVERIFY(!m_log.contains(u"never"));
    }

    void focusAndKeysStayInTheTopMostScreen()
    {
        auto *below = new QPushButton(page->view());
        below->show();
        below->setFocus();
        auto a = screen("a");
        auto *first = new QLineEdit(a->view());
        auto *second = new QPushButton(a->view());
        QSignalSpy clicked(second, &QPushButton::clicked);
        page->present(a, true, note("presented"));
        press(Qt::Key_Escape); // while it comes: swallowed
        QTRY_VERIFY(m_log.contains(u"presented"));
        QCOMPARE(QApplication::focusWidget(), first);
        press(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), second);
        press(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), first);
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), second);
        press(Qt::Key_Return);
        QCOMPARE(clicked.count(), 1);
        below->setFocus(); // as a page's script may do
        QTRY_COMPARE(QApplication::focusWidget(), second);
        press(Qt::Key_Escape);
        QTRY_VERIFY(m_log.contains(u"a gone"));
        QCOMPARE(QApplication::focusWidget(), below);
    }

    void childrenAppearWithTheirParentAndPresentThroughTheirAncestor()
    {
        auto child = screen("child");
        page->addChild(child);
        addSubview(page->view(), child->view());
        child->didMove(page.get());
        QCOMPARE(m_log, u"child loaded, child will appear, child appeared, "_s);
        child->present(screen("a"), false, note("presented"));
        QTRY_VERIFY(m_log.contains(u"presented"));
        QCOMPARE(child->presentedViewController()->presentingViewController(), page.get());
        m_log.clear();
        child->removeFromParent();
        child.reset();
        QTRY_COMPARE(m_log, u"child will go, child gone, child released, "_s);
    }

    void aNewRootEndsWhatTheOldOnePresented()
    {
        page->present(screen("a"), true, note("presented"));
        page.reset();
        window->setRootViewController(screen("other"));
        QVERIFY(m_log.contains(u"presented"));
        QTRY_VERIFY(m_log.contains(u"root released") && m_log.contains(u"a released"));
        QVERIFY(m_log.contains(u"other appeared"));
    }

    void theTopScreenIsFoundThroughContainers()
    {
        auto tabs = std::make_shared<UITabBarController>();
        QCOMPARE(UIApplication::topViewController(tabs.get()), tabs.get());
        QCOMPARE(UIApplication::topViewController(nullptr), nullptr);
        auto leaf = screen("leaf");
        auto navigation = std::make_shared<UINavigationController>(screen("first"));
        tabs->setViewControllers({screen("other"), navigation});
        window->setRootViewController(tabs);
        m_log.clear();
        tabs->setSelectedIndex(1);
        QCOMPARE(m_log,
                 u"other will go, other gone, first loaded, first will appear, first appeared, "_s);
        navigation->pushViewController(leaf, false);
        QCOMPARE(UIApplication::topViewController(tabs.get()), leaf.get());
        QCOMPARE(leaf->view()->height(), 844 - 2 * metrics::tapTarget);
        auto a = screen("a");
        leaf->present(a, false);
        QCOMPARE(UIApplication::topViewController(tabs.get()), a.get());
        QTRY_VERIFY(!window->isInTransition());
        QCOMPARE(navigation->popViewController(false), leaf);
        QVERIFY(!navigation->popViewController(false));
        QTRY_VERIFY(m_log.contains(u"leaf gone"));
    }

    void busyMarkTurnsOrPulses()
    {
        // How dark a quarter of a ring is at its start and on the other side.
        const auto drawn = [](double turns) {
            QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            painter.setPen(QPen(Qt::black, 6));
            drawBusyArc(painter, QRectF(4, 4, 32, 32), 90, turns);
            return QPair(qAlpha(image.pixel(31, 8)), qAlpha(image.pixel(8, 31)));
        };
        QCOMPARE(drawn(0.0), QPair(255, 0));
        QVERIFY(drawn(1.0).first < 100 && drawn(2.0) == drawn(0.0));
        QVERIFY(drawn(0.5).first > 100 && drawn(0.5).second == 0);
        setMotionReduced(false);
        QCOMPARE(drawn(0.5), QPair(0, 255));
    }

    void pinnedWidgetsFollowTheSafeArea()
    {
        auto *pinned = new QWidget;
        addSubview(page->view(), pinned);
        pinToSafeArea(pinned, QMargins(0, 50, 0, 0));
        QCOMPARE(pinned->geometry(), QRect(0, 50, 390, 794));
        window->setSafeAreaInsets(QMargins(0, 47, 0, 34));
        QCOMPARE(page->safeAreaInsets(), QMargins(0, 47, 0, 34));
        QCOMPARE(pinned->geometry(), QRect(0, 97, 390, 713));
        window->resize(844, 390);
        QTRY_COMPARE(pinned->geometry(), QRect(0, 97, 844, 259));
        QCOMPARE(safeAreaInsets(pinned), QMargins()); // it lies clear of the edges
    }

    void barButtonsActOnLiveTargetsOnly()
    {
        UINavigationBar bar(QRect(0, 0, 390, 44));
        QObject target;
        int taps = 0;
        const auto action = [&taps](QObject *sender) { taps += sender != nullptr; };
        auto gone = std::make_unique<QObject>();
        auto item = std::make_shared<UINavigationItem>(u"report.pdf"_s);
        item->leftBarButtonItem =
            std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::done, &target, action);
        item->rightBarButtonItem =
            std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::action, gone.get(), action);
        bar.setItems({item}, true);
        for (const auto &button : {item->leftBarButtonItem, item->rightBarButtonItem}) {
            QVERIFY(button->view()->width() >= 44 && button->view()->height() >= 44);
            gone.reset();
            QTest::mouseClick(button->view(), Qt::LeftButton);
        }
        QCOMPARE(taps, 1);
        item->leftBarButtonItem->setEnabled(false);
        QTest::mouseClick(item->leftBarButtonItem->view(), Qt::LeftButton);
        item->leftBarButtonItem->perform();
        QCOMPARE(taps, 1);
    }

private:
    std::shared_ptr<Screen> screen(const char *name)
    {
        return std::make_shared<Screen>(QString::fromLatin1(name), m_log);
    }
    UIViewController::Completion note(const char *what)
    {
        return [this, what] { m_log += QLatin1String(what) + u", "_s; };
    }

    QString m_log;
};

QTEST_MAIN(PresentationTest)
#include "tst_presentation.moc"
