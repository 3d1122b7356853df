#include "toast/toast_accessible.h"

#include "toast/toast_bubble.h"

#include <QAccessibleWidget>

namespace zelkam {

namespace {

class AccessibleBubble : public QAccessibleWidget
{
public:
    explicit AccessibleBubble(ToastBubble *bubble)
        : QAccessibleWidget(bubble, QAccessible::AlertMessage), m_bubble(bubble)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.busy = m_bubble->isBusy();
        return state;
    }

private:
    ToastBubble *m_bubble;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *bubble = qobject_cast<ToastBubble *>(object);
    return bubble ? new AccessibleBubble(bubble) : nullptr;
}

} // namespace

void makeBubblesAccessible()
{
    // Qt takes the same factory once.
    QAccessible::installFactory(makeInterface);
}

void announceToast(QWidget *toast)
{
    QAccessibleEvent alert(toast, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    const auto *bubble = qobject_cast<ToastBubble *>(toast);
    if (bubble && bubble->isBusy()) {
        QAccessible::State changed;
        changed.busy = true;
        QAccessibleStateChangeEvent busy(toast, changed);
        QAccessible::updateAccessibility(&busy);
    }
}

} // namespace zelkam
