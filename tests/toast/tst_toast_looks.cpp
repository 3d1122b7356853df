#include "support/data_table.h"
#include "toast_test_support.h"

#include <QAccessible>
#include <QPaintEvent>
#include <QPainter>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <cmath>

using namespace zelkam;
using namespace zelkam::test;

namespace {

constexpr int ratios[] = {1, 2, 3}; // pixels a point

/// A white host that notes what of it is painted.
class WhiteHost : public Host
{
public:
    WhiteHost() { show(); }

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

QColor at(const QImage &image, double x, double y)
{
    return image.pixelColor((QPointF(x, y) * image.devicePixelRatio()).toPoint());
}

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

bool isLike(const QColor &a, const QColor &b, int tolerance)
{
    return isNear(a.red(), b.red(), tolerance) && isNear(a.green(), b.green(), tolerance) &&
           isNear(a.blue(), b.blue(), tolerance);
}

} // namespace

class ToastLooksTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        resetToasts();
        setMotionReduced(true);
    }

    // Each pixel of the corner is as dark as the share of it that the circle covers.
    void cornersAreSmooth()
    {
        WhiteHost host;
        useBigBubble(Qt::black);
        ToastManager::shared().style.cornerRadius = 24.0;
        host.toast(QString());
        constexpr int samples = 8;
        for (const int ratio : ratios) {
            const QImage image = host.picture(ratio);
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
                    QVERIFY2(isNear(grey, expected, 32), qPrintable(u"%1, %2"_s.arg(x).arg(y)));
                }
            }
            QCOMPARE(at(image, 99, 200), QColor(Qt::white));
            QCOMPARE(at(image, 100, 200), QColor(Qt::black));
        }
    }

    // A pixel is [x, y, color, tolerance]. In a message of "A" the letter is a box from 1 to 7 and
    // 2 to 12 points in its cell, which is at (196, 192). In a title of "AAA" each letter is one
    // from 1 to 9 and 3 to 15, the first cell is at (185, 200), and the bubble ends at 210.
    void isDrawn_data() { addRows({"toast/looks.json"}); }

    void isDrawn()
    {
        const Row row;
        ToastStyle &style = ToastManager::shared().style;
        style.titleColor = Qt::red;
        style.titleAlignment = TextAlignment::right;
        style.titleNumberOfLines = 1;
        style.displayShadow = row.is("shadow");
        style.shadowColor = Qt::red;
        style.shadowOffset = QSizeF(20, 0);
        style.activityBackgroundColor = QColor(row.text("activity"));
        style.activityIndicatorColor = Qt::green;
        QImage wide(400, 100, QImage::Format_RGB32);
        wide.fill(Qt::red);
        WhiteHost host;
        if (row["activity"].isString())
            makeToastActivity(&host);
        else
            makeToast(&host, row.textOrNone("message"), 1h, QPointF(200, 200),
                      row.textOrNone("title"),
                      row.is("image") ? std::optional(wide) : std::nullopt);
        auto *view = qobject_cast<QWidget *>(host.children().last());
        ToastEffect::of(view)->setAlpha(row["alpha"].toDouble(1.0));
        for (const int ratio : ratios) {
            const QImage image = host.picture(ratio);
            for (const QJsonValue pixel : row["pixels"].toArray()) {
                const QColor drawn = at(image, pixel[0].toDouble(), pixel[1].toDouble());
                QVERIFY2(isLike(drawn, QColor(pixel[2].toString()), pixel[3].toInt(2)),
                         qPrintable(drawn.name()));
            }
        }
    }

    // The edge of the shadow lies at 330; its coverage falls as the normal distribution does.
    void shadow()
    {
        WhiteHost host;
        useBigBubble(Qt::blue);
        useRedShadow(30);
        QWidget *toast = host.toast(QString());
        for (const int ratio : ratios) {
            for (double alpha : {1.0, 0.5}) {
                ToastEffect::of(toast)->setAlpha(alpha);
                const QImage image = host.picture(ratio);
                for (double points : {-20.0, -6.0, 0.0, 6.0, 12.0}) {
                    const QColor pixel = at(image, 330 + points, 200);
                    const double deviations = (points + 0.5 / ratio) / 6.0;
                    const double coverage = 0.5 * std::erfc(deviations / std::sqrt(2.0));
                    QVERIFY2(isNear(pixel.red(), 255.0 * (1.0 - 0.8 * alpha * coverage), 4),
                             qPrintable(u"%1: %2"_s.arg(points).arg(pixel.red())));
                    QCOMPARE(pixel.red(), pixel.green());
                }
                QCOMPARE(at(image, 370, 200), QColor(Qt::white));
                // The bubble itself keeps its colour.
                QCOMPARE(at(image, 295, 200).blue(), 255);
                QVERIFY(isNear(at(image, 295, 200).red(), 255 * (1.0 - alpha), 2));
            }
        }
    }

    void fadePaintsTheBubbleAlone()
    {
        setMotionReduced(false);
        WhiteHost host;
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QTRY_VERIFY(!host.painted.isEmpty());
        QCoreApplication::processEvents();
        host.painted = {};
        QWidget *toast = host.toast(u"Done"_s);
        QTRY_VERIFY(timerOf(toast));
        QCOMPARE(host.painted, QRegion(toast->geometry()));
    }

    void screenReaderIsTold()
    {
        // As a screen reader does when it connects. Qt has no public way.
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
        static QString said;
        QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
            const QAccessibleInterface *view = event->accessibleInterface();
            const QString text =
                view->text(QAccessible::Name) + u'/' + view->text(QAccessible::Description);
            if (event->type() == QAccessible::Alert && view->role() == QAccessible::AlertMessage)
                said += u"alert "_s + text + u'\n';
            if (event->type() == QAccessible::StateChanged && view->state().busy)
                said += u"busy "_s + text + u'\n';
        });
        WhiteHost host;
        makeToast(&host, u"Saved"_s, 1h, ToastPosition::top, u"File"_s);
        makeToast(&host, u"Only a message"_s);
        makeToastActivity(&host);
        QAccessible::installUpdateHandler(nullptr);
        QCOMPARE(said, u"alert File/Saved\nalert Only a message/\n"
                       "alert In progress/\nbusy In progress/\n"_s);
    }

private:
    /// A bubble from (100, 100) to (300, 300) when its text is empty.
    static void useBigBubble(const QColor &color)
    {
        ToastStyle &style = ToastManager::shared().style;
        style.backgroundColor = color;
        style.horizontalPadding = 100.0;
        style.verticalPadding = 100.0;
    }

    static void useRedShadow(double toTheRight)
    {
        ToastStyle &style = ToastManager::shared().style;
        style.displayShadow = true;
        style.shadowColor = Qt::red;
        style.shadowOffset = QSizeF(toTheRight, 0);
    }
};

QTEST_MAIN(ToastLooksTest)
#include "tst_toast_looks.moc"
