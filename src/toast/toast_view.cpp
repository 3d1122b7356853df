#include "toast/toast_view.h"

#include "toast/toast_bubble.h"
#include "toast/toast_label.h"

#include <algorithm>
#include <cmath>

namespace zelkam {

namespace {

QRect toWholePoints(const QRectF &rect)
{
    return {qRound(rect.x()), qRound(rect.y()), qCeil(rect.width()), qCeil(rect.height())};
}

} // namespace

ToastViewResult toastViewForMessage(QWidget *host, const std::optional<QString> &message,
                                    const std::optional<QString> &title,
                                    const std::optional<QImage> &image, const ToastStyle &style)
{
    if (!message && !title && !image)
        return {nullptr, ToastError::missingParameters};

    const double hp = style.horizontalPadding;
    const double vp = style.verticalPadding;

    QRectF imageRect;
    if (image && !image->isNull())
        imageRect = QRectF(QPointF(hp, vp), style.imageSize);

    const QSizeF maximum(host->width() * style.maxWidthPercentage - imageRect.width(),
                         host->height() * style.maxHeightPercentage);
    const double textX = imageRect.x() + imageRect.width() + hp;

    QRectF titleRect;
    std::optional<ToastText> titleText;
    if (title) {
        titleText.emplace(*title, style.titleFont, style.titleAlignment, style.titleNumberOfLines);
        titleRect = QRectF(QPointF(textX, vp), titleText->sizeThatFits(maximum.width()));
    }

    QRectF messageRect;
    std::optional<ToastText> messageText;
    if (message) {
        messageText.emplace(*message, style.messageFont, style.messageAlignment,
                            style.messageNumberOfLines);
        const QSizeF fitted = messageText->sizeThatFits(maximum.width());
        // std::fmin, as a maximum that is not a number does not limit.
        const QSizeF size(std::max(0.0, std::fmin(fitted.width(), maximum.width())),
                          std::max(0.0, std::fmin(fitted.height(), maximum.height())));
        messageRect = QRectF(QPointF(textX, titleRect.y() + titleRect.height() + vp), size);
    }

    const double longerWidth = std::max(titleRect.width(), messageRect.width());
    const double longerX = std::max(titleRect.x(), messageRect.x());
    const QSizeF wrapper(
        std::max(imageRect.width() + 2.0 * hp, longerX + longerWidth + hp),
        std::max(messageRect.y() + messageRect.height() + vp, imageRect.height() + 2.0 * vp));
    titleRect.setWidth(longerWidth);
    messageRect.setWidth(longerWidth);

    auto bubble = std::make_unique<ToastBubble>(style.backgroundColor, style.cornerRadius);
    const QPoint origin = bubble->setFrame(QRectF(QPointF(0.0, 0.0), wrapper));
    if (style.displayShadow) {
        bubble->setShadow({Qt::black, double(style.shadowOpacity), style.shadowRadius,
                           QPointF(style.shadowOffset.width(), style.shadowOffset.height())});
    }
    bubble->setAnnouncement(title.value_or(QString()), message.value_or(QString()), false);

    const auto place = [&](QWidget *child, const QRectF &rect) {
        child->setGeometry(toWholePoints(rect.translated(-origin)));
    };
    if (titleText)
        place(new ToastLabel(*titleText, style.titleColor, bubble.get()), titleRect);
    if (messageText)
        place(new ToastLabel(*messageText, style.messageColor, bubble.get()), messageRect);
    if (!imageRect.isNull())
        place(new ToastImageView(*image, bubble.get()), imageRect);
    bubble->setOverhang();
    return {std::move(bubble), std::nullopt};
}

} // namespace zelkam
