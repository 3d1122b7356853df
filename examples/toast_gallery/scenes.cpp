#include "scenes.h"

#include "toast/toast.h"

#include <QPainter>
#include <QPainterPath>

using namespace zelkam;
using namespace std::chrono_literals;

QImage samplePicture()
{
    constexpr int side = 240;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath frame;
    frame.addRoundedRect(0, 0, side, side, 24, 24);
    painter.setClipPath(frame);
    QLinearGradient sky(0, 0, 0, side);
    sky.setColorAt(0.0, QColor(0x5b, 0xb8, 0xff));
    sky.setColorAt(1.0, QColor(0xd9, 0xf0, 0xff));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xd6, 0x5c));
    painter.drawEllipse(150, 36, 54, 54);
    painter.setBrush(QColor(0x3c, 0x8d, 0x6a));
    painter.drawPolygon(QPolygon{{-20, side}, {80, 90}, {190, side}});
    painter.setBrush(QColor(0x2a, 0x6b, 0x52));
    painter.drawPolygon(QPolygon{{90, side}, {180, 130}, {280, side}});
    return image;
}

namespace {

// Stays until the next scene, so that there is time to look.
constexpr ToastDuration stay = 1h;

ToastStyle sharedStyle()
{
    return ToastManager::shared().style;
}

void showMessage(QWidget *host)
{
    makeToast(host, QStringLiteral("The file has been saved."), stay, ToastPosition::bottom);
}

void showTitleAndImage(QWidget *host)
{
    makeToast(host, QStringLiteral("Saved to the album. It can be seen in every application."),
              stay, ToastPosition::bottom, QStringLiteral("mountains.png"), samplePicture());
}

void showPositions(QWidget *host)
{
    makeToast(host, QStringLiteral("top"), stay, ToastPosition::top);
    makeToast(host, QStringLiteral("center"), stay, ToastPosition::center);
    makeToast(host, QStringLiteral("bottom"), stay, ToastPosition::bottom);
    makeToast(host, QStringLiteral("at a point"), stay,
              QPointF(host->width() * 0.5 + 60.0, host->height() * 0.3));
}

void showSafeArea(QWidget *host)
{
    host->setProperty("safeAreaInsets", QVariant::fromValue(QMargins(0, 47, 0, 34)));
    makeToast(host, QStringLiteral("below the inset of 47"), stay, ToastPosition::top);
    makeToast(host, QStringLiteral("above the inset of 34"), stay, ToastPosition::bottom);
    host->setProperty("safeAreaInsets", QVariant());
}

void showTitleAlone(QWidget *host)
{
    ToastStyle style = sharedStyle();
    style.titleColor = QColor(0xff, 0x9f, 0x0a);
    makeToast(host, std::nullopt, stay, QPointF(host->width() * 0.5, host->height() * 0.3),
              QStringLiteral("A title hangs over"), std::nullopt, style);
    makeToast(host, std::nullopt, stay, QPointF(host->width() * 0.5, host->height() * 0.7),
              QStringLiteral("Beside an image it fits"), samplePicture(), style);
}

void showColours(QWidget *host)
{
    ToastStyle style = sharedStyle();
    style.backgroundColor = QColor(0x1b, 0x7f, 0x4b, 0xf2);
    style.titleColor = QColor(0xd8, 0xff, 0xe6);
    style.cornerRadius = 22.0;
    style.horizontalPadding = 22.0;
    style.verticalPadding = 14.0;
    style.titleFont.setPixelSize(18);
    style.messageFont.setPixelSize(14);
    style.titleAlignment = TextAlignment::center;
    style.messageAlignment = TextAlignment::center;
    makeToast(host,
              QStringLiteral("Colours, fonts, alignment, padding and corners are the style's."),
              stay, ToastPosition::center, QStringLiteral("Payment received"), std::nullopt, style);
}

void showShadow(QWidget *host)
{
    ToastStyle style = sharedStyle();
    style.displayShadow = true;
    makeToast(host, QStringLiteral("A shadow, always black"), stay, ToastPosition::bottom,
              std::nullopt, std::nullopt, style);
    style.backgroundColor = QColor(0xff, 0xff, 0xff);
    style.messageColor = QColor(0x1b, 0x1f, 0x26);
    style.shadowOpacity = 0.35F;
    style.shadowRadius = 12.0;
    style.shadowOffset = QSizeF(0.0, 6.0);
    makeToast(host, QStringLiteral("Softer, larger, straight below"), stay, ToastPosition::center,
              std::nullopt, std::nullopt, style);
}

void showLines(QWidget *host)
{
    const QString text = QStringLiteral(
        "A message wraps between words. Where the style limits the number of its lines, the last "
        "one that is allowed ends in an ellipsis, and the rest is left out.");
    ToastStyle style = sharedStyle();
    makeToast(host, text, stay, QPointF(host->width() * 0.5, host->height() * 0.34), std::nullopt,
              std::nullopt, style);
    style.messageNumberOfLines = 2;
    makeToast(host, text, stay, QPointF(host->width() * 0.5, host->height() * 0.8), std::nullopt,
              std::nullopt, style);
}

void showRightToLeft(QWidget *host)
{
    ToastStyle style = sharedStyle();
    style.titleAlignment = TextAlignment::natural;
    style.messageAlignment = TextAlignment::natural;
    makeToast(host, QStringLiteral("تم حفظ الملف report.pdf في مجلد التنزيلات على هذا الجهاز."),
              stay, ToastPosition::center, QStringLiteral("تم التنزيل"), std::nullopt, style);
}

void showQueue(QWidget *host)
{
    ToastManager &manager = ToastManager::shared();
    const bool wasEnabled = manager.isQueueEnabled;
    manager.isQueueEnabled = true;
    for (int i = 1; i <= 3; ++i) {
        makeToast(host, QStringLiteral("Number %1 of 3: the next one waits for this one.").arg(i),
                  1s, ToastPosition::bottom);
    }
    manager.isQueueEnabled = wasEnabled;
}

void showActivity(QWidget *host)
{
    makeToastActivity(host);
}

void showActivityStyle(QWidget *host)
{
    ToastManager &manager = ToastManager::shared();
    const ToastStyle before = manager.style;
    manager.style.activitySize = QSizeF(140.0, 90.0);
    manager.style.activityBackgroundColor = Qt::white;
    manager.style.activityIndicatorColor = QColor(0x1f, 0x6f, 0xeb);
    manager.style.displayShadow = true;
    manager.style.shadowColor = QColor(0x1f, 0x6f, 0xeb);
    makeToastActivity(host);
    manager.style = before;
}

} // namespace

const QList<Scene> &scenes()
{
    static const QList<Scene> all = {
        {QStringLiteral("message"), QStringLiteral("Message"), showMessage},
        {QStringLiteral("title-and-image"), QStringLiteral("Title and image"), showTitleAndImage},
        {QStringLiteral("positions"), QStringLiteral("Positions"), showPositions},
        {QStringLiteral("safe-area"), QStringLiteral("Safe area"), showSafeArea},
        {QStringLiteral("title-alone"), QStringLiteral("Title alone"), showTitleAlone},
        {QStringLiteral("colours"), QStringLiteral("Colours and fonts"), showColours},
        {QStringLiteral("shadow"), QStringLiteral("Shadow"), showShadow},
        {QStringLiteral("lines"), QStringLiteral("Lines"), showLines},
        {QStringLiteral("right-to-left"), QStringLiteral("Right to left"), showRightToLeft},
        {QStringLiteral("queue"), QStringLiteral("Queue"), showQueue},
        {QStringLiteral("activity"), QStringLiteral("Activity"), showActivity},
        {QStringLiteral("activity-style"), QStringLiteral("Activity, styled"), showActivityStyle},
    };
    return all;
}
