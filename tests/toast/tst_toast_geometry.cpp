#include "support/data_table.h"
#include "toast/toast_bubble.h"
#include "toast/toast_label.h"

#include "toast_test_support.h"

#include <QDialog>
#include <QPainter>

#include <cmath>

using namespace zelkam;
using namespace zelkam::test;

class ToastGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetToasts(); }

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
        const QJsonValue at = row["inside"];
        const QRect inside(at[0].toInt(), at[1].toInt(), at[2].toInt(400), at[3].toInt(800));
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
                             at.isArray() ? &host : &device),
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
};

QTEST_MAIN(ToastGeometryTest)
#include "tst_toast_geometry.moc"
