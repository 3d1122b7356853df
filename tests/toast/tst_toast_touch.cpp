#include "toast/toast_host.h"
#include "toast_test_support.h"

#include <QMouseEvent>
#include <QPushButton>

using namespace zelkam;
using namespace std::chrono_literals;

namespace {

/// Counts the presses that reach it.
class Host : public QWidget
{
public:
    Host()
    {
        resize(400, 400);
        setAttribute(Qt::WA_AcceptTouchEvents);
        show();
    }

    QWidget *toast(QPointF center)
    {
        makeToast(this, QStringLiteral("press me"), 1h, center, {}, {},
                  ToastManager::shared().style, [this](bool didTap) { taps += didTap ? 1 : 0; });
        return ToastHost::of(this).activeToasts()->last();
    }

    int presses = 0;
    int taps = 0;

protected:
    bool event(QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchEnd:
            ++presses;
            event->accept();
            return true;
        default:
            return QWidget::event(event);
        }
    }
};

} // namespace

class ToastTouchTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { test::resetToasts(); }

    void pressesOnAToast_data();
    void pressesOnAToast();
    void buttonOfAReadyMadeToast();
    void fingerElsewhereIsKeptOut();

private:
    QPointingDevice *m_screen = QTest::createTouchDevice();
};

void ToastTouchTest::pressesOnAToast_data()
{
    QTest::addColumn<QString>("gesture");
    QTest::addColumn<bool>("tapToDismiss");
    QTest::addColumn<bool>("isTap");
    const QPair<const char *, bool> gestures[] = {
        {"mouse", true},         {"mouse leaves", false}, {"mouse leaves and comes back", false},
        {"right button", false}, {"finger", true},        {"finger leaves", false},
        {"two fingers", false},  {"context menu", false},
    };
    for (const auto &[gesture, isTap] : gestures) {
        QTest::newRow(gesture) << QString::fromLatin1(gesture) << true << isTap;
        QTest::addRow("%s, tap to dismiss is off", gesture)
            << QString::fromLatin1(gesture) << false << false;
    }
}

void ToastTouchTest::pressesOnAToast()
{
    QFETCH(QString, gesture);
    QFETCH(bool, tapToDismiss);
    ToastManager::shared().isTapToDismissEnabled = tapToDismiss;
    Host host;
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QWidget *toast = host.toast(QPointF(200, 200));
    const QPoint inside(200, 200);
    const QPoint outside(200, 300);
    // To the window, so that Qt finds the receiver as it does for real input.
    QWindow *window = host.windowHandle();
    const auto mouse = [&](auto send, QPoint at) {
        send(window, Qt::LeftButton, Qt::KeyboardModifiers(), at, -1);
    };
    const auto press = [](auto... a) { QTest::mousePress(a...); };
    const auto release = [](auto... a) { QTest::mouseRelease(a...); };
    if (gesture.startsWith(QLatin1String("mouse"))) {
        mouse(press, inside);
        if (gesture.contains(QLatin1String("leaves")))
            QTest::mouseMove(window, outside);
        if (gesture.endsWith(QLatin1String("back")))
            QTest::mouseMove(window, inside);
        mouse(release, gesture.endsWith(QLatin1String("leaves")) ? outside : inside);
    } else if (gesture == QLatin1String("right button")) {
        QTest::mouseClick(window, Qt::RightButton, {}, inside);
    } else if (gesture == QLatin1String("context menu")) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
        QApplication::sendEvent(toast, &event);
    } else {
        QTest::touchEvent(window, m_screen).press(0, inside);
        if (gesture == QLatin1String("two fingers"))
            QTest::touchEvent(window, m_screen).stationary(0).press(1, inside + QPoint(5, 0));
        const bool leaves = gesture == QLatin1String("finger leaves");
        if (leaves)
            QTest::touchEvent(window, m_screen).move(0, outside);
        if (gesture == QLatin1String("two fingers"))
            QTest::touchEvent(window, m_screen).stationary(0).release(1, inside + QPoint(5, 0));
        QTest::touchEvent(window, m_screen).release(0, leaves ? outside : inside);
    }
    QTest::qWait(60);
    QCOMPARE(host.presses, 0);
    QTEST(host.taps == 1, "isTap");
    QCOMPARE(ToastHost::of(&host).activeToasts()->isEmpty(), host.taps == 1);
}

void ToastTouchTest::buttonOfAReadyMadeToast()
{
    Host host;
    auto toast = std::make_unique<QWidget>();
    toast->setFixedSize(200, 60);
    auto *button = new QPushButton(QStringLiteral("Undo"), toast.get());
    button->setGeometry(120, 10, 70, 40);
    int clicks = 0;
    connect(button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    showToast(&host, std::move(toast), 1h, QPointF(200, 200), [&host](bool) { ++host.taps; });
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(clicks, 1);
    QTest::qWait(60);
    QCOMPARE(host.taps, 0);
}

void ToastTouchTest::fingerElsewhereIsKeptOut()
{
    Host host;
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    host.toast(QPointF(200, 60));
    QWindow *window = host.windowHandle();
    QTest::touchEvent(window, m_screen).press(0, QPoint(200, 60));
    QTest::touchEvent(window, m_screen).stationary(0).press(1, QPoint(200, 350));
    QCOMPARE(host.presses, 0);
    QTest::touchEvent(window, m_screen).release(0, QPoint(200, 60)).release(1, QPoint(200, 350));
    QTest::touchEvent(window, m_screen).press(0, QPoint(200, 350));
    QTest::touchEvent(window, m_screen).release(0, QPoint(200, 350));
    QCOMPARE(host.presses, 2);
}

QTEST_MAIN(ToastTouchTest)
#include "tst_toast_touch.moc"
