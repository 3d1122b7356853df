#include "support/captured_output.h"
#include "toast/toast_bubble.h"
#include "toast/toast_fade.h"
#include "toast/toast_spinner.h"
#include "toast_test_support.h"

#include <QPropertyAnimation>
#include <QTransform>

using namespace zelkam;
using namespace zelkam::test;

class ToastPresentationTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetToasts(); }

    void lifeOfAToast()
    {
        Host host({375, 667});
        new QWidget(&host);
        const QPointer toast = host.toast(u"a"_s);
        QCOMPARE(host.children().last(), toast);
        QCOMPARE(alphaOf(toast), 0.0);
        QCOMPARE(ToastManager::shared().completion.toastView, &host);

        QVERIFY(!timerOf(toast));
        QTRY_VERIFY(timerOf(toast));
        QCOMPARE(alphaOf(toast), 1.0);
        QCOMPARE(timerOf(toast)->interval(), 3'600'000);
        hideToast(&host, toast);
        QVERIFY(!timerOf(toast)->isActive());
        QCOMPARE(host.active(), ToastArray{toast});
        QTRY_COMPARE(host.log, u"a."_s);
        QVERIFY(host.active().isEmpty());
        QTRY_VERIFY(!toast);
    }

    void eachGoesInItsTime()
    {
        Host host;
        for (const int time : {600, 200, 400, 201})
            host.toast(QString::number(time), std::chrono::milliseconds(time));
        hideToast(&host, host.toast(u"b"_s, 300ms));
        QTRY_COMPARE(host.log, u"b.200.201.400.600."_s);
    }

    void fadesEaseAndBeginWhereTheyAre()
    {
        ToastManager::shared().style.fadeDuration = 1h;
        Host host;
        QWidget *toast = host.toast(u"a"_s);
        const auto halfWay = [toast] {
            const auto fades = ToastEffect::of(toast)->findChildren<QPropertyAnimation *>();
            auto *fade = fades.last();
            for (const auto *earlier : fades) {
                if (earlier != fade && earlier->state() != QAbstractAnimation::Stopped)
                    return -1.0;
            }
            fade->setCurrentTime(fade->duration() / 2);
            return alphaOf(toast);
        };
        const double in = halfWay();
        QVERIFY(in > 0.6 && in < 0.8);
        hideToast(&host);
        const double out = halfWay() / in;
        QVERIFY(out > 0.6 && out < 0.8);
        QCOMPARE(toMilliseconds(1e12), std::numeric_limits<int>::max());
    }

    void reducedMotionKeepsTheOrder()
    {
        Host host;
        setMotionReduced(true);
        ToastManager::shared().style.fadeDuration = 1h;
        ToastManager::shared().isQueueEnabled = true;
        QWidget *first = host.toast(u"a"_s, 0s);
        host.toast(u"b"_s, 0s);
        QCOMPARE(alphaOf(first), 1.0);
        QCOMPARE(host.log, QString());
        QTRY_COMPARE(host.log, u"a.b."_s);
    }

    void missingContentIsPrinted()
    {
        Host host;
        bool called = false;
        const auto noteCall = [&called](bool) { called = true; };
        CapturedOutput output;
        makeToast(&host, {}, 0s, ToastPosition::top, {}, {}, {}, noteCall);
        makeToast(&host, {}, 0s, QPointF(1, 1), {}, {}, {}, noteCall);
        QCOMPARE(output.read(), "Error: message, title, and image are all nil\n"
                                "Error: message, title, and image cannot all be nil\n");
        QVERIFY(host.active().isEmpty() && !called);
    }

    void secondHideJoinsTheFirst()
    {
        Host host;
        host.show();
        ToastManager::shared().isQueueEnabled = true;
        QWidget *first = host.toast(u"a"_s);
        const QPointer second = host.toast(u"b"_s);
        host.toast(u"c"_s);
        hideToast(&host, second);
        QTest::mouseClick(first, Qt::LeftButton);
        QTest::mouseClick(first, Qt::LeftButton);
        hideToast(&host);
        hideAllToasts(&host, false, false);
        QTRY_COMPARE(host.active(), ToastArray{second});
        QTest::qWait(60);
        QCOMPARE(host.log, u"a!"_s);
        QCOMPARE(host.waiting().size(), 1);
    }

    void queueShowsOneByOne()
    {
        Host host;
        ToastManager::shared().isQueueEnabled = true;
        const QPointer first = host.toast(u"a"_s, 10ms);
        Host other;
        other.toast(u"x"_s);
        QWidget *second = host.toast(u"b"_s, 10ms); // the latest host again, though it waits
        QWidget *third = host.toast(u"c"_s);
        QCOMPARE(host.active(), ToastArray{first});
        QCOMPARE(host.waiting(), (ToastArray{second, third}));
        QVERIFY(second->parentWidget() != &host && !second->isVisible());
        QCOMPARE(second->property(ToastKeys::duration), QVariant(0.01));
        QCOMPARE(second->property(ToastKeys::point), QVariant(QPointF(200, 200)));
        QTRY_COMPARE(host.active(), ToastArray{second});
        QCOMPARE(host.log, u"a."_s);
        QTRY_COMPARE(host.active(), ToastArray{third});
        QCOMPARE(host.log, u"a.b."_s);
    }

    // A frame draws few of thousands; all of them are shown and time out.
    void manyToastsAreDrawnInPart()
    {
        Host host;
        for (int i = 0; i < 1000; ++i)
            host.toast(u"a"_s, i < 900 ? ToastDuration(1h) : 0s);
        const ToastArray all = host.active();
        QCOMPARE(all.size(), 1000);
        const auto drawn = [](const QPointer<QWidget> &toast) {
            return toast && !toast->isHidden();
        };
        QVERIFY(drawn(all.at(984)) && !drawn(all.at(983)));
        QCOMPARE(std::count_if(all.begin(), all.end(), drawn), 16);
        QTRY_COMPARE(host.active(), all.first(900));
        QVERIFY(drawn(all.at(884)) && !drawn(all.at(883)));
        host.show();
        host.resize(500, 500); // a covered one comes back where it belongs, below the newer ones
        delete all.at(890);
        QVERIFY(drawn(all.at(883)) && !drawn(all.at(882)));
        QCOMPARE(all.at(883)->geometry(), all.at(884)->geometry());
        const QObjectList children = host.children();
        QVERIFY(children.indexOf(all.at(883)) < children.indexOf(all.at(884)));
    }

    // Nor does a turn of the event loop have thousands to animate, to send away or to delete.
    void manyToastsGoInParts()
    {
        Host host;
        for (int i = 0; i < 1000; ++i)
            host.toast(u"a"_s, 0s);
        int moving = 0;
        for (QWidget *toast : host.active()) {
            const auto fades = ToastEffect::of(toast)->findChildren<QPropertyAnimation *>();
            for (const auto *fade : fades)
                moving += fade->state() == QAbstractAnimation::Running ? 1 : 0;
        }
        QCOMPARE(moving, 16);
        const auto goInParts = [](const auto &left) {
            for (qsizetype before = left(); before > 0;) {
                QCoreApplication::processEvents();
                const qsizetype now = left();
                QVERIFY(before - now <= 64);
                before = now;
            }
        };
        goInParts([&host] { return 1000 - host.log.size() / 2; });
        ToastManager::shared().isQueueEnabled = true;
        for (int i = 0; i < 1000; ++i)
            host.toast(u"a"_s);
        const ToastArray waiting = host.waiting();
        hideAllToasts(&host);
        goInParts([&waiting] { return waiting.size() - waiting.count(nullptr); });
    }

    void hideAll()
    {
        for (const bool clearQueue : {false, true}) {
            Host host;
            ToastManager::shared().isQueueEnabled = false;
            for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
                host.toast(name);
            const ToastArray later = host.active().mid(1);
            hideToast(&host); // the one that has been shown longest
            QTRY_COMPARE(host.log, u"a."_s);
            QCOMPARE(host.active(), later);
            ToastManager::shared().isQueueEnabled = true;
            const QPointer queued = host.toast(u"d"_s);
            QCOMPARE(host.active(), later);
            hideAllToasts(&host, false, clearQueue);
            QTRY_COMPARE(host.log, u"a.b.c."_s);
            QTRY_COMPARE(queued.isNull(), clearQueue);
            QCOMPARE(host.active().size(), clearQueue ? 0 : 1);
        }
    }

    // Of a toast that lies on one host and is sent away through another too, both lists are rid,
    // and both queues go on.
    void twoHostsHideOneToast()
    {
        ToastManager::shared().isQueueEnabled = true;
        for (const char *how : {"a tap first", "a tap second", "a tap without the latest host"}) {
            Host early;
            auto late = std::make_unique<Host>();
            QWidget *shared = early.toast(u"a"_s);
            const QPointer next = early.toast(u"b"_s);
            QWidget *other = late->toast(u"c"_s);
            const QPointer waiting = late->toast(u"d"_s);
            const bool tapFirst = !QByteArray(how).endsWith("second");
            if (QByteArray(how).endsWith("host"))
                late.reset();
            if (!tapFirst)
                hideToast(&early);
            QTest::mouseClick(shared, Qt::LeftButton);
            if (late && tapFirst)
                hideToast(&early);
            QTRY_COMPARE(early.active(), ToastArray{next});
            QVERIFY(!late || late->active() == (ToastArray{other, waiting}));
            QCOMPARE(early.log, tapFirst ? u"a!"_s : u"a."_s);
        }
    }

    void timersAndTapsGoToTheLatestHost()
    {
        Host early;
        Host late;
        early.show();
        QWidget *timed = early.toast(u"timed"_s, 10ms);
        QWidget *tapped = early.toast(u"tapped"_s);
        ToastManager::shared().isQueueEnabled = true;
        early.toast(u"queued"_s);
        late.toast(u"late"_s, 10ms);
        late.toast(u"next"_s);

        QTRY_COMPARE(late.log, u"late."_s);
        // The earlier host's timer has run out in vain.
        QTRY_VERIFY(timerOf(timed) && !timerOf(timed)->isActive());
        QCOMPARE(alphaOf(timed), 1.0);

        QTest::mouseClick(tapped, Qt::LeftButton);
        QTRY_COMPARE(early.log, u"tapped!"_s);
        QVERIFY(tapped->parentWidget() != &early);
        // It was the later host's list that it left, and whose queue went on.
        QCOMPARE(early.active(), (ToastArray{timed, tapped}));
        QCOMPARE(early.waiting().size(), 1);
    }

    void readyMadeWidget()
    {
        Host host({400, 800});
        auto made = std::make_unique<QWidget>();
        made->setFixedSize(101, 50);
        made->setParent(&host);
        new QWidget(&host);
        const QPointer toast = made.get();
        showToast(&host, std::move(made), 100ms, ToastPosition::bottom);
        QCOMPARE(host.children().last(), toast);
        // Its centre belongs at (200, 765); a widget lies on whole points.
        QCOMPARE(toast->geometry(), QRect(150, 740, 101, 50));
        host.show();
        host.resize(800, 400);
        QCOMPARE(toast->pos(), QPoint(350, qRound(350 * 740.0 / 750.0)));
        host.resize(400, 800);
        QCOMPARE(toast->pos(), QPoint(150, 740));
        QTRY_VERIFY(!toast);
        ToastManager::shared().isQueueEnabled = true;
        host.toast(u"a"_s);
        made = std::make_unique<QWidget>();
        made->show();
        showToast(&host, std::move(made));
        QVERIFY(!host.waiting().first()->isVisible());
        hideAllToasts(&host);
        QTRY_VERIFY(host.active().isEmpty());
        showToast(&host, nullptr);
        makeToast(nullptr, u"no host"_s);
        QVERIFY(host.active().isEmpty());
    }

    void oneActivityOfTheSharedStyle()
    {
        Host host({400, 800});
        makeToastActivity(&host, ToastPosition::center);
        const QWidget *view = activityOf(&host);
        QCOMPARE(view->geometry(), QRect(150, 350, 100, 100));
        QCOMPARE(QRectF(view->findChild<ToastSpinner *>()->geometry()).center(), QPointF(50, 50));

        makeToastActivity(&host, ToastPosition::top);
        QCOMPARE(host.findChildren<ToastBubble *>().size(), 1);
        QCOMPARE(view->y(), 350);

        // It keeps the share of free space above it, as toasts do.
        host.show();
        host.resize(800, 400);
        QCOMPARE(view->geometry(), QRect(350, 150, 100, 100));
    }

    void whileAnActivityFadesOutNoneIsMade()
    {
        Host host;
        hideToastActivity(&host);
        makeToastActivity(&host);
        const QPointer first = activityOf(&host);
        hideAllToasts(&host, false, true);
        QTest::qWait(60);
        QVERIFY(first);
        hideAllToasts(&host, true, true);
        makeToastActivity(&host);
        hideToastActivity(&host);
        QCOMPARE(activityOf(&host), first.data());
        QTRY_VERIFY(!first);
        QCOMPARE(host.property(ToastKeys::activityView), QVariant());

        makeToastActivity(&host);
        delete activityOf(&host);
        hideToastActivity(&host);
        ToastManager::shared().style.activitySize = QSizeF(60, 41);
        makeToastActivity(&host, QPointF(100, 120.5));
        QCOMPARE(activityOf(&host)->geometry(), QRect(70, 100, 60, 41));
    }

    void spinnerTurnsWhileItIsSeen()
    {
        Host host;
        makeToastActivity(&host);
        const auto *spinner = activityOf(&host)->findChild<ToastSpinner *>();
        host.show();
        QVERIFY(spinner->isAnimating());
        QTRY_COMPARE(alphaOf(activityOf(&host)), 1.0);
        const QImage before = host.grab().toImage();
        QTRY_VERIFY(host.grab().toImage() != before);
        host.hide();
        QVERIFY(!spinner->isAnimating());
    }

    void spinnerPulsesWhereMotionIsReduced()
    {
        setMotionReduced(true);
        Host host;
        makeToastActivity(&host);
        host.show();
        // Each spoke's middle. The brightest stays where it is and gets fainter.
        const auto spokes = [&host] {
            const QImage image = host.grab().toImage();
            QList<int> lights;
            for (int spoke = 0; spoke < 12; ++spoke) {
                const QPointF at = QTransform().rotate(spoke * 30.0).map(QPointF(0.0, -13.0));
                lights.append(qGray(image.pixel((QPointF(200, 200) + at).toPoint())));
            }
            return lights;
        };
        const QList<int> first = spokes();
        const auto brightest = std::max_element(first.begin(), first.end());
        QList<int> now;
        QTRY_VERIFY((now = spokes()).at(brightest - first.begin()) < *brightest - 50);
        QCOMPARE(std::max_element(now.begin(), now.end()) - now.begin(), brightest - first.begin());
    }
};

QTEST_MAIN(ToastPresentationTest)
#include "tst_toast_presentation.moc"
