#include "toast/toast_bubble.h"
#include "toast/toast_label.h"
#include "toast_test_support.h"

#include <QDialog>
#include <QPainter>

#include <cmath>

using namespace zelkam;
using namespace zelkam::test;

using Text = std::optional<QString>;
Q_DECLARE_METATYPE(Text)

class ToastGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetToasts(); }

    void styleHasItsFontsAndClampsFractions()
    {
        ToastStyle style;
        QCOMPARE(style.messageFont.pixelSize(), 16);
        QCOMPARE(style.titleFont.pixelSize(), 16);
        QVERIFY(style.titleFont.bold() && !style.messageFont.bold());
        const QPair<double, double> cases[] = {{2.0, 1.0}, {-1.0, 0.0}, {0.5, 0.5}};
        for (const auto &[assigned, stored] : cases) {
            style.maxWidthPercentage = assigned;
            style.maxHeightPercentage = assigned;
            QCOMPARE(double(style.maxWidthPercentage), stored);
            QCOMPARE(double(style.maxHeightPercentage), stored);
        }
        style.maxWidthPercentage = std::nan("");
        QVERIFY(std::isnan(style.maxWidthPercentage));
    }

    void centre_data()
    {
        QTest::addColumn<ToastPosition>("position");
        QTest::addColumn<QMargins>("insets");
        QTest::addColumn<QPointF>("centre");
        const QMargins none;
        const QMargins phone(44, 47, 20, 34);
        QTest::addColumn<QRect>("inside");
        const QRect whole(0, 0, 400, 800);
        QTest::newRow("bottom") << ToastPosition::bottom << none << QPointF(200, 765) << whole;
        QTest::newRow("top") << ToastPosition::top << none << QPointF(200, 35) << whole;
        QTest::newRow("center") << ToastPosition::center << none << QPointF(200, 400) << whole;
        QTest::newRow("above the inset")
            << ToastPosition::bottom << phone << QPointF(200, 731) << whole;
        QTest::newRow("below the inset")
            << ToastPosition::top << phone << QPointF(200, 82) << whole;
        QTest::newRow("a child below half of the inset")
            << ToastPosition::top << phone << QPointF(180, 58) << QRect(9, 24, 360, 600);
        QTest::newRow("a child above half of the inset")
            << ToastPosition::bottom << phone << QPointF(180, 548) << QRect(9, 183, 360, 600);
        QTest::newRow("a child clear of the insets")
            << ToastPosition::bottom << phone << QPointF(180, 365) << QRect(9, 60, 360, 400);
        QTest::newRow("a child that slides in from below")
            << ToastPosition::bottom << phone << QPointF(200, 731) << whole.translated(0, 700);
    }

    void centre()
    {
        QFETCH(ToastPosition, position);
        QFETCH(QMargins, insets);
        QFETCH(QRect, inside);
        Host device({400, 800});
        device.setProperty("safeAreaInsets", QVariant::fromValue(insets));
        QWidget between(&device);
        between.setGeometry(inside.translated(0, -5));
        QWidget host(&between);
        host.setGeometry(0, 5, inside.width(), inside.height());
        QWidget toast;
        toast.resize(120, 50);
        QTEST(centerPoint(position, &toast, inside == device.rect() ? &device : &host), "centre");
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
        // 740 of 750 free points lie above: 98.67 % of the 350 that are free after the turn.
        const FlexibleMargins bottom({200, 765}, toast, host);
        QCOMPARE(bottom.center(toast, turned), QPointF(400, 350 * 740.0 / 750.0 + 25));
        QCOMPARE(bottom.center(toast, host), QPointF(200, 765));
    }

    // The host is 375 x 667: a label may be 300 x 533.6, which is 37 letters wide; 27 beside an
    // image.
    void geometry_data()
    {
        QTest::addColumn<Text>("title");
        QTest::addColumn<Text>("message");
        QTest::addColumn<bool>("withImage");
        QTest::addColumn<QList<QRect>>("children");
        QTest::addColumn<QSizeF>("bubble");
        const auto row = [](const char *name, const Text &title, const Text &message,
                            bool withImage, const QList<QRect> &children, QSizeF bubble) {
            QTest::newRow(name) << title << message << withImage << children << bubble;
        };
        const Text none;
        const Text hello = u"Hello"_s;
        const Text done = u"Done"_s;
        const Text words = u"aaaa aaaa aaaa aaaa aaaa aaaa aaaa aaaa aaaa aaaa aaaa aaaa"_s;
        const QRect image(10, 10, 80, 80);
        row("message", none, done, false, {{10, 10, 32, 16}}, {52, 36});
        row("title and message share the wider width", hello, done, false,
            {{10, 10, 50, 20}, {10, 40, 50, 16}}, {70, 66});
        row("image", none, none, true, {image}, {100, 100});
        row("image and message", none, done, true, {{100, 10, 32, 16}, image}, {142, 100});
        row("all three", hello, done, true, {{100, 10, 50, 20}, {100, 40, 50, 16}, image},
            {160, 100});
        row("title and image: as high as the image", hello, none, true, {{100, 10, 50, 20}, image},
            {160, 100});
        row("title alone hangs over", hello, none, false, {{10, 10, 50, 20}}, {70, 20});
        row("wraps between words", none, words, false, {{10, 10, 272, 32}}, {292, 52});
        row("wraps beside the image", none, words, true, {{100, 10, 192, 48}, image}, {302, 100});
        row("a long word breaks", none, QString(40, u'a'), false, {{10, 10, 296, 32}}, {316, 52});
        row("lines, one of them empty", none, u"ab\n\r\nabc"_s, false, {{10, 10, 24, 48}},
            {44, 68});
        row("mark-up is shown", none, u"<b>x</b>"_s, false, {{10, 10, 64, 16}}, {84, 36});
        row("empty message", none, QString(), false, {{10, 10, 0, 0}}, {20, 20});
    }

    void geometry()
    {
        QFETCH(Text, title);
        QFETCH(Text, message);
        QFETCH(bool, withImage);
        QFETCH(QSizeF, bubble);
        Host host({375, 667});
        const auto image =
            withImage ? std::optional(QImage(40, 20, QImage::Format_RGB32)) : std::nullopt;
        const auto toast =
            toastViewForMessage(&host, message, title, image, ToastManager::shared().style);
        QList<QRect> children;
        for (const QWidget *child : toast.view->findChildren<QWidget *>())
            children.append(child->geometry());
        QCOMPARE(QSizeF(toast.view->size()), bubble);
        QTEST(children, "children");
        QTEST(qobject_cast<ToastBubble *>(toast.view.get())->frame().size(), "bubble");
    }

    void nullImageCountsAsGiven()
    {
        Host host;
        QCOMPARE(toastViewForMessage(&host, {}, {}, QImage(), {}).view->size(), QSize(20, 20));
    }

    void linesAreLimited()
    {
        const QPair<int, int> cases[] = {{0, 4}, {-1, 4}, {2, 2}, {9, 4}};
        for (const auto &[limit, lines] : cases) {
            const ToastText text(u"aaaa aaaa aaaa aaaa"_s, ToastManager::shared().style.messageFont,
                                 TextAlignment::left, limit);
            QCOMPARE(text.sizeThatFits(40.0).height(), lines * 16.0);
            // A cut line ends in the low box of the ellipsis, an uncut one in a letter.
            const QImage image = drawn(text, text.sizeThatFits(40.0).toSize());
            QCOMPARE(isInk(image, 28, lines * 16 - 12), lines == 4);
        }
    }

    void linesAreAligned()
    {
        const QFont font = ToastManager::shared().style.messageFont;
        const QPair<TextAlignment, int> cases[] = {{TextAlignment::left, 0},
                                                   {TextAlignment::center, 24},
                                                   {TextAlignment::right, 48},
                                                   {TextAlignment::natural, 0}};
        for (const auto &[alignment, x] : cases) {
            // Of the second paragraph an ellipsis is left, which is drawn low; of two lines' room
            // the one line takes the middle.
            const QImage image = drawn(ToastText(u"a\nb"_s, font, alignment, 1), {64, 32});
            QVERIFY(isInk(image, x + 4, 12) && !isInk(image, x + 4, 22));
            QVERIFY(isInk(image, x + 12, 18) && !isInk(image, x + 12, 12));
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

    // Hebrew letters are drawn low. In a line of their direction "ab" stands left of them.
    void rightToLeft()
    {
        const ToastText text(u"\u05d0\u05d1 ab"_s, ToastManager::shared().style.messageFont,
                             TextAlignment::natural, 0);
        const QImage image = drawn(text, {60, 16});
        // Aligned to the right end: ab at 20 to 36, a gap, the Hebrew letters at 44 to 60.
        QVERIFY(!isInk(image, 10, 10));
        QVERIFY(isInk(image, 24, 4) && isInk(image, 32, 4));
        QVERIFY(isInk(image, 48, 10) && !isInk(image, 48, 4) && isInk(image, 56, 10));
    }

private:
    static QImage drawn(const ToastText &text, QSize size)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        text.draw(painter, image.rect());
        return image;
    }

    static bool isInk(const QImage &image, int x, int y) { return qGray(image.pixel(x, y)) < 128; }
};

QTEST_MAIN(ToastGeometryTest)
#include "tst_toast_geometry.moc"
