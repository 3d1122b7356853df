#include "toast_test_support.h"

#include <QContextMenuEvent>
#include <QPushButton>

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
        QTest::addColumn<QString>("gesture");
        QTest::addColumn<bool>("tapToDismiss");
        QTest::addColumn<bool>("isTap");
        for (const char *gesture : {"mouse", "mouse leaves", "mouse leaves and comes back",
                                    "right button", "finger", "finger leaves", "two fingers"}) {
            const QString name = QString::fromLatin1(gesture);
            QTest::newRow(gesture) << name << true << (name == u"mouse" || name == u"finger");
            QTest::addRow("%s, taps are off", gesture) << name << false << false;
        }
    }

    void pressesOnAToast()
    {
        QFETCH(QString, gesture);
        QFETCH(bool, tapToDismiss);
        ToastManager::shared().isTapToDismissEnabled = tapToDismiss;
        PressedHost host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        host.toast(u"press me"_s);
        const QPoint inside(200, 200);
        const QPoint outside(200, 300);
        // To the window, so that Qt finds the receiver as it does for real input.
        QWindow *window = host.windowHandle();
        const QPoint end = gesture.endsWith(u"leaves") ? outside : inside;
        if (gesture.startsWith(u"mouse")) {
            QTest::mousePress(window, Qt::LeftButton, {}, inside);
            if (gesture.contains(u"leaves"))
                QTest::mouseMove(window, outside);
            QTest::mouseMove(window, end);
            QTest::mouseRelease(window, Qt::LeftButton, {}, end);
        } else if (gesture == u"right button") {
            QTest::mouseClick(window, Qt::RightButton, {}, inside);
            QContextMenuEvent menu(QContextMenuEvent::Mouse, inside, inside);
            QApplication::sendEvent(host.active().first(), &menu);
        } else {
            QTest::touchEvent(window, m_screen).press(0, inside);
            if (gesture == u"two fingers") {
                QTest::touchEvent(window, m_screen).stationary(0).press(1, inside + QPoint(5, 0));
                QTest::touchEvent(window, m_screen).stationary(0).release(1, inside);
            }
            QTest::touchEvent(window, m_screen).move(0, end);
            QTest::touchEvent(window, m_screen).release(0, end);
        }
        QFETCH(bool, isTap);
        if (isTap)
            QTRY_COMPARE(host.log, u"press me!"_s);
        QTest::qWait(60);
        QCOMPARE(host.presses, 0);
        QCOMPARE(host.log.isEmpty(), !isTap);
        QCOMPARE(host.active().isEmpty(), isTap);
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
        int clicks = 0;
        connect(button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
        toast->resize(200, 60);
        showToast(&host, std::move(toast), 1h, QPointF(200, 200));
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::qWait(60);
        QCOMPARE(clicks, 1);
        QCOMPARE(host.active().size(), 1);
    }

    void fingerElsewhere_data()
    {
        QTest::addColumn<bool>("tapToDismiss");
        QTest::addColumn<bool>("onActivity");
        QTest::addColumn<int>("presses");
        QTest::newRow("is kept out by a toast that takes taps") << true << false << 0;
        QTest::newRow("is not kept out where taps are off") << false << false << 1;
        QTest::newRow("is not kept out by the activity bubble") << true << true << 1;
        QTest::newRow("is not kept out once the toast is hidden") << true << false << 1;
    }

    void fingerElsewhere()
    {
        QFETCH(bool, tapToDismiss);
        QFETCH(bool, onActivity);
        QFETCH(int, presses);
        ToastManager::shared().isTapToDismissEnabled = tapToDismiss;
        Host host;
        PressedHost neighbour;
        neighbour.setParent(&host);
        neighbour.setGeometry(0, 300, 400, 100);
        neighbour.show();
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        if (onActivity)
            makeToastActivity(&host);
        else
            host.toast(u"held"_s);
        const QPoint held(200, 200);
        const QPoint other(200, 350);
        QWindow *window = host.windowHandle();
        QTest::touchEvent(window, m_screen).press(0, held);
        if (presses == 1 && tapToDismiss && !onActivity)
            host.active().first()->hide();
        QTest::touchEvent(window, m_screen).stationary(0).press(1, other);
        QCOMPARE(neighbour.presses, presses);
        QTest::touchEvent(window, m_screen).release(0, held).release(1, other);
        neighbour.presses = 0;
        QTest::touchEvent(window, m_screen).press(0, other);
        QTest::touchEvent(window, m_screen).release(0, other);
        QCOMPARE(neighbour.presses, 2);
    }

private:
    QPointingDevice *m_screen = QTest::createTouchDevice();
};

QTEST_MAIN(ToastTouchTest)
#include "tst_toast_touch.moc"
