#include "toast/toast_effect.h"
#include "toast/toast_host.h"
#include "toast_test_support.h"

#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

using namespace zelkam;
using namespace std::chrono_literals;

namespace {

class Host : public QWidget
{
public:
    Host() { resize(375, 667); }

    ToastArray active() { return *ToastHost::of(this).activeToasts(); }
    ToastArray waiting() { return *ToastHost::of(this).queue(); }

    /// Shows a toast that adds "name." to `log` when it times out and "name tap." when tapped.
    QWidget *toast(const QString &name, ToastDuration duration = 1h)
    {
        makeToast(this, name, duration, ToastPosition::center, {}, {}, ToastManager::shared().style,
                  [this, name](bool didTap) {
                      log += didTap ? name + QStringLiteral(" tap.") : name + QLatin1Char('.');
                  });
        return waiting().isEmpty() ? active().last() : waiting().last();
    }

    QString log;
};

double alphaOf(QWidget *toast)
{
    return ToastEffect::of(toast)->alpha();
}

ToastTimer *timerOf(QWidget *toast)
{
    return toast->property(ToastKeys::timer).value<ToastTimer *>();
}

QByteArray printedBy(const std::function<void()> &action)
{
    QTemporaryFile file;
    if (!file.open())
        return "no file";
    std::fflush(stdout);
    const int saved = dup(STDOUT_FILENO);
    dup2(file.handle(), STDOUT_FILENO);
    action();
    dup2(saved, STDOUT_FILENO);
    close(saved);
    file.seek(0);
    return file.readAll();
}

} // namespace

class ToastPresentationTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { test::resetToasts(); }

    void lifeOfAToast();
    void motionReduced();
    void missingContentIsPrinted();
    void tapWhileFadingIn();
    void secondHideJoinsTheFirst();
    void withoutQueueToastsOverlap();
    void queueShowsOneByOne();
    void clearedQueueIsNeverShown();
    void headThatIsNoToastStopsTheQueue();
    void hideAll_data();
    void hideAll();
    void timersAndTapsGoToTheLatestHost();
    void readyMadeWidget();
    void relativePlaceFollowsTheHost();
};

void ToastPresentationTest::lifeOfAToast()
{
    Host host;
    ToastManager::shared().style.fadeDuration = 150ms;
    QWidget *sibling = new QWidget(&host);
    const QPointer toast = host.toast(QStringLiteral("a"), 100ms);
    QCOMPARE(toast->parentWidget(), &host);
    QCOMPARE(host.children().last(), toast);
    QVERIFY(sibling != toast);
    QCOMPARE(toast->geometry().center(), QRect(QPoint(0, 0), host.size()).center());
    QCOMPARE(alphaOf(toast), 0.0);
    QCOMPARE(ToastManager::shared().completion.toastView, &host);

    QTRY_VERIFY(alphaOf(toast) > 0.0 && alphaOf(toast) < 1.0);
    QVERIFY(!timerOf(toast));
    QTRY_VERIFY(timerOf(toast));
    QCOMPARE(alphaOf(toast), 1.0);
    QTRY_VERIFY(alphaOf(toast) < 1.0);
    QCOMPARE(host.active(), ToastArray{toast});
    QVERIFY(host.log.isEmpty());
    QTRY_COMPARE(host.log, QStringLiteral("a."));
    QVERIFY(host.active().isEmpty());
    QTRY_VERIFY(!toast);
}

void ToastPresentationTest::motionReduced()
{
    Host host;
    setMotionReduced(true);
    ToastManager::shared().style.fadeDuration = 1h;
    ToastManager::shared().isQueueEnabled = true;
    host.toast(QStringLiteral("a"), 0s);
    host.toast(QStringLiteral("b"), 0s);
    QCOMPARE(alphaOf(host.active().first()), 1.0);
    QVERIFY(host.log.isEmpty());
    QTRY_COMPARE(host.log, QStringLiteral("a.b."));
}

void ToastPresentationTest::missingContentIsPrinted()
{
    Host host;
    bool called = false;
    const auto completion = [&called](bool) { called = true; };
    const ToastStyle style;
    QCOMPARE(
        printedBy([&] { makeToast(&host, {}, 0s, ToastPosition::top, {}, {}, style, completion); }),
        "Error: message, title, and image are all nil\n");
    QCOMPARE(printedBy([&] { makeToast(&host, {}, 0s, QPointF(1, 1), {}, {}, style, completion); }),
             "Error: message, title, and image cannot all be nil\n");
    QVERIFY(host.active().isEmpty() && !called);
}

void ToastPresentationTest::tapWhileFadingIn()
{
    Host host;
    host.show();
    ToastManager::shared().style.fadeDuration = 100ms;
    QWidget *toast = host.toast(QStringLiteral("a"));
    QTest::mouseClick(toast, Qt::LeftButton);
    QVERIFY(host.log.isEmpty());
    // Fades back from where it stood; a tap in the meantime is the same dismissal.
    QTest::mouseClick(toast, Qt::LeftButton);
    QTRY_COMPARE(host.log, QStringLiteral("a tap."));
    QTest::qWait(50);
    QCOMPARE(host.log, QStringLiteral("a tap."));
}

void ToastPresentationTest::secondHideJoinsTheFirst()
{
    Host host;
    ToastManager::shared().isQueueEnabled = true;
    host.toast(QStringLiteral("a"));
    host.toast(QStringLiteral("b"));
    host.toast(QStringLiteral("c"));
    hideToast(&host);
    hideToast(&host);
    hideAllToasts(&host, false, false);
    QTRY_COMPARE(host.active().size() + host.log.size(), 3);
    QCOMPARE(host.log, QStringLiteral("a."));
    QCOMPARE(host.waiting().size(), 1);
}

void ToastPresentationTest::withoutQueueToastsOverlap()
{
    Host host;
    QWidget *first = host.toast(QStringLiteral("a"));
    QWidget *second = host.toast(QStringLiteral("b"));
    QCOMPARE(host.active(), (ToastArray{first, second}));
    hideToast(&host, second);
    hideToast(&host, nullptr);
    QTRY_COMPARE(host.log, QStringLiteral("b."));
    hideToast(&host);
    QTRY_COMPARE(host.log, QStringLiteral("b.a."));
    hideToast(&host);
}

void ToastPresentationTest::queueShowsOneByOne()
{
    Host host;
    ToastManager::shared().isQueueEnabled = true;
    const QPointer first = host.toast(QStringLiteral("a"), 10ms);
    QWidget *second = host.toast(QStringLiteral("b"), 10ms);
    QWidget *third = host.toast(QStringLiteral("c"), 1h);
    QCOMPARE(host.active(), ToastArray{first});
    QCOMPARE(host.waiting(), (ToastArray{second, third}));
    QVERIFY(second->parentWidget() != &host && !second->isVisible());
    QCOMPARE(second->property(ToastKeys::duration), QVariant(0.01));
    QCOMPARE(second->property(ToastKeys::point), QVariant(QPointF(187.5, 333.5)));
    QTRY_COMPARE(host.active(), ToastArray{second});
    QCOMPARE(host.log, QStringLiteral("a."));
    QCOMPARE(second->parentWidget(), &host);
    QTRY_COMPARE(host.active(), ToastArray{third});
}

void ToastPresentationTest::clearedQueueIsNeverShown()
{
    Host host;
    ToastManager::shared().isQueueEnabled = true;
    host.toast(QStringLiteral("a"), 10ms);
    const QPointer second = host.toast(QStringLiteral("b"));
    clearToastQueue(&host);
    QTRY_COMPARE(host.log, QStringLiteral("a."));
    QTRY_VERIFY(!second);
    QVERIFY(host.active().isEmpty());
    QCOMPARE(host.log, QStringLiteral("a."));
}

void ToastPresentationTest::headThatIsNoToastStopsTheQueue()
{
    Host host;
    ToastManager::shared().isQueueEnabled = true;
    host.toast(QStringLiteral("a"), 10ms);
    QWidget *second = host.toast(QStringLiteral("b"));
    host.toast(QStringLiteral("c"));
    second->setProperty(ToastKeys::duration, QStringLiteral("long"));
    QTRY_COMPARE(host.log, QStringLiteral("a."));
    QVERIFY(host.active().isEmpty());
    QCOMPARE(host.waiting().size(), 2);
}

void ToastPresentationTest::hideAll_data()
{
    QTest::addColumn<bool>("clearQueue");
    QTest::addColumn<QStringList>("shownAfterwards");
    QTest::newRow("the queue goes on") << false << QStringList{QStringLiteral("c")};
    QTest::newRow("the queue is dropped") << true << QStringList{};
}

void ToastPresentationTest::hideAll()
{
    QFETCH(bool, clearQueue);
    Host host;
    host.toast(QStringLiteral("a"));
    host.toast(QStringLiteral("b"));
    ToastManager::shared().isQueueEnabled = true;
    host.toast(QStringLiteral("c"));
    hideAllToasts(&host, false, clearQueue);
    QTRY_COMPARE(host.log, QStringLiteral("a.b."));
    QStringList shown;
    for (QWidget *toast : host.active())
        shown.append(toast->accessibleName());
    QTEST(shown, "shownAfterwards");
}

void ToastPresentationTest::timersAndTapsGoToTheLatestHost()
{
    Host early;
    Host late;
    early.show();
    QWidget *timed = early.toast(QStringLiteral("timed"), 10ms);
    QWidget *tapped = early.toast(QStringLiteral("tapped"));
    ToastManager::shared().isQueueEnabled = true;
    early.toast(QStringLiteral("queued"));
    late.toast(QStringLiteral("late"), 10ms);
    late.toast(QStringLiteral("next of late"));

    QTRY_COMPARE(late.log, QStringLiteral("late."));
    // The earlier host's timer has run out in vain.
    QTRY_VERIFY(timerOf(timed) && !timerOf(timed)->isActive());
    QCOMPARE(alphaOf(timed), 1.0);

    QTest::mouseClick(tapped, Qt::LeftButton);
    QTRY_COMPARE(early.log, QStringLiteral("tapped tap."));
    QVERIFY(tapped->parentWidget() != &early);
    // It was the later host's list that it left, and whose queue went on.
    QCOMPARE(early.active(), (ToastArray{timed, tapped}));
    QCOMPARE(early.waiting().size(), 1);
    hideAllToasts(&early, false, true);
    QTRY_VERIFY(early.active().isEmpty());
}

void ToastPresentationTest::readyMadeWidget()
{
    Host host;
    auto label = std::make_unique<QWidget>();
    label->setFixedSize(101, 50);
    const QPointer view = label.get();
    showToast(&host, std::move(label), 10ms, ToastPosition::bottom);
    // Its centre belongs at (187.5, 632); a widget lies on whole points.
    QCOMPARE(view->geometry(), QRect(137, 607, 101, 50));
    QTRY_VERIFY(!view);
    showToast(&host, nullptr);
    makeToast(nullptr, QStringLiteral("no host"));
    QVERIFY(host.active().isEmpty());
}

void ToastPresentationTest::relativePlaceFollowsTheHost()
{
    Host host;
    host.show();
    host.resize(400, 800);
    auto view = std::make_unique<QWidget>();
    view->setFixedSize(100, 50);
    QWidget *toast = view.get();
    showToast(&host, std::move(view), 1h, ToastPosition::bottom);
    QCOMPARE(toast->pos(), QPoint(150, 740));
    host.resize(800, 400);
    QCOMPARE(toast->pos(), QPoint(350, qRound(350 * 740.0 / 750.0)));
    host.resize(400, 800);
    QCOMPARE(toast->pos(), QPoint(150, 740));
}

QTEST_MAIN(ToastPresentationTest)
#include "tst_toast_presentation.moc"
