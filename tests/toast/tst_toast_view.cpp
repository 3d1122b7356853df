#include "toast/toast_bubble.h"
#include "toast/toast_label.h"
#include "toast_test_support.h"

#include <QPainter>

using namespace zelkam;

namespace {

using Text = std::optional<QString>;

QImage picture()
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

} // namespace

Q_DECLARE_METATYPE(Text)

class ToastViewTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { test::resetToasts(); }

    void geometry_data();
    void geometry();
    void nothingToShow();
    void titleAloneHangsOver();
    void linesAreLimited_data();
    void linesAreLimited();
    void longMessageIsCutToTheHost();
    void rightToLeft();
    void markUpIsShown();
};

// The host is 375 x 667: a label may be 300 x 533.6.
void ToastViewTest::geometry_data()
{
    QTest::addColumn<Text>("title");
    QTest::addColumn<Text>("message");
    QTest::addColumn<bool>("withImage");
    QTest::addColumn<QList<QRect>>("children");
    QTest::addColumn<QSizeF>("bubble");
    const Text none;
    const Text hello = QStringLiteral("Hello");
    const Text done = QStringLiteral("Done");
    QTest::newRow("message") << none << done << false << QList{QRect(10, 10, 32, 16)}
                             << QSizeF(52, 36);
    QTest::newRow("title and message share the wider width")
        << hello << done << false << QList{QRect(10, 10, 50, 20), QRect(10, 40, 50, 16)}
        << QSizeF(70, 66);
    QTest::newRow("image") << none << none << true << QList{QRect(10, 10, 80, 80)}
                           << QSizeF(100, 100);
    QTest::newRow("image and message")
        << none << done << true << QList{QRect(100, 10, 32, 16), QRect(10, 10, 80, 80)}
        << QSizeF(142, 100);
    QTest::newRow("image, title and message")
        << hello << done << true
        << QList{QRect(100, 10, 50, 20), QRect(100, 40, 50, 16), QRect(10, 10, 80, 80)}
        << QSizeF(160, 100);
    QTest::newRow("image and title: as high as the image")
        << hello << none << true << QList{QRect(100, 10, 50, 20), QRect(10, 10, 80, 80)}
        << QSizeF(160, 100);
    // 37 letters fit into 300 points; beside the image 27.
    const Text words = QStringLiteral("aaaa ").repeated(12).trimmed();
    QTest::newRow("message wraps between words")
        << none << words << false << QList{QRect(10, 10, 272, 32)} << QSizeF(292, 52);
    QTest::newRow("message wraps beside the image")
        << none << words << true << QList{QRect(100, 10, 192, 48), QRect(10, 10, 80, 80)}
        << QSizeF(302, 100);
    QTest::newRow("a word longer than the line breaks")
        << none << Text(QStringLiteral("a").repeated(40)) << false << QList{QRect(10, 10, 296, 32)}
        << QSizeF(316, 52);
    QTest::newRow("lines of its own, one of them empty")
        << none << Text(QStringLiteral("ab\n\r\nabc")) << false << QList{QRect(10, 10, 24, 48)}
        << QSizeF(44, 68);
    QTest::newRow("empty message is a message of no size")
        << none << Text(QString()) << false << QList{QRect(10, 10, 0, 0)} << QSizeF(20, 20);
}

void ToastViewTest::geometry()
{
    QFETCH(Text, title);
    QFETCH(Text, message);
    QFETCH(bool, withImage);
    QWidget host;
    host.resize(375, 667);
    const auto toast = toastViewForMessage(&host, message, title,
                                           withImage ? std::optional(picture()) : std::nullopt,
                                           ToastManager::shared().style);
    QVERIFY(toast);
    QList<QRect> children;
    for (const QWidget *child : toast.view->findChildren<QWidget *>())
        children.append(child->geometry());
    QTEST(children, "children");
    QTEST(qobject_cast<ToastBubble *>(toast.view.get())->frame().size(), "bubble");
}

void ToastViewTest::nothingToShow()
{
    QWidget host;
    const ToastStyle &style = ToastManager::shared().style;
    const auto toast = toastViewForMessage(&host, {}, {}, {}, style);
    QVERIFY(!toast);
    QCOMPARE(toast.error, ToastError::missingParameters);
    // An image that is none counts as given.
    QVERIFY(toastViewForMessage(&host, {}, {}, QImage(), style));
}

void ToastViewTest::titleAloneHangsOver()
{
    QWidget host;
    host.resize(375, 667);
    const auto toast =
        toastViewForMessage(&host, {}, QStringLiteral("Hello"), {}, ToastManager::shared().style);
    const auto *bubble = qobject_cast<ToastBubble *>(toast.view.get());
    QCOMPARE(bubble->frame(), QRectF(0, 0, 70, 20));
    QCOMPARE(bubble->findChild<ToastLabel *>()->geometry(), QRect(10, 10, 50, 20));
    QVERIFY(bubble->rect().contains(QRect(10, 10, 50, 20)));
}

void ToastViewTest::linesAreLimited_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<double>("height");
    QTest::newRow("no limit") << 0 << 64.0;
    QTest::newRow("negative is no limit") << -1 << 64.0;
    QTest::newRow("one line") << 1 << 16.0;
    QTest::newRow("two lines") << 2 << 32.0;
    QTest::newRow("more than there are") << 9 << 64.0;
}

void ToastViewTest::linesAreLimited()
{
    QFETCH(int, limit);
    const ToastText text(QStringLiteral("aaaa aaaa aaaa aaaa"), test::testStyle().messageFont,
                         TextAlignment::left, limit);
    QTEST(text.sizeThatFits(40.0).height(), "height");

    // A cut line ends in the low box of the ellipsis, an uncut one in a letter.
    QImage image(48, 64, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    text.draw(painter, QRectF(QPointF(0, 0), text.sizeThatFits(40.0)));
    painter.end();
    const int lines = int(text.sizeThatFits(40.0).height()) / 16;
    const QRgb lastLetterTop = image.pixel(28, lines * 16 - 12);
    QCOMPARE(qGray(lastLetterTop) < 128, lines == 4);
}

void ToastViewTest::longMessageIsCutToTheHost()
{
    QWidget host;
    host.resize(200, 100);
    const QString longText = QStringLiteral("word ").repeated(200'000);
    const ToastStyle &style = ToastManager::shared().style;
    const auto message = toastViewForMessage(&host, longText, {}, {}, style);
    const auto *bubble = qobject_cast<ToastBubble *>(message.view.get());
    QCOMPARE(bubble->frame().height(), 80.0 + 20.0);
    QVERIFY(bubble->frame().width() <= 160.0 + 20.0);
    const auto title =
        toastViewForMessage(&host, {}, QStringLiteral("word ").repeated(20), {}, style);
    QVERIFY(title.view->findChild<ToastLabel *>()->height() > 80);
}

void ToastViewTest::rightToLeft()
{
    // Hebrew letters are drawn low. In a line of its own direction "ab" stands right of them.
    const QString mixed = QStringLiteral("\u05d0\u05d1 ab");
    const ToastText text(mixed, test::testStyle().messageFont, TextAlignment::natural, 0);
    QImage image(60, 16, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    text.draw(painter, image.rect());
    painter.end();
    const auto isInk = [&](int x, int y) { return qGray(image.pixel(x, y)) < 128; };
    // Aligned to the right end: ab at 20 to 36, a gap, the Hebrew letters at 44 to 60.
    QVERIFY(!isInk(10, 10));
    QVERIFY(isInk(24, 4) && isInk(32, 4));
    QVERIFY(isInk(48, 10) && !isInk(48, 4) && isInk(56, 10) && !isInk(56, 4));
}

void ToastViewTest::markUpIsShown()
{
    const ToastText text(QStringLiteral("<b>x</b>"), test::testStyle().messageFont,
                         TextAlignment::left, 0);
    QCOMPARE(text.sizeThatFits(300.0), QSizeF(8 * 8, 16));
}

QTEST_MAIN(ToastViewTest)
#include "tst_toast_view.moc"
