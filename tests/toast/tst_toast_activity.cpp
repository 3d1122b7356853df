#include "toast/toast_bubble.h"
#include "toast/toast_spinner.h"
#include "toast_test_support.h"

#include <QTransform>

using namespace zelkam;
using namespace zelkam::test;

class ToastActivityTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetToasts(); }

    void oneBubbleOfTheSharedStyle()
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

    void whileItFadesOutNoneIsMade()
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

QTEST_MAIN(ToastActivityTest)
#include "tst_toast_activity.moc"
