#pragma once

#include "platform/ui/ui_view_controller.h"
#include "platform/ui/ui_window.h"

#include <QObject>
#include <QPointer>

namespace zelkam {

/// The application's user interface as a whole. Main thread only.
class UIApplication : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isNetworkActivityIndicatorVisible READ isNetworkActivityIndicatorVisible WRITE
                   setNetworkActivityIndicatorVisible NOTIFY networkActivityIndicatorVisibleChanged)

public:
    static UIApplication &shared();

    /// The window in which the application acts; nothing before one is made key or after it died.
    UIWindow *keyWindow() const { return m_keyWindow; }
    void setKeyWindow(UIWindow *window);

    bool isNetworkActivityIndicatorVisible() const { return m_indicator; }
    void setNetworkActivityIndicatorVisible(bool visible);

    UIStatusBarStyle statusBarStyle() const { return m_statusBarStyle; }
    void setStatusBarStyle(UIStatusBarStyle style);

    /// The screen on top of a base: what a navigation controller shows, what a tab bar controller
    /// has selected, what any controller presents, each followed to its end, in this order.
    /// Nothing for no base.
    static UIViewController *topViewController(UIViewController *base);

signals:
    void keyWindowChanged(zelkam::UIWindow *window);
    void networkActivityIndicatorVisibleChanged(bool visible);
    void statusBarStyleChanged(zelkam::UIStatusBarStyle style);

private:
    UIApplication() = default;

    QPointer<UIWindow> m_keyWindow;
    UIStatusBarStyle m_statusBarStyle = UIStatusBarStyle::defaultStyle;
    bool m_indicator = false;
};

} // namespace zelkam
