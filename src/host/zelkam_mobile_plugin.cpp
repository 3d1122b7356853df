#include "host/zelkam_mobile_plugin.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/ui/ui_view_controller.h"

#include <utility>

namespace zelkam {

ZelkamMobilePlugin::ZelkamMobilePlugin() = default;
ZelkamMobilePlugin::~ZelkamMobilePlugin() = default;

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

void deletePluginOnMainThread(ZelkamMobilePlugin *plugin)
{
    if (isMainThread())
        delete plugin;
    else
        plugin->deleteLater();
}

} // namespace zelkam
