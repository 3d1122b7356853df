#include "support/data_table.h"
#include "toast_test_support.h"

#include <QContextMenuEvent>
#include <QPushButton>
#include <QSignalSpy>

using namespace zelkam;
using namespace zelkam::test;

namespace {

/// Counts the presses that reach it.
class PressedHost : public Host
{
public:
    PressedHost()
    {
        setAttribute(Qt::WA_AcceptTouchEvents);
        show();
    }

    int presses = 0;

protected:
    bool event(QEvent *event) override
    {
        const bool isPress = event->isPointerEvent() && event->type() != QEvent::Enter;
        if (!isPress && event->type() != QEvent::ContextMenu)
            return QWidget::event(event);
        ++presses;
        event->accept();
        return true;
    }
};

} // namespace

class ToastTouchTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetToasts(); }

    void pressesOnAToast_data()
    {
        addCases({"mouse", "mouse leaves", "mouse leaves and comes back", "right button", "finger",
                  "finger leaves", "two fingers"});
    }

    void pressesOnAToast()
    {
        QFETCH(QString, what);
        const QPoint inside(200, 200);
        const QPoint outside(200, 300);
        const QPoint end = what.endsWith(u"leaves") ? outside : inside;
        for (const bool tapToDismiss : {true, false}) {
            ToastManager::shared().isTapToDismissEnabled = tapToDismiss;
            PressedHost host;
            QVERIFY(QTest::qWaitForWindowExposed(&host));
            host.toast(u"press me"_s);
            QWindow *window = host.windowHandle();
            if (what.startsWith(u"mouse")) {
                QTest::mousePress(window, Qt::LeftButton, {}, inside);
                if (what.contains(u"leaves"))
                    QTest::mouseMove(window, outside);
                QTest::mouseMove(window, end);
                QTest::mouseRelease(window, Qt::LeftButton, {}, end);
            } else if (what == u"right button") {
                QTest::mouseClick(window, Qt::RightButton, {}, inside);
                QContextMenuEvent menu(QContextMenuEvent::Mouse, inside, inside);
                QApplication::sendEvent(host.active().first(), &menu);
            } else {
                touch(host).press(0, inside);
                if (what == u"two fingers") {
                    touch(host).stationary(0).press(1, inside + QPoint(5, 0));
                    touch(host).stationary(0).release(1, inside);
                }
                touch(host).move(0, end);
                touch(host).release(0, end);
            }
            const bool isTap = tapToDismiss && (what == u"mouse" || what == u"finger");
            if (isTap)
                QTRY_COMPARE(host.log, u"press me!"_s);
            QTest::qWait(60);
            QCOMPARE(host.presses, 0);
            QCOMPARE(host.log.isEmpty(), !isTap);
            QCOMPARE(host.active().isEmpty(), isTap);
        }
    }

    void pressOnTheOverhangGoesThrough()
    {
        PressedHost host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        makeToast(&host, {}, 1h, QPointF(200, 200), u"Title alone"_s);
        // The bubble ends at 210, the title at 220.
        QTest::mouseClick(host.windowHandle(), Qt::LeftButton, {}, QPoint(200, 215));
        QCOMPARE(host.presses, 2);
        QTest::mouseClick(host.windowHandle(), Qt::LeftButton, {}, QPoint(200, 205));
        QTRY_VERIFY(host.active().isEmpty());
        QCOMPARE(host.presses, 2);
    }

    void buttonOfAReadyMadeToast()
    {
        Host host;
        host.show();
        auto toast = std::make_unique<QWidget>();
        auto *button = new QPushButton(u"Undo"_s, toast.get());
        QSignalSpy clicked(button, &QPushButton::clicked);
        toast->resize(200, 60);
        showToast(&host, std::move(toast), 1h, QPointF(200, 200));
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::qWait(60);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(host.active().size(), 1);
    }

    // While one finger is held, another presses elsewhere.
    void fingerElsewhere_data()
    {
        addCases({"is kept out by a toast that takes taps", "is let through where taps are off",
                  "is let through by the activity bubble", "is let through by a hidden toast"});
    }

    void fingerElsewhere()
    {
        QFETCH(QString, what);
        ToastManager::shared().isTapToDismissEnabled = !what.endsWith(u"off");
        Host host;
        PressedHost neighbour;
        neighbour.setParent(&host);
        neighbour.setGeometry(0, 300, 400, 100);
        neighbour.show();
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        if (what.endsWith(u"bubble"))
            makeToastActivity(&host);
        else
            host.toast(u"held"_s);
        const QPoint held(200, 200);
        const QPoint other(200, 350);
        touch(host).press(0, held);
        if (what.endsWith(u"hidden toast"))
            host.active().first()->hide();
        touch(host).stationary(0).press(1, other);
        QCOMPARE(neighbour.presses, what.startsWith(u"is let through") ? 1 : 0);
        touch(host).release(0, held).release(1, other);
        neighbour.presses = 0;
        touch(host).press(0, other);
        touch(host).release(0, other);
        QCOMPARE(neighbour.presses, 2);
    }

private:
    /// To the window, so that Qt finds the receiver as it does for real input.
    QTest::QTouchEventSequence touch(const QWidget &host)
    {
        return QTest::touchEvent(host.windowHandle(), m_screen);
    }

    QPointingDevice *m_screen = QTest::createTouchDevice();
};

QTEST_MAIN(ToastTouchTest)
#include "tst_toast_touch.moc"
