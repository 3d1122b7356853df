#include "platform/ui/layout_guide.h"

#include "platform/ui/screen_container.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace zelkam {

namespace {

constexpr char insetsProperty[] = "safeAreaInsets";

/// Follows the sizes and insets of all widgets above a pinned one.
class SafeAreaPin : public QObject
{
public:
    SafeAreaPin(QWidget *subview, const QMargins &constants)
        : QObject(subview), m_subview(subview), m_constants(constants)
    {
        setObjectName(QLatin1String(name));
        m_subview->installEventFilter(this);
        watchAncestors();
        apply();
    }

    static constexpr char name[] = "safeAreaPin";

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::ParentChange:
            watchAncestors();
            [[fallthrough]];
        case QEvent::DynamicPropertyChange:
        case QEvent::Move:
        case QEvent::Resize:
            if (watched != m_subview || event->type() == QEvent::ParentChange)
                apply();
            break;
        default:
            break;
        }
        return false;
    }

private:
    void watchAncestors()
    {
        for (const QPointer<QWidget> &widget : std::as_const(m_watched)) {
            if (widget)
                widget->removeEventFilter(this);
        }
        m_watched.clear();
        for (QWidget *widget = m_subview->parentWidget(); widget; widget = widget->parentWidget()) {
            widget->installEventFilter(this);
            m_watched.append(widget);
        }
    }

    void apply()
    {
        const QWidget *parent = m_subview->parentWidget();
        if (!parent)
            return;
        const QRect area = parent->rect() - safeAreaInsets(parent) - m_constants;
        m_subview->setGeometry(area.x(), area.y(), qMax(0, area.width()), qMax(0, area.height()));
    }

    QWidget *m_subview;
    QMargins m_constants;
    QList<QPointer<QWidget>> m_watched;
};

} // namespace

QMargins safeAreaInsets(const QWidget *widget)
{
    for (const QWidget *holder = widget; holder; holder = holder->parentWidget()) {
        const QVariant value = holder->property(insetsProperty);
        if (!value.isValid())
            continue;
        const QMargins insets = value.value<QMargins>();
        QPoint at;
        for (const QWidget *each = widget; each != holder; each = each->parentWidget()) {
            // A screen is laid out for where it rests, not for where it is while it slides.
            if (!qobject_cast<const ScreenContainer *>(each->parentWidget()))
                at += each->pos();
        }
        const int right = holder->width() - at.x() - widget->width();
        const int bottom = holder->height() - at.y() - widget->height();
        const auto part = [](int inset, int distance) {
            return qBound(0, inset - distance, inset);
        };
        return {part(insets.left(), at.x()), part(insets.top(), at.y()),
                part(insets.right(), right), part(insets.bottom(), bottom)};
    }
    return {};
}

void addSubview(QWidget *to, QWidget *subview)
{
    subview->setParent(to);
    subview->show();
}

void pinToSafeArea(QWidget *subview, const QMargins &constants)
{
    delete subview->findChild<QObject *>(QLatin1String(SafeAreaPin::name),
                                         Qt::FindDirectChildrenOnly);
    new SafeAreaPin(subview, constants);
}

} // namespace zelkam
