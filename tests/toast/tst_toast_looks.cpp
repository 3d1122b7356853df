#include "toast/toast_effect.h"
#include "toast/toast_host.h"
#include "toast_test_support.h"

#include <QAbstractAnimation>
#include <QAccessible>
#include <QPaintEvent>
#include <QPainter>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <cmath>

using namespace zelkam;
using namespace std::chrono_literals;

namespace {

/// A white host that notes what of it is painted.
class Host : public QWidget
{
public:
    Host()
    {
        resize(400, 400);
        show();
    }

    QWidget *toast(const ToastStyle &style, const QString &message = {})
    {
        makeToast(this, message, 1h, QPointF(200, 200), {}, {}, style);
        QWidget *toast = ToastHost::of(this).activeToasts()->last();
        ToastEffect::of(toast)->findChild<QAbstractAnimation *>()->stop();
        ToastEffect::of(toast)->setAlpha(1.0);
        return toast;
    }

    /// The host in pixels of 1 / `ratio` points.
    QImage picture(int ratio)
    {
        QImage image(size() * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        render(&image);
        return image;
    }

    QRegion painted;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        painted += event->region();
        QPainter(this).fillRect(rect(), Qt::white);
    }
};

/// A bubble from (100, 100) to (300, 300) in a 400 x 400 host, without contents.
ToastStyle bigBubble()
{
    ToastStyle style = test::testStyle();
    style.horizontalPadding = 100.0;
    style.verticalPadding = 100.0;
    return style;
}

QColor at(const QImage &image, QPointF point)
{
    return image.pixelColor((point * image.devicePixelRatio()).toPoint());
}

void addRatios()
{
    QTest::addColumn<int>("ratio");
    for (int ratio : {1, 2, 3})
        QTest::addRow("%d pixels a point", ratio) << ratio;
}

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

} // namespace

class ToastLooksTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { test::resetToasts(); }

    void cornersAreSmooth_data() { addRatios(); }
    void cornersAreSmooth();
    void viewFadesAsAWhole_data() { addRatios(); }
    void viewFadesAsAWhole();
    void shadow_data() { addRatios(); }
    void shadow();
    void activityShadowHasItsColour();
    void imageKeepsItsAspectRatio_data() { addRatios(); }
    void imageKeepsItsAspectRatio();
    void fadePaintsTheBubbleAlone();
    void screenReaderIsTold();
};

void ToastLooksTest::cornersAreSmooth()
{
    QFETCH(int, ratio);
    Host host;
    ToastStyle style = bigBubble();
    style.backgroundColor = Qt::black;
    style.cornerRadius = 24.0;
    host.toast(style);
    const QImage image = host.picture(ratio);
    // Each pixel of the corner is as dark as the share of it that the circle covers.
    constexpr int samples = 8;
    for (int y = 0; y < 24 * ratio; ++y) {
        for (int x = 0; x < 24 * ratio; ++x) {
            int covered = 0;
            for (int s = 0; s < samples * samples; ++s) {
                const double dx = 24.0 - (x + (s % samples + 0.5) / samples) / ratio;
                const double dy = 24.0 - (y + (s / samples + 0.5) / samples) / ratio;
                covered += std::hypot(dx, dy) <= 24.0 ? 1 : 0;
            }
            const double expected = 255.0 * (1.0 - covered / double(samples * samples));
            const int grey = qGray(image.pixel(100 * ratio + x, 100 * ratio + y));
            QVERIFY2(isNear(grey, expected, 32),
                     qPrintable(QStringLiteral("%1, %2: %3").arg(x).arg(y).arg(grey)));
        }
    }
    QCOMPARE(at(image, QPointF(99, 200)), QColor(Qt::white));
    QCOMPARE(at(image, QPointF(100, 200)), QColor(Qt::black));
}

void ToastLooksTest::viewFadesAsAWhole()
{
    QFETCH(int, ratio);
    Host host;
    QWidget *toast = host.toast(ToastManager::shared().style, QStringLiteral("A"));
    // The letter is a box from 1 to 7 and 2 to 12 points in its cell; the cell is at (196, 192).
    const QPointF letter(200, 199);
    const QPointF ground(190, 188);
    QImage image = host.picture(ratio);
    QVERIFY(isNear(at(image, ground).red(), 51, 1));
    QCOMPARE(at(image, letter).red(), 255);
    // Half-way: a white letter on a white host stays white, it lets no ground shine through.
    ToastEffect::of(toast)->setAlpha(0.5);
    image = host.picture(ratio);
    QVERIFY(isNear(at(image, ground).red(), 153, 2));
    QVERIFY(isNear(at(image, letter).red(), 255, 2));
    ToastEffect::of(toast)->setAlpha(0.0);
    QCOMPARE(at(host.picture(ratio), ground), QColor(Qt::white));
}

void ToastLooksTest::shadow()
{
    QFETCH(int, ratio);
    Host host;
    ToastStyle style = bigBubble();
    style.backgroundColor = Qt::blue;
    style.displayShadow = true;
    style.shadowColor = Qt::red;
    style.shadowOffset = QSizeF(30, 0);
    QWidget *toast = host.toast(style);
    // The edge of the shadow lies at 330; its coverage falls as the normal distribution does.
    const auto expected = [](double points, double alpha) {
        return 255.0 * (1.0 - 0.8 * alpha * 0.5 * std::erfc(points / 6.0 / std::sqrt(2.0)));
    };
    for (double alpha : {1.0, 0.5}) {
        ToastEffect::of(toast)->setAlpha(alpha);
        const QImage image = host.picture(ratio);
        for (double points : {-20.0, -6.0, 0.0, 6.0, 12.0}) {
            const QColor pixel = at(image, QPointF(330 + points, 200));
            const double middle = points + 0.5 / ratio;
            QVERIFY2(isNear(pixel.red(), expected(middle, alpha), 4),
                     qPrintable(QStringLiteral("%1: %2").arg(points).arg(pixel.red())));
            QCOMPARE(pixel.red(), pixel.green());
        }
        QCOMPARE(at(image, QPointF(370, 200)), QColor(Qt::white));
        // The bubble itself keeps its colour.
        QCOMPARE(at(image, QPointF(200, 200)).blue(), 255);
        QVERIFY(isNear(at(image, QPointF(295, 200)).red(), 255 * (1.0 - alpha), 2));
    }
}

void ToastLooksTest::activityShadowHasItsColour()
{
    Host host;
    ToastStyle &style = ToastManager::shared().style;
    style.activityBackgroundColor = Qt::blue;
    style.displayShadow = true;
    style.shadowColor = Qt::red;
    style.shadowOffset = QSizeF(20, 0);
    setMotionReduced(true);
    makeToastActivity(&host);
    const QColor pixel = at(host.picture(1), QPointF(255, 200));
    QVERIFY(pixel.red() == 255 && pixel.green() < 80 && pixel.blue() < 80);
}

void ToastLooksTest::imageKeepsItsAspectRatio()
{
    QFETCH(int, ratio);
    Host host;
    QImage wide(400, 100, QImage::Format_RGB32);
    wide.fill(Qt::red);
    setMotionReduced(true);
    makeToast(&host, std::nullopt, 1h, QPointF(200, 200), {}, wide);
    // 80 x 20 in the middle of the 80 x 80 that the style allows.
    const QImage image = host.picture(ratio);
    QCOMPARE(at(image, QPointF(161, 191)), QColor(Qt::red));
    QCOMPARE(at(image, QPointF(238, 208)), QColor(Qt::red));
    QVERIFY(at(image, QPointF(200, 188)).red() < 60);
    QVERIFY(at(image, QPointF(200, 212)).red() < 60);
}

void ToastLooksTest::fadePaintsTheBubbleAlone()
{
    Host host;
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QTRY_VERIFY(!host.painted.isEmpty());
    QCoreApplication::processEvents();
    host.painted = {};
    makeToast(&host, QStringLiteral("Done"), 1h, QPointF(200, 200));
    const QWidget *toast = ToastHost::of(&host).activeToasts()->last();
    QTRY_VERIFY(toast->property(ToastKeys::timer).isValid());
    QCOMPARE(host.painted, QRegion(toast->geometry()));
}

void ToastLooksTest::screenReaderIsTold()
{
    // As a screen reader does when it connects. Qt has no public way.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    static QStringList said;
    QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
        const QAccessibleInterface *view = event->accessibleInterface();
        const QString text =
            view->text(QAccessible::Name) + QLatin1Char('/') + view->text(QAccessible::Description);
        if (event->type() == QAccessible::Alert && view->role() == QAccessible::AlertMessage)
            said.append(QStringLiteral("alert ") + text);
        if (event->type() == QAccessible::StateChanged && view->state().busy &&
            static_cast<QAccessibleStateChangeEvent *>(event)->changedStates().busy)
            said.append(QStringLiteral("busy ") + text);
    });
    Host host;
    makeToast(&host, QStringLiteral("Saved"), 1h, ToastPosition::top, QStringLiteral("File"));
    makeToast(&host, QStringLiteral("Only a message"));
    makeToastActivity(&host);
    QAccessible::installUpdateHandler(nullptr);
    QCOMPARE(said, (QStringList{
                       QStringLiteral("alert File/Saved"), QStringLiteral("alert Only a message/"),
                       QStringLiteral("alert In progress/"), QStringLiteral("busy In progress/")}));
}

QTEST_MAIN(ToastLooksTest)
#include "tst_toast_looks.moc"
