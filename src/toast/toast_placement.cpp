#include "toast/toast_placement.h"

#include "toast/toast_bubble.h"
#include "toast/toast_manager.h"

#include <QMargins>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace zelkam {

QRectF toastFrame(const QWidget *toast)
{
    if (const auto *bubble = qobject_cast<const ToastBubble *>(toast))
        return bubble->frame().translated(bubble->pos());
    return QRectF(toast->geometry());
}

// What is covered of the host: the insets belong to the nearest widget above that has them, and a
// host whose edges lie further in is covered by so much less.
static QMargins safeAreaInsets(const QWidget *host)
{
    static constexpr char key[] = "safeAreaInsets";
    const QWidget *holder = host;
    while (!holder->property(key).isValid()) {
        if (holder->isWindow())
            return {};
        holder = holder->parentWidget();
    }
    const auto insets = holder->property(key).value<QMargins>();
    const int above = host->mapTo(holder, QPoint()).y();
    const int below = holder->height() - above - host->height();
    return {0, std::clamp(insets.top() - above, 0, insets.top()), 0,
            std::clamp(insets.bottom() - below, 0, insets.bottom())};
}

QPointF centerPoint(ToastPosition position, const QWidget *forToast, const QWidget *inSuperview)
{
    const double padding = ToastManager::shared().style.verticalPadding;
    const QMargins insets = safeAreaInsets(inSuperview);
    const double halfToast = toastFrame(forToast).height() * 0.5;
    const double height = inSuperview->height();
    const double x = inSuperview->width() * 0.5;
    switch (position) {
    case ToastPosition::top:
        return {x, (padding + insets.top()) + halfToast};
    case ToastPosition::center:
        return {x, height * 0.5};
    case ToastPosition::bottom:
        break;
    }
    return {x, (height - halfToast) - (padding + insets.bottom())};
}

void moveToastCenter(QWidget *toast, QPointF center)
{
    const QRectF frame = toastFrame(toast);
    const QPointF offset = frame.topLeft() - QPointF(toast->pos());
    const QPointF corner = center - QPointF(frame.width(), frame.height()) * 0.5 - offset;
    toast->move(corner.toPoint());
}

static double shareBefore(double center, double toast, double host)
{
    const double space = host - toast;
    return std::abs(space) < 1e-6 ? 0.5 : (center - toast * 0.5) / space;
}

FlexibleMargins::FlexibleMargins(QPointF center, QSizeF toast, QSizeF host)
    : m_left(shareBefore(center.x(), toast.width(), host.width())),
      m_top(shareBefore(center.y(), toast.height(), host.height()))
{
}

QPointF FlexibleMargins::center(QSizeF toast, QSizeF host) const
{
    return {(host.width() - toast.width()) * m_left + toast.width() * 0.5,
            (host.height() - toast.height()) * m_top + toast.height() * 0.5};
}

} // namespace zelkam
