#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_navigation_bar.h"
#include "platform/ui/ui_navigation_controller.h"
#include "platform/ui/ui_tab_bar_controller.h"
#include "platform/ui/ui_window.h"

#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace zelkam;

namespace {

/// Writes down its life.
class Screen : public UIViewController
{
public:
    Screen(QString name, QStringList &log) : m_name(std::move(name)), m_log(log) {}
    ~Screen() override { note("released"); }

    void viewDidLoad() override { note("loaded"); }
    void viewWillAppear(bool) override { note("will appear"); }
    void viewDidAppear(bool) override { note("appeared"); }
    void viewWillDisappear(bool) override { note("will go"); }
    void viewDidDisappear(bool) override { note("gone"); }

private:
    void note(const char *what) { m_log.append(m_name + u' ' + QLatin1String(what)); }
    QString m_name;
    QStringList &m_log;
};

} // namespace

class PresentationTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        setMotionReduced(true);
        m_log.clear();
        m_window = std::make_unique<UIWindow>();
        m_window->resize(390, 844);
        m_root = screen("root");
        m_window->setRootViewController(m_root);
        m_window->makeKeyAndVisible();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_log.clear();
    }
    void cleanup()
    {
        m_root.reset();
        m_window.reset();
    }

    void aScreenLivesThroughPresentationAndDismissalInOrder_data()
    {
        QTest::addColumn<bool>("moves");
        QTest::newRow("sliding") << true;
        QTest::newRow("with reduced motion") << false;
    }
    void aScreenLivesThroughPresentationAndDismissalInOrder()
    {
        QFETCH(bool, moves);
        setMotionReduced(!moves);
        QSignalSpy appeared(m_window.get(), &UIWindow::screenDidAppear);
        m_root->present(screen("a"), true, note("presented"));
        QCOMPARE(m_log, QStringList({QStringLiteral("a loaded"), QStringLiteral("a will appear")}));
        QVERIFY(m_root->presentedViewController()->isBeingPresented());
        QTRY_COMPARE(m_log,
                     QStringList({QStringLiteral("a loaded"), QStringLiteral("a will appear"),
                                  QStringLiteral("a appeared"), QStringLiteral("presented")}));
        QCOMPARE(appeared.count(), 1);
        QCOMPARE(m_root->presentedViewController()->view()->mapTo(m_window.get(), QPoint()),
                 QPoint());

        m_log.clear();
        m_root->presentedViewController()->dismiss(true, note("dismissed"));
        QTRY_COMPARE(m_log,
                     QStringList({QStringLiteral("a will go"), QStringLiteral("a gone"),
                                  QStringLiteral("dismissed"), QStringLiteral("a released")}));
        QVERIFY(!m_root->presentedViewController());
    }

    void onlyAFullScreenStyleSendsThePresenterAway()
    {
        auto full = screen("full");
        full->modalPresentationStyle = UIModalPresentationStyle::fullScreen;
        m_root->present(full, false, note("presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("presented")));
        QVERIFY(m_log.contains(QLatin1String("root gone")));
        m_log.clear();
        m_root->dismiss(false);
        QTRY_VERIFY(m_log.contains(QLatin1String("root appeared")));
    }

    void screensThatAreAskedForAtOnceAllCome()
    {
        m_root->present(screen("a"), true, note("a presented"));
        m_root->present(screen("b"), true, note("b presented"));
        m_root->presentedViewController()->present(screen("c"), true, note("c presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("c presented")));
        QCOMPARE(m_log.filter(QStringLiteral("presented")),
                 QStringList({QStringLiteral("a presented"), QStringLiteral("b presented"),
                              QStringLiteral("c presented")}));
        UIViewController *top = UIApplication::topViewController(m_root.get());
        QCOMPARE(top, m_window->topMostViewController());

        m_root->dismiss(true, note("all gone")); // from the lowest: everything goes
        QTRY_VERIFY(m_log.contains(QLatin1String("c released")));
        QVERIFY(m_log.indexOf(QLatin1String("c gone")) < m_log.indexOf(QLatin1String("a gone")));
        QCOMPARE(m_log.count(QStringLiteral("all gone")), 1);
        QCOMPARE(UIApplication::topViewController(m_root.get()), m_root.get());
    }

    void aScreenAskedForWhileItsPresenterLeavesComesFromWhatIsLeft()
    {
        auto a = screen("a");
        m_root->present(a, false, note("presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("presented")));
        m_root->dismiss(true);
        a->present(screen("b"), true, note("b presented"));
        a.reset();
        QTRY_VERIFY(m_log.contains(QLatin1String("b presented")));
        QCOMPARE(m_root->presentedViewController()->presentingViewController(), m_root.get());
    }

    void doneTappedTwiceDismissesOneScreenOnly()
    {
        auto a = screen("a");
        auto b = screen("b");
        m_root->present(a, false);
        a->present(b, false);
        m_root->present(screen("c"), false, note("c presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("c presented")));
        b->dismiss(true, note("one"));
        b->dismiss(true, note("two"));
        QTRY_VERIFY(m_log.contains(QLatin1String("two")));
        QTest::qWait(20);
        QVERIFY(!b->presentedViewController());
        QCOMPARE(a->presentedViewController(), b);
    }

    void aScreenThatIsTakenBackGoesOrDoesNotCome()
    {
        setMotionReduced(false);
        auto a = screen("a");
        auto b = screen("b");
        auto c = screen("c");
        for (const auto &each : {a, b, c})
            m_root->present(each, true);
        c->withdraw(); // it waits for the others
        a->withdraw(); // it is on its way; what comes above it goes with it
        QTRY_VERIFY(m_log.contains(QLatin1String("a gone")));
        QTRY_COMPARE(m_window->topMostViewController(), m_root.get());
        QVERIFY(!m_window->isInTransition() && !m_log.contains(QLatin1String("c loaded")));
        m_root->present(a, false, note("never"));
        QTest::qWait(20);
        QVERIFY(!m_log.contains(QLatin1String("never")));
    }

    void aCoveredScreenLeavesTheOthersInPlace()
    {
        auto *field = new QLineEdit;
        addSubview(m_root->view(), field);
        field->setFocus();
        auto a = screen("a");
        auto b = screen("b");
        a->removeFromBelow(); // it lies nowhere yet
        m_root->present(a, false);
        m_root->present(b, false, note("b presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("b presented")));
        b->removeFromBelow(); // nothing lies above it
        a->removeFromBelow();
        QCOMPARE(m_root->presentedViewController(), b);
        QCOMPARE(b->presentingViewController(), m_root.get());
        QVERIFY(!a->presentedViewController() && !a->presentingViewController());
        QVERIFY(m_log.contains(QLatin1String("a gone")) &&
                !m_log.contains(QLatin1String("b gone")));
        m_root->dismiss(false);
        QTRY_COMPARE(QApplication::focusWidget(), field);
    }

    void iconsAreThereInAHostThatSetsNoTheme()
    {
        QVERIFY(!tintedIcon(QStringLiteral("go-next"), 24, Qt::black, 1.0).isNull());
    }

    void whatCannotBePresentedIsRefused()
    {
        auto a = screen("a");
        m_root->present(a, false, note("presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("presented")));
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("already presents another")));
        m_root->present(screen("b"), false, note("never"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("in use")));
        a->present(m_root, false, note("never"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("in no window")));
        screen("lost")->present(screen("c"), false, note("never"));
        QTest::qWait(20);
        QVERIFY(!m_log.contains(QLatin1String("never")));
    }

    void focusAndKeysStayInTheTopMostScreen()
    {
        auto *below = new QPushButton(m_root->view());
        below->show();
        below->setFocus();
        auto a = screen("a");
        auto *first = new QLineEdit(a->view());
        auto *second = new QPushButton(a->view());
        QSignalSpy clicked(second, &QPushButton::clicked);
        m_root->present(a, true, note("presented"));
        QTest::keyClick(m_window->focusWidget(), Qt::Key_Escape); // while it comes: swallowed
        QTRY_VERIFY(m_log.contains(QLatin1String("presented")));
        QCOMPARE(QApplication::focusWidget(), first);
        QTest::keyClick(first, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), second);
        QTest::keyClick(second, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), first);
        QTest::keyClick(first, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), second);
        QTest::keyClick(second, Qt::Key_Return);
        QCOMPARE(clicked.count(), 1);
        below->setFocus(); // as a page's script may do
        QTRY_COMPARE(QApplication::focusWidget(), second);
        QTest::keyClick(second, Qt::Key_Escape);
        QTRY_VERIFY(m_log.contains(QLatin1String("a gone")));
        QCOMPARE(QApplication::focusWidget(), below);
    }

    void childrenAppearWithTheirParentAndPresentThroughTheirAncestor()
    {
        auto child = screen("child");
        m_root->addChild(child);
        addSubview(m_root->view(), child->view());
        child->didMove(m_root.get());
        QCOMPARE(m_log,
                 QStringList({QStringLiteral("child loaded"), QStringLiteral("child will appear"),
                              QStringLiteral("child appeared")}));
        child->present(screen("a"), false, note("presented"));
        QTRY_VERIFY(m_log.contains(QLatin1String("presented")));
        QCOMPARE(child->presentedViewController()->presentingViewController(), m_root.get());
        m_log.clear();
        child->removeFromParent();
        child.reset();
        QTRY_COMPARE(m_log,
                     QStringList({QStringLiteral("child will go"), QStringLiteral("child gone"),
                                  QStringLiteral("child released")}));
    }

    void aNewRootEndsWhatTheOldOnePresented()
    {
        m_root->present(screen("a"), true, note("presented"));
        m_root.reset();
        m_window->setRootViewController(screen("other"));
        QVERIFY(m_log.contains(QLatin1String("presented")));
        QTRY_VERIFY(m_log.contains(QLatin1String("root released")) &&
                    m_log.contains(QLatin1String("a released")));
        QVERIFY(m_log.contains(QLatin1String("other appeared")));
    }

    void theTopScreenIsFoundThroughContainers()
    {
        auto tabs = std::make_shared<UITabBarController>();
        QCOMPARE(UIApplication::topViewController(tabs.get()), tabs.get());
        QCOMPARE(UIApplication::topViewController(nullptr), nullptr);
        auto leaf = screen("leaf");
        auto navigation = std::make_shared<UINavigationController>(screen("first"));
        tabs->setViewControllers({screen("other"), navigation});
        m_window->setRootViewController(tabs);
        m_log.clear();
        tabs->setSelectedIndex(1);
        QCOMPARE(m_log,
                 QStringList({QStringLiteral("other will go"), QStringLiteral("other gone"),
                              QStringLiteral("first loaded"), QStringLiteral("first will appear"),
                              QStringLiteral("first appeared")}));
        navigation->pushViewController(leaf, false);
        QCOMPARE(UIApplication::topViewController(tabs.get()), leaf.get());
        QCOMPARE(leaf->view()->height(), 844 - 2 * metrics::tapTarget);
        auto a = screen("a");
        leaf->present(a, false);
        QCOMPARE(UIApplication::topViewController(tabs.get()), a.get());
        QTRY_VERIFY(!m_window->isInTransition());
        QCOMPARE(navigation->popViewController(false), leaf);
        QVERIFY(!navigation->popViewController(false));
        QTRY_VERIFY(m_log.contains(QLatin1String("leaf gone")));
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
        addSubview(m_root->view(), pinned);
        pinToSafeArea(pinned, QMargins(0, 50, 0, 0));
        QCOMPARE(pinned->geometry(), QRect(0, 50, 390, 794));
        m_window->setSafeAreaInsets(QMargins(0, 47, 0, 34));
        QCOMPARE(m_root->safeAreaInsets(), QMargins(0, 47, 0, 34));
        QCOMPARE(pinned->geometry(), QRect(0, 97, 390, 713));
        m_window->resize(844, 390);
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
        auto item = std::make_shared<UINavigationItem>(QStringLiteral("report.pdf"));
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
        QCOMPARE(taps, 1);
    }

private:
    std::shared_ptr<Screen> screen(const char *name)
    {
        return std::make_shared<Screen>(QString::fromLatin1(name), m_log);
    }
    UIViewController::Completion note(const char *what)
    {
        return [this, what] { m_log.append(QString::fromLatin1(what)); };
    }

    QStringList m_log;
    std::unique_ptr<UIWindow> m_window;
    std::shared_ptr<UIViewController> m_root;
};

QTEST_MAIN(PresentationTest)
#include "tst_presentation.moc"
