#include "support/data_table.h"
#include "toast/toast_bubble.h"
#include "toast/toast_label.h"
#include "toast_test_support.h"

#include <QAccessible>
#include <QDialog>
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

    void styleClampsFractions()
    {
        ToastStyle style;
        QVERIFY(style.titleFont.bold() && !style.messageFont.bold());
        for (auto *fraction : {&style.maxWidthPercentage, &style.maxHeightPercentage}) {
            QCOMPARE(double(*fraction = 2.0), 1.0);
            QCOMPARE(double(*fraction = -1.0), 0.0);
            QCOMPARE(double(*fraction = 0.5), 0.5);
            QVERIFY(std::isnan(*fraction = std::nan("")));
        }
    }

    // The device is 400 x 800.
    void centre_data() { addRows({"toast/places.json"}); }

    void centre()
    {
        const Row row;
        const QJsonValue place = row["inside"];
        const QRect inside(place[0].toInt(), place[1].toInt(), place[2].toInt(400),
                           place[3].toInt(800));
        Host device({400, 800});
        const QMargins insets = row.is("insets") ? QMargins(44, 47, 20, 34) : QMargins();
        device.setProperty("safeAreaInsets", QVariant::fromValue(insets));
        QWidget between(&device);
        between.setGeometry(inside.translated(0, -5));
        QWidget host(&between);
        host.setGeometry(0, 5, inside.width(), inside.height());
        QWidget toast;
        toast.resize(120, 50);
        QCOMPARE(centerPoint(ToastPosition(row.number("position")), &toast,
                             place.isArray() ? &host : &device),
                 QPointF(row["centre"][0].toDouble(), row["centre"][1].toDouble()));
        host.setProperty("safeAreaInsets", QVariant::fromValue(QMargins()));
        QCOMPARE(centerPoint(ToastPosition::top, &toast, &host).y(), 35.0);
        const QDialog dialog(&device);
        QCOMPARE(centerPoint(ToastPosition::top, &toast, &dialog).y(), 35.0);
    }

    void paddingComesFromTheSharedStyle()
    {
        ToastStyle own = ToastManager::shared().style;
        own.verticalPadding = 3.0;
        Host host({400, 800});
        ToastManager::shared().style.verticalPadding = 100.0;
        const auto toast = toastViewForMessage(&host, u"x"_s, {}, {}, own);
        QCOMPARE(centerPoint(ToastPosition::top, toast.view.get(), &host), QPointF(200, 111));
    }

    void relativePlaceIsKept()
    {
        const QSizeF toast(120, 50);
        const QSizeF host(400, 800);
        const QSizeF turned(800, 400);
        const FlexibleMargins middle({200, 400}, toast, host);
        QCOMPARE(middle.center(toast, turned), QPointF(400, 200));
        QCOMPARE(middle.center(toast, {100, 40}), QPointF(50, 20));
        QCOMPARE(FlexibleMargins({60, 25}, toast, toast).center(toast, turned), QPointF(400, 200));
    }

    // The host is 375 x 667: a label may be 300 x 533.6, which is 37 letters wide; 27 beside an
    // image. A place is [left, top, width, height].
    void geometry_data() { addRows({"toast/geometry.json"}); }

    void geometry()
    {
        const Row row;
        Host host({375, 667});
        const auto image =
            row.is("image") ? std::optional(QImage(40, 20, QImage::Format_RGB32)) : std::nullopt;
        const auto toast =
            toastViewForMessage(&host, row.textOrNone("message"), row.textOrNone("title"), image,
                                ToastManager::shared().style);
        QJsonArray children;
        for (const QWidget *child : toast.view->findChildren<QWidget *>())
            children.append(QJsonArray{child->x(), child->y(), child->width(), child->height()});
        QCOMPARE(children, row["children"].toArray());
        const QSizeF frame = qobject_cast<ToastBubble *>(toast.view.get())->frame().size();
        QCOMPARE(QSizeF(toast.view->size()), frame);
        QCOMPARE((QJsonArray{frame.width(), frame.height()}), row["bubble"].toArray());
    }

    void nullImageCountsAsGiven()
    {
        Host host;
        QCOMPARE(toastViewForMessage(&host, {}, {}, QImage(), {}).view->size(), QSize(20, 20));
    }

    // A letter is a high box, an ellipsis and a Hebrew letter are low. A place is [x, y].
    void textIsDrawn_data() { addRows({"toast/texts.json"}); }

    void textIsDrawn()
    {
        const Row row;
        const ToastText text(row.text("text"), ToastManager::shared().style.messageFont,
                             TextAlignment(row.number("alignment")), row.number("lines"));
        const int width = row.number("width");
        QCOMPARE(text.sizeThatFits(width).height(), row.number("height"));
        QImage image(width, row["room"].toInt(row.number("height")), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        text.draw(painter, image.rect());
        for (const bool isInk : {true, false}) {
            for (const QJsonValue place : row[isInk ? "ink" : "blank"].toArray())
                QCOMPARE(qGray(image.pixel(place[0].toInt(), place[1].toInt())) < 128, isInk);
        }
    }

    void longTextIsCutToTheHost()
    {
        Host host({200, 100});
        const ToastStyle &style = ToastManager::shared().style;
        const auto message =
            toastViewForMessage(&host, u"word "_s.repeated(200'000), {}, {}, style);
        const auto *bubble = qobject_cast<ToastBubble *>(message.view.get());
        QCOMPARE(bubble->frame().height(), 80.0 + 20.0);
        const auto title = toastViewForMessage(&host, {}, u"word "_s.repeated(20), {}, style);
        QVERIFY(title.view->findChild<ToastLabel *>()->height() > 80);
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
        ToastManager::shared().style.displayShadow = true;
        ToastManager::shared().style.shadowColor = Qt::red;
        ToastManager::shared().style.shadowOffset = QSizeF(30, 0);
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
};

QTEST_MAIN(ToastLooksTest)
#include "tst_toast_looks.moc"
