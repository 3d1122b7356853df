#pragma once

#include "app/command_line.h"
#include "app/cookie_mirror.h"
#include "app/host_profile.h"
#include "app/host_scheme_handler.h"
#include "app/local_page.h"
#include "app/script_bridge.h"
#include "app/web_page.h"
#include "host/call_back_manager.h"

#include <QObject>
#include <QWebChannel>
#include <memory>
#include <optional>

namespace zelkam {

class Screenshots;
class StatusBar;
class UIWindow;
class WebViewController;

/// The host as one piece: a window with a web view, and what connects its page to the plug-in.
class HostApplication : public QObject, private CommandDelegate
{
    Q_OBJECT

public:
    /// @param page  what to load; its origin may call
    HostApplication(const HostOptions &options, const QUrl &page,
                    const std::optional<LocalPage> &localPage);
    ~HostApplication() override;

    /// Shows the window and loads the page.
    void start();

    ScriptBridge &bridge() { return m_bridge; }
    WebPage &page() { return m_page; }
    UIWindow &window() { return *m_window; }
    QWidget &device() { return *m_device; }
    WebViewController &webViewController() { return *m_webViewController; }
    Screenshots *screenshots() { return m_screenshots.get(); }

signals:
    /// The page asked for its window to be closed.
    void closeRequested();

private:
    UrlTransformer urlTransformer() const override;
    std::shared_ptr<ZelkamMobilePlugin> makeContentsPlugin(const WebOrigin &page);
    void connectPage();
    void connectScreens();
    void takeScreenshots(const QString &directory);
    void showOrigin();

    const bool m_transformsUrls;
    const QString m_realServerUrl; ///< empty for that of the calling page
    const QUrl m_startPage;
    HostProfile m_profile;
    ScriptBridge m_bridge;
    HostSchemeHandler m_schemeHandler;
    CookieMirror m_cookies;
    QWebChannel m_channel;
    WebPage m_page;
    std::unique_ptr<QWidget> m_device;
    StatusBar *m_statusBar;
    UIWindow *m_window;
    std::shared_ptr<WebViewController> m_webViewController;
    std::unique_ptr<Screenshots> m_screenshots;
};

} // namespace zelkam
