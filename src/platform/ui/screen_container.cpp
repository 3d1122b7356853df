#include "platform/ui/screen_container.h"

#include <QEvent>

namespace zelkam {

ScreenContainer::ScreenContainer(QWidget *screenView, QWidget *focusBefore, QWidget *parent)
    : QWidget(parent), m_view(screenView), m_focusBefore(focusBefore)
{
    setFocusPolicy(Qt::NoFocus);
    setGeometry(parent->rect());
    screenView->setParent(this);
    screenView->setGeometry(rect());
    screenView->show();
}

void ScreenContainer::takeFocus()
{
    QWidget *inside = focusWidget();
    if (!inside || inside == this || !inside->isVisibleTo(this) || !inside->isEnabled())
        inside = nextInside(this, true);
    (inside ? inside : this)->setFocus(Qt::OtherFocusReason);
}

bool ScreenContainer::focusNextPrevChild(bool next)
{
    QWidget *current = focusWidget();
    if (QWidget *target = nextInside(current ? current : this, next))
        target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

QWidget *ScreenContainer::nextInside(QWidget *from, bool forward) const
{
    const auto step = [forward](QWidget *widget) {
        return forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget *widget = step(from); widget && widget != from; widget = step(widget)) {
        if (isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus &&
            widget->isEnabled() && widget->isVisibleTo(this) && !widget->focusProxy())
            return widget;
    }
    return nullptr;
}

void ScreenContainer::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_view)
        m_view->setGeometry(rect());
}

InputShield::InputShield(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_AcceptTouchEvents);
    hide();
}

bool InputShield::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::ContextMenu:
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

} // namespace zelkam
