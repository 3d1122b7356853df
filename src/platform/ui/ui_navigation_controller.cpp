#include "platform/ui/ui_navigation_controller.h"

#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_navigation_bar.h"

namespace zelkam {

UINavigationController::UINavigationController(std::shared_ptr<UIViewController> rootViewController)
{
    addChild(std::move(rootViewController));
}

void UINavigationController::pushViewController(std::shared_ptr<UIViewController> viewController,
                                                bool)
{
    UIViewController *below = topViewController();
    addChild(std::move(viewController));
    if (!isViewLoaded())
        return;
    if (below)
        hideChild(*below);
    showTop();
}

std::shared_ptr<UIViewController> UINavigationController::popViewController(bool)
{
    if (children().size() < 2)
        return nullptr;
    const std::shared_ptr<UIViewController> popped = children().last();
    popped->removeFromParent();
    if (isViewLoaded())
        showTop();
    return popped;
}

UIViewController *UINavigationController::topViewController() const
{
    return children().isEmpty() ? nullptr : children().last().get();
}

UIViewController *UINavigationController::visibleViewController() const
{
    if (const auto presented = presentedViewController())
        return presented.get();
    return topViewController();
}

void UINavigationController::setNavigationBarHidden(bool hidden)
{
    m_barHidden = hidden;
    if (isViewLoaded())
        viewDidLayoutSubviews();
}

void UINavigationController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    m_bar = new UINavigationBar(QRect(0, 0, view()->width(), metrics::tapTarget), view());
    showTop();
}

void UINavigationController::showTop()
{
    UIViewController *top = topViewController();
    if (!top || !m_bar)
        return;
    auto item = std::make_shared<UINavigationItem>(top->title());
    if (children().size() > 1) {
        item->leftBarButtonItem = std::make_shared<UIBarButtonItem>(
            tr("Back"), this, [this](QObject *) { popViewController(true); });
    }
    m_bar->setItems({item}, false);
    disconnect(m_titleConnection);
    m_titleConnection = connect(top, &UIViewController::titleChanged, this, [this] { showTop(); });
    if (top->view()->parentWidget() != view())
        addSubview(view(), top->view());
    m_bar->raise();
    viewDidLayoutSubviews();
    top->didMove(this);
}

void UINavigationController::viewDidLayoutSubviews()
{
    UIViewController *top = topViewController();
    if (!m_bar || !top || !top->isViewLoaded())
        return;
    const QMargins insets = safeAreaInsets();
    m_bar->setVisible(!m_barHidden);
    m_bar->setGeometry(0, insets.top(), view()->width(), metrics::tapTarget);
    const int above = m_barHidden ? 0 : insets.top() + metrics::tapTarget;
    top->view()->setGeometry(0, above, view()->width(), qMax(0, view()->height() - above));
}

bool UINavigationController::cancelOperation()
{
    return popViewController(true) != nullptr || UIViewController::cancelOperation();
}

} // namespace zelkam
