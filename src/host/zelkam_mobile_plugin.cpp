#include "host/zelkam_mobile_plugin.h"

#include "platform/foundation/dispatch_queue.h"

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

void deletePluginOnMainThread(ZelkamMobilePlugin *plugin)
{
    if (isMainThread())
        delete plugin;
    else
        plugin->deleteLater();
}

} // namespace zelkam
