#include "platform/ui/ui_application.h"

#include "platform/ui/ui_navigation_controller.h"
#include "platform/ui/ui_tab_bar_controller.h"

namespace zelkam {

UIApplication &UIApplication::shared()
{
    static UIApplication application;
    return application;
}

void UIApplication::setKeyWindow(UIWindow *window)
{
    if (m_keyWindow == window)
        return;
    m_keyWindow = window;
    emit keyWindowChanged(window);
}

void UIApplication::setNetworkActivityIndicatorVisible(bool visible)
{
    if (m_indicator == visible)
        return;
    m_indicator = visible;
    emit networkActivityIndicatorVisibleChanged(visible);
}

void UIApplication::setStatusBarStyle(UIStatusBarStyle style)
{
    if (m_statusBarStyle == style)
        return;
    m_statusBarStyle = style;
    emit statusBarStyleChanged(style);
}

UIViewController *UIApplication::topViewController(UIViewController *base)
{
    if (auto *navigation = qobject_cast<UINavigationController *>(base))
        return topViewController(navigation->visibleViewController());
    if (auto *tabs = qobject_cast<UITabBarController *>(base)) {
        if (UIViewController *selected = tabs->selectedViewController())
            return topViewController(selected);
    }
    if (base) {
        if (const auto presented = base->presentedViewController())
            return topViewController(presented.get());
    }
    return base;
}

} // namespace zelkam
