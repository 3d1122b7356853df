#include "host/zelkam_mobile_plugin.h"

#include "platform/ui/ui_view_controller.h"

#include <utility>

namespace zelkam {

CallBackManagerPtr CallSlot::call() const
{
    const std::lock_guard lock(m_mutex);
    return m_call;
}

void CallSlot::setCall(CallBackManagerPtr call)
{
    {
        const std::lock_guard lock(m_mutex);
        std::swap(m_call, call);
    }
    // The call that was there is let go here, outside of the lock: its end may tell the page
    // something, and what that leads to is not this object's to know.
}

ZelkamMobilePlugin::ZelkamMobilePlugin() = default;

ZelkamMobilePlugin::~ZelkamMobilePlugin()
{
    setCurrentCallBack(nullptr); // references hold the slot beyond this
}

UIViewController *ZelkamMobilePlugin::viewController() const
{
    return m_viewController;
}

HostWebView *ZelkamMobilePlugin::webView() const
{
    return m_webView;
}

void ZelkamMobilePlugin::setViewController(UIViewController *viewController)
{
    m_viewController = viewController;
}

void ZelkamMobilePlugin::setWebView(HostWebView *webView)
{
    m_webView = webView;
}

void ZelkamMobilePlugin::invalidate()
{
    if (std::exchange(m_isInvalidated, true))
        return;
    m_viewController = nullptr;
    m_webView = nullptr;
    emit invalidated();
    // The last one first: it may still wait for its turn, and must not get it when those before
    // it go.
    while (!m_screens.isEmpty()) {
        if (const auto screen = m_screens.takeLast().lock())
            screen->withdraw();
    }
}

void ZelkamMobilePlugin::addScreen(const std::shared_ptr<UIViewController> &screen)
{
    m_screens.removeIf([](const auto &each) { return each.expired(); });
    m_screens.append(screen);
    if (m_isInvalidated)
        screen->withdraw();
}

CallBackManagerPtr ZelkamMobilePlugin::currentCallBack() const
{
    return m_slot->call();
}

void ZelkamMobilePlugin::setCurrentCallBack(CallBackManagerPtr callBack)
{
    m_slot->setCall(std::move(callBack));
}

} // namespace zelkam
