#include "toast/toast_bubble.h"
#include "toast/toast_effect.h"
#include "toast/toast_spinner.h"
#include "toast_test_support.h"

#include <QSignalSpy>

using namespace zelkam;
using namespace std::chrono_literals;

class ToastActivityTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { test::resetToasts(); }

    void oneBubbleOfTheSharedStyle();
    void atAPoint();
    void whileItFadesOutNoneIsMade();
    void spinnerTurnsWhileItIsSeen();
};

namespace {

QWidget *activityView(QWidget *host)
{
    return host->property(ToastKeys::activityView).value<QPointer<QWidget>>();
}

} // namespace

void ToastActivityTest::oneBubbleOfTheSharedStyle()
{
    QWidget host;
    host.resize(400, 800);
    makeToastActivity(&host, ToastPosition::center);
    const QWidget *view = activityView(&host);
    QCOMPARE(view->geometry(), QRect(150, 350, 100, 100));
    QCOMPARE(qobject_cast<const ToastBubble *>(view)->cornerRadius(), 10.0);
    const QRect spinner = view->findChild<ToastSpinner *>()->geometry();
    QCOMPARE(QRectF(spinner).center(), QPointF(50, 50));

    makeToastActivity(&host, ToastPosition::top);
    QCOMPARE(host.findChildren<ToastBubble *>().size(), 1);
    QCOMPARE(view->y(), 350);

    // It keeps the share of free space above it, as toasts do.
    host.show();
    host.resize(800, 400);
    QCOMPARE(view->geometry(), QRect(350, 150, 100, 100));
}

void ToastActivityTest::atAPoint()
{
    QWidget host;
    host.resize(400, 800);
    ToastManager::shared().style.activitySize = QSizeF(60, 41);
    makeToastActivity(&host, QPointF(100, 120.5));
    QCOMPARE(activityView(&host)->geometry(), QRect(70, 100, 60, 41));
    hideToastActivity(&host);
    makeToastActivity(nullptr);
    hideToastActivity(nullptr);
}

void ToastActivityTest::whileItFadesOutNoneIsMade()
{
    QWidget host;
    hideToastActivity(&host);
    makeToastActivity(&host);
    const QPointer first = activityView(&host);
    hideAllToasts(&host, false, true);
    QVERIFY(!first->property("zelkam.toast.hiding").toBool());
    hideAllToasts(&host, true, true);
    makeToastActivity(&host);
    hideToastActivity(&host);
    QCOMPARE(activityView(&host), first.data());
    QTRY_VERIFY(!first && !activityView(&host));
    QCOMPARE(host.property(ToastKeys::activityView), QVariant());

    makeToastActivity(&host);
    delete activityView(&host);
    hideToastActivity(&host);
    makeToastActivity(&host);
    QVERIFY(activityView(&host));
}

void ToastActivityTest::spinnerTurnsWhileItIsSeen()
{
    QWidget host;
    host.resize(400, 400);
    makeToastActivity(&host);
    const auto *spinner = activityView(&host)->findChild<ToastSpinner *>();
    QVERIFY(!spinner->isAnimating());
    host.show();
    QVERIFY(spinner->isAnimating());
    QTRY_COMPARE(ToastEffect::of(activityView(&host))->alpha(), 1.0);
    const auto picture = [&] { return host.grab().toImage(); };
    const QImage before = picture();
    QTRY_VERIFY(picture() != before);
    host.hide();
    QVERIFY(!spinner->isAnimating());
    setMotionReduced(true);
    host.show();
    QVERIFY(!spinner->isAnimating());
}

QTEST_MAIN(ToastActivityTest)
#include "tst_toast_activity.moc"
