#include "toast/toast_tap_recognizer.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTouchEvent>

namespace zelkam {

ToastTapRecognizer::ToastTapRecognizer(QWidget *view, bool isExclusive)
    : QObject(view), m_view(view), m_isExclusive(isExclusive)
{
    view->setAttribute(Qt::WA_AcceptTouchEvents);
    view->setAttribute(Qt::WA_NoMousePropagation);
    view->installEventFilter(this);
}

ToastTapRecognizer::~ToastTapRecognizer()
{
    end(false);
}

bool ToastTapRecognizer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_view)
        return keepFromOthers(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        event->accept();
        return handleMouse(event);
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        event->accept();
        return handleTouch(event);
    case QEvent::Hide:
        end(false);
        break;
    default:
        break;
    }
    return false;
}

bool ToastTapRecognizer::handleMouse(QEvent *event)
{
    auto *mouse = static_cast<QMouseEvent *>(event);
    if (mouse->type() == QEvent::MouseMove) {
        move(mouse->position());
    } else if (mouse->button() == Qt::LeftButton) {
        if (mouse->type() == QEvent::MouseButtonRelease) {
            move(mouse->position());
            end(m_canBeTap);
        } else {
            begin();
        }
    }
    return true;
}

bool ToastTapRecognizer::handleTouch(QEvent *event)
{
    auto *touch = static_cast<QTouchEvent *>(event);
    if (touch->type() == QEvent::TouchCancel) {
        end(false);
        return true;
    }
    if (touch->type() == QEvent::TouchBegin) {
        begin();
        if (m_isExclusive)
            qApp->installEventFilter(this);
    }
    if (touch->pointCount() > 1)
        m_canBeTap = false;
    for (const QEventPoint &point : touch->points())
        move(point.position());
    if (touch->type() == QEvent::TouchEnd)
        end(m_canBeTap);
    return true;
}

bool ToastTapRecognizer::keepFromOthers(QObject *watched, QEvent *event) const
{
    if (event->type() != QEvent::TouchBegin && event->type() != QEvent::TouchUpdate &&
        event->type() != QEvent::TouchEnd)
        return false;
    const auto *other = qobject_cast<QWidget *>(watched);
    if (!other || other->window() != m_view->window() || m_view->isAncestorOf(other))
        return false;
    event->accept();
    return true;
}

void ToastTapRecognizer::begin()
{
    m_isDown = true;
    m_canBeTap = true;
}

void ToastTapRecognizer::move(QPointF position)
{
    if (m_isDown && !QRectF(m_view->rect()).contains(position))
        m_canBeTap = false;
}

void ToastTapRecognizer::end(bool isTap)
{
    const bool wasDown = m_isDown;
    m_isDown = false;
    m_canBeTap = false;
    if (qApp)
        qApp->removeEventFilter(this);
    if (wasDown && isTap)
        emit tapped();
}

} // namespace zelkam
