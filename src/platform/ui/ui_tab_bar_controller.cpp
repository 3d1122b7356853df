#include "platform/ui/ui_tab_bar_controller.h"

#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"

#include <QTabBar>

namespace zelkam {

void UITabBarController::setViewControllers(
    const QList<std::shared_ptr<UIViewController>> &viewControllers)
{
    const auto old = children();
    for (const auto &child : old)
        child->removeFromParent();
    for (const auto &child : viewControllers)
        addChild(child);
    m_selected = viewControllers.isEmpty() ? -1 : 0;
    if (m_bar)
        fillBar();
}

UIViewController *UITabBarController::selectedViewController() const
{
    return m_selected < 0 ? nullptr : children().at(m_selected).get();
}

void UITabBarController::setSelectedIndex(int index)
{
    if (index < 0 || index >= children().size() || index == m_selected)
        return;
    hideChild(*selectedViewController());
    m_selected = index;
    if (m_bar) {
        m_bar->setCurrentIndex(index);
        showSelected();
    }
}

void UITabBarController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    m_bar = new QTabBar(view());
    m_bar->setShape(QTabBar::RoundedSouth);
    m_bar->setExpanding(true);
    m_bar->setDocumentMode(true);
    connect(m_bar, &QTabBar::currentChanged, this, &UITabBarController::setSelectedIndex);
    fillBar();
}

void UITabBarController::fillBar()
{
    const QSignalBlocker blocker(m_bar);
    while (m_bar->count() > 0)
        m_bar->removeTab(0);
    for (const auto &child : children())
        m_bar->addTab(child->title());
    m_bar->setCurrentIndex(m_selected);
    showSelected();
}

void UITabBarController::showSelected()
{
    UIViewController *selected = selectedViewController();
    if (!selected)
        return;
    addSubview(view(), selected->view());
    m_bar->raise();
    viewDidLayoutSubviews();
    selected->didMove(this);
}

void UITabBarController::viewDidLayoutSubviews()
{
    UIViewController *selected = selectedViewController();
    if (!m_bar || !selected || !selected->isViewLoaded())
        return;
    const int bottom = view()->height() - safeAreaInsets().bottom();
    m_bar->setGeometry(0, bottom - metrics::tapTarget, view()->width(), metrics::tapTarget);
    selected->view()->setGeometry(0, 0, view()->width(), qMax(0, bottom - metrics::tapTarget));
}

} // namespace zelkam
