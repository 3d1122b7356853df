#include "platform/ui/ui_view_controller.h"

#include "platform/foundation/coder.h"
#include "platform/ui/layout_guide.h"
#include "platform/ui/presentation_coordinator.h"
#include "platform/ui/release_later.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"

#include <QEvent>

namespace zelkam {

UIViewController::UIViewController(std::optional<QString> nibName, const Bundle *)
    : m_nibName(std::move(nibName))
{
}

UIViewController::UIViewController(const NSCoder &coder)
    : m_title(coder.decodeObject(QStringLiteral("UITitle")).toString())
{
    const QVariant nibName = coder.decodeObject(QStringLiteral("UINibName"));
    if (nibName.typeId() == QMetaType::QString)
        m_nibName = nibName.toString();
}

UIViewController::~UIViewController()
{
    for (const auto &child : std::as_const(m_children))
        child->m_parent = nullptr;
    delete m_view;
}

void UIViewController::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    emit titleChanged(title);
}

QWidget *UIViewController::view()
{
    if (!m_view) {
        m_view = loadView();
        m_view->installEventFilter(this);
        viewDidLoad();
    }
    return m_view;
}

QWidget *UIViewController::loadView()
{
    auto *widget = new QWidget;
    widget->setAutoFillBackground(true);
    return widget;
}

void UIViewController::layoutTransition(double shown)
{
    const int height = view()->parentWidget() ? view()->parentWidget()->height() : 0;
    view()->move(0, qRound((1.0 - shown) * height));
}

void UIViewController::present(std::shared_ptr<UIViewController> viewControllerToPresent,
                               bool animated, Completion completion)
{
    UIViewController *presenter = farthestAncestor();
    UIWindow *shownIn = presenter->window();
    if (!viewControllerToPresent || viewControllerToPresent.get() == presenter || !shownIn) {
        qWarning("A screen was to be presented from one that is in no window, or from itself; "
                 "ignored.");
        return;
    }
    shownIn->coordinator().present(*presenter, std::move(viewControllerToPresent), animated,
                                   std::move(completion));
}

void UIViewController::dismiss(bool animated, Completion completion)
{
    UIViewController *root = farthestAncestor();
    UIViewController *target = root->m_presented    ? root->m_presented.get()
                               : root->m_presenting ? root
                                                    : nullptr;
    UIWindow *shownIn = target ? target->window() : nullptr;
    if (shownIn)
        shownIn->coordinator().dismiss(*target, animated, std::move(completion));
}

void UIViewController::leave(bool animated, Completion completion)
{
    if (UIViewController *presenter = presentingViewController())
        presenter->dismiss(animated, std::move(completion));
}

void UIViewController::withdraw()
{
    m_withdrawn = true;
    UIWindow *shownIn = window();
    if (!shownIn || !presentingViewController())
        return;
    if (isBeingPresented())
        shownIn->coordinator().finishNow();
    leave(false);
}

void UIViewController::removeFromBelow()
{
    UIWindow *shownIn = window();
    if (shownIn && m_presenting && m_presented && !shownIn->isInTransition())
        shownIn->coordinator().removeFromBelow(*this);
}

std::shared_ptr<UIViewController> UIViewController::presentedViewController() const
{
    for (const UIViewController *each = this; each; each = each->m_parent) {
        if (each->m_presented)
            return each->m_presented;
    }
    return nullptr;
}

UIViewController *UIViewController::presentingViewController() const
{
    return farthestAncestor()->m_presenting;
}

UIViewController *UIViewController::farthestAncestor() const
{
    const UIViewController *each = this;
    while (each->m_parent)
        each = each->m_parent;
    return const_cast<UIViewController *>(each);
}

void UIViewController::addChild(std::shared_ptr<UIViewController> childController)
{
    if (!childController || childController.get() == this || childController->m_parent == this)
        return;
    childController->removeFromParent();
    childController->m_parent = this;
    m_children.append(std::move(childController));
}

void UIViewController::didMove(UIViewController *toParent)
{
    if (!toParent || !toParent->m_visible || m_visible || !m_view || !toParent->m_view ||
        !toParent->m_view->isAncestorOf(m_view))
        return;
    beginAppearance(true, false);
    endAppearance(true, false);
}

void UIViewController::removeFromParent()
{
    if (!m_parent)
        return;
    const std::shared_ptr<UIViewController> self = shared_from_this();
    m_parent->hideChild(*this);
    m_parent->m_children.removeOne(self);
    m_parent = nullptr;
    releaseLater(self); // it may be on the call stack
}

void UIViewController::hideChild(UIViewController &child)
{
    const bool wasVisible = child.m_visible;
    if (wasVisible)
        child.beginAppearance(false, false);
    if (child.m_view)
        child.m_view->setParent(nullptr);
    if (wasVisible)
        child.endAppearance(false, false);
}

QMargins UIViewController::safeAreaInsets() const
{
    return m_view ? zelkam::safeAreaInsets(m_view) : QMargins();
}

UIWindow *UIViewController::window() const
{
    for (QWidget *widget = m_view; widget; widget = widget->parentWidget()) {
        if (auto *found = qobject_cast<UIWindow *>(widget))
            return found;
    }
    return nullptr;
}

void UIViewController::setNeedsStatusBarAppearanceUpdate()
{
    UIWindow *keyWindow = UIApplication::shared().keyWindow();
    UIViewController *top = keyWindow ? keyWindow->topMostViewController() : nullptr;
    UIApplication::shared().setStatusBarStyle(top ? top->preferredStatusBarStyle()
                                                  : UIStatusBarStyle::defaultStyle);
}

UIStatusBarStyle UIViewController::preferredStatusBarStyle() const
{
    return UIStatusBarStyle::defaultStyle;
}

void UIViewController::viewDidLoad() {}
void UIViewController::viewWillAppear(bool) {}
void UIViewController::viewDidAppear(bool) {}
void UIViewController::viewWillDisappear(bool) {}
void UIViewController::viewDidDisappear(bool) {}
void UIViewController::viewDidLayoutSubviews() {}
void UIViewController::didReceiveMemoryWarning() {}

bool UIViewController::cancelOperation()
{
    if (!m_presenting)
        return false;
    leave(true);
    return true;
}

bool UIViewController::acceptOperation()
{
    return false;
}

bool UIViewController::eventFilter(QObject *watched, QEvent *event)
{
    const bool handled = QObject::eventFilter(watched, event);
    if (watched == m_view && event->type() == QEvent::Resize)
        viewDidLayoutSubviews();
    return handled;
}

void UIViewController::beginAppearance(bool appearing, bool animated)
{
    if (appearing)
        viewWillAppear(animated);
    else
        viewWillDisappear(animated);
    const auto children = m_children;
    for (const auto &child : children) {
        if (child->m_visible != appearing && child->m_view && m_view &&
            m_view->isAncestorOf(child->m_view))
            child->beginAppearance(appearing, animated);
    }
}

void UIViewController::endAppearance(bool appearing, bool animated)
{
    // The children of before the call: those that it adds appear by their didMove().
    const auto children = m_children;
    m_visible = appearing;
    if (appearing)
        viewDidAppear(animated);
    else
        viewDidDisappear(animated);
    for (const auto &child : children) {
        if (child->m_visible != appearing && child->m_view && m_view &&
            m_view->isAncestorOf(child->m_view))
            child->endAppearance(appearing, animated);
    }
}

} // namespace zelkam
