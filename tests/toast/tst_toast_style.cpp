#include "toast/toast_bubble.h"
#include "toast/toast_placement.h"
#include "toast_test_support.h"

#include <cmath>
#include <limits>

using namespace zelkam;

class ToastStyleTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { test::resetToasts(); }

    void fractionIsClamped_data();
    void fractionIsClamped();
    void freshStyle();
    void centre_data();
    void centre();
    void paddingComesFromTheSharedStyle();
    void relativePlaceIsKept_data();
    void relativePlaceIsKept();
};

void ToastStyleTest::fractionIsClamped_data()
{
    QTest::addColumn<double>("assigned");
    QTest::addColumn<double>("stored");
    QTest::newRow("above one") << 2.0 << 1.0;
    QTest::newRow("below zero") << -1.0 << 0.0;
    QTest::newRow("in range") << 0.5 << 0.5;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 1.0;
}

void ToastStyleTest::fractionIsClamped()
{
    QFETCH(double, assigned);
    ToastStyle style;
    style.maxWidthPercentage = assigned;
    style.maxHeightPercentage = assigned;
    QTEST(double(style.maxWidthPercentage), "stored");
    QTEST(double(style.maxHeightPercentage), "stored");
    style.maxWidthPercentage = std::nan("");
    QVERIFY(std::isnan(style.maxWidthPercentage));
}

void ToastStyleTest::freshStyle()
{
    const ToastStyle style;
    QCOMPARE(style.backgroundColor, QColor::fromRgbF(0.0F, 0.0F, 0.0F, 0.8F));
    QCOMPARE(style.activityBackgroundColor, style.backgroundColor);
    QCOMPARE(style.titleFont.pixelSize(), 16);
    QVERIFY(style.titleFont.bold() && !style.messageFont.bold());
    QCOMPARE(style.shadowOpacity, 0.8F);
    QCOMPARE(style.fadeDuration, std::chrono::milliseconds(200));
}

void ToastStyleTest::centre_data()
{
    QTest::addColumn<ToastPosition>("position");
    QTest::addColumn<QMargins>("insets");
    QTest::addColumn<QPointF>("centre");
    const QMargins none;
    QTest::newRow("bottom") << ToastPosition::bottom << none << QPointF(200, 765);
    QTest::newRow("top") << ToastPosition::top << none << QPointF(200, 35);
    QTest::newRow("center") << ToastPosition::center << none << QPointF(200, 400);
    const QMargins phone(44, 47, 20, 34);
    QTest::newRow("bottom, above the inset") << ToastPosition::bottom << phone << QPointF(200, 731);
    QTest::newRow("top, below the inset") << ToastPosition::top << phone << QPointF(200, 82);
    QTest::newRow("center knows no inset") << ToastPosition::center << phone << QPointF(200, 400);
}

void ToastStyleTest::centre()
{
    QFETCH(ToastPosition, position);
    QFETCH(QMargins, insets);
    QWidget host;
    host.resize(400, 800);
    host.setProperty("safeAreaInsets", QVariant::fromValue(insets));
    QWidget toast;
    toast.resize(120, 50);
    QTEST(centerPoint(position, &toast, &host), "centre");
}

void ToastStyleTest::paddingComesFromTheSharedStyle()
{
    ToastStyle own = test::testStyle();
    own.verticalPadding = 3.0;
    QWidget host;
    host.resize(400, 800);
    ToastManager::shared().style.verticalPadding = 100.0;
    const auto toast = toastViewForMessage(&host, QStringLiteral("x"), {}, {}, own);
    QCOMPARE(centerPoint(ToastPosition::top, toast.view.get(), &host), QPointF(200, 111));
}

void ToastStyleTest::relativePlaceIsKept_data()
{
    QTest::addColumn<QPointF>("before");
    QTest::addColumn<QSizeF>("resized");
    QTest::addColumn<QPointF>("after");
    const QSizeF turned(800, 400);
    QTest::newRow("in the middle") << QPointF(200, 400) << turned << QPointF(400, 200);
    // 740 of 750 free points lie above: 98.67 % of the 350 that are free after the turn.
    QTest::newRow("at the bottom")
        << QPointF(200, 765) << turned << QPointF(400, 350 * 740.0 / 750.0 + 25);
    QTest::newRow("in a corner") << QPointF(60, 25) << turned << QPointF(60, 25);
    QTest::newRow("host gets smaller than the toast")
        << QPointF(200, 400) << QSizeF(100, 40) << QPointF(50, 20);
}

void ToastStyleTest::relativePlaceIsKept()
{
    QFETCH(QPointF, before);
    QFETCH(QSizeF, resized);
    const QSizeF toast(120, 50);
    const FlexibleMargins margins(before, toast, QSizeF(400, 800));
    QTEST(margins.center(toast, resized), "after");
    QCOMPARE(margins.center(toast, QSizeF(400, 800)), before);
}

QTEST_MAIN(ToastStyleTest)
#include "tst_toast_style.moc"
