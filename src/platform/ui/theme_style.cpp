#include "platform/ui/theme_style.h"

#include "platform/ui/theme.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace zelkam {

namespace {

constexpr int scrollBarWidth = 10;

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int ThemeStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                            const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarWidth;
    case PM_ScrollBarSliderMin:
        return metrics::tapTarget;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize ThemeStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                   const QSize &contents, const QWidget *widget) const
{
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton:
    case CT_ToolButton:
        return size.expandedTo({metrics::tapTarget, metrics::tapTarget});
    case CT_ComboBox:
    case CT_LineEdit:
    case CT_ItemViewItem:
    case CT_MenuItem:
        return size.expandedTo({0, metrics::tapTarget});
    default:
        return size;
    }
}

QRect ThemeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                 SubControl subControl, const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, subControl, widget);

    const bool horizontal = bar->orientation == Qt::Horizontal;
    const int length = horizontal ? bar->rect.width() : bar->rect.height();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    int slider = length;
    if (range > 0) {
        slider = int(qint64(length) * bar->pageStep / (range + bar->pageStep));
        slider = qBound(qMin(length, metrics::tapTarget), slider, length);
    }
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - slider, bar->upsideDown);
    const auto along = [&](int from, int to) {
        const QRect rect = horizontal ? QRect(from, 0, to - from, bar->rect.height())
                                      : QRect(0, from, bar->rect.width(), to - from);
        return visualRect(bar->direction, bar->rect, rect.translated(bar->rect.topLeft()));
    };
    switch (subControl) {
    case SC_ScrollBarGroove:
        return along(0, length);
    case SC_ScrollBarSlider:
        return along(start, start + slider);
    case SC_ScrollBarSubPage:
        return along(0, start);
    case SC_ScrollBarAddPage:
        return along(start + slider, length);
    default: // no arrows
        return {};
    }
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                    QPainter *painter, const QWidget *widget) const
{
    if (control != CC_ScrollBar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const QRectF slider = subControlRect(control, option, SC_ScrollBarSlider, widget);
    const bool active = option->state & (State_MouseOver | State_Sunken);
    QColor color = option->palette.color(QPalette::WindowText);
    color.setAlphaF(active ? 0.5F : 0.28F);
    constexpr double inset = 2.5;
    const QRectF shape = slider.adjusted(inset, inset, -inset, -inset);
    const double radius = qMin(shape.width(), shape.height()) / 2.0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    painter->drawRoundedRect(shape, radius, radius);
    painter->restore();
}

} // namespace zelkam
