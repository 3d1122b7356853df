#include "platform/ui/ui_window.h"

#include "platform/ui/presentation_coordinator.h"
#include "platform/ui/release_later.h"
#include "platform/ui/ui_application.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDynamicPropertyChangeEvent>
#include <QKeyEvent>

namespace zelkam {

namespace {

constexpr char insetsProperty[] = "safeAreaInsets";

void tellLayoutChanged(UIViewController &controller)
{
    controller.viewDidLayoutSubviews();
    for (const auto &child : controller.children())
        tellLayoutChanged(*child);
}

} // namespace

UIWindow::UIWindow(QWidget *parent)
    : QWidget(parent), m_coordinator(std::make_unique<PresentationCoordinator>(*this))
{
    setAutoFillBackground(true);
}

UIWindow::~UIWindow()
{
    m_coordinator->removeAll();
}

void UIWindow::setRootViewController(std::shared_ptr<UIViewController> rootViewController)
{
    if (m_root == rootViewController)
        return;
    if (m_root) {
        m_coordinator->finishNow();
        m_coordinator->removeAll();
        if (m_root->isVisible()) {
            m_root->beginAppearance(false, false);
            m_root->endAppearance(false, false);
        }
        m_root->view()->setParent(nullptr);
        releaseLater(m_root);
    }
    m_root = std::move(rootViewController);
    if (!m_root)
        return;
    QWidget *view = m_root->view();
    view->setParent(this);
    view->setGeometry(rect());
    view->lower();
    view->show();
    if (isVisible())
        appear();
}

void UIWindow::appear()
{
    m_root->beginAppearance(true, false);
    m_root->endAppearance(true, false);
    emit screenDidAppear(m_root.get());
}

void UIWindow::makeKeyAndVisible()
{
    UIApplication::shared().setKeyWindow(this);
    show();
}

void UIWindow::setSafeAreaInsets(const QMargins &insets)
{
    setProperty(insetsProperty, QVariant::fromValue(insets));
}

UIViewController *UIWindow::topMostViewController() const
{
    UIViewController *top = m_root.get();
    while (top && top->m_presented && !top->m_presented->isBeingDismissed())
        top = top->m_presented.get();
    return top;
}

bool UIWindow::isInTransition() const
{
    return m_coordinator->isBusy();
}

void UIWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_root && !m_root->isVisible())
        appear();
}

void UIWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_root)
        m_root->view()->setGeometry(rect());
    m_coordinator->layout();
}

void UIWindow::keyPressEvent(QKeyEvent *event)
{
    UIViewController *top = topMostViewController();
    bool used = false;
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Back:
        used = top && !event->isAutoRepeat() && top->cancelOperation();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        auto *button = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
        if (button && isAncestorOf(button) && !event->isAutoRepeat()) {
            button->click();
            used = true;
        } else {
            used = top && !event->isAutoRepeat() && top->acceptOperation();
        }
        break;
    }
    default:
        break;
    }
    event->setAccepted(used);
}

bool UIWindow::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange) {
        const auto *change = static_cast<QDynamicPropertyChangeEvent *>(event);
        if (change->propertyName() == insetsProperty) {
            for (UIViewController *each = m_root.get(); each; each = each->m_presented.get())
                tellLayoutChanged(*each);
        }
    }
    return QWidget::event(event);
}

} // namespace zelkam
