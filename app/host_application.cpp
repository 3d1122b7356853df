#include "app/host_application.h"

#include "app/container_address.h"
#include "app/page_script.h"
#include "app/screenshots.h"
#include "app/status_bar.h"
#include "app/web_view_controller.h"
#include "host/zelkam_mobile_data.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"

#include <QVBoxLayout>
#include <QWebEngineScriptCollection>
#include <cstdio>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

const QString webViewId = QStringLiteral("main");

AllowedOrigins allowedOrigins(const HostOptions &options, const QUrl &page)
{
    AllowedOrigins origins = options.allowedOrigins;
    for (const QUrl &url : {page, QUrl(options.realServerUrl)}) {
        if (const auto origin = WebOrigin::fromUrl(url))
            origins.append(*origin);
    }
    return origins;
}

} // namespace

HostApplication::HostApplication(const HostOptions &options, const QUrl &page,
                                 const std::optional<LocalPage> &localPage)
    : m_transformsUrls(options.urlTransformer),
      m_realServerUrl(options.realServerUrl),
      m_startPage(page),
      m_profile(!options.offscreen, options.language),
      m_bridge(allowedOrigins(options, page), this),
      m_schemeHandler(m_bridge, localPage),
      m_cookies(*m_profile.get().cookieStore(), HTTPCookieStorage::shared()),
      m_page(&m_profile.get(), allowedOrigins(options, page), !options.offscreen),
      m_device(std::make_unique<QWidget>()),
      m_statusBar(new StatusBar(m_device.get())),
      m_window(new UIWindow(m_device.get())),
      m_webViewController(std::make_shared<WebViewController>(&m_page, webViewId))
{
    auto *column = new QVBoxLayout(m_device.get());
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_statusBar);
    column->addWidget(m_window, 1);
    m_device->resize(options.size);

    m_bridge.addPlugin([this](const WebOrigin &origin) { return makeContentsPlugin(origin); });

    connectPage();
    connectScreens();
    if (!options.screenshotsDirectory.isEmpty())
        takeScreenshots(options.screenshotsDirectory);
}

HostApplication::~HostApplication()
{
    m_bridge.endSessions();
    ZelkamMobileData::shared().setOptions(webViewId, std::nullopt);
}

std::shared_ptr<ZelkamMobilePlugin> HostApplication::makeContentsPlugin(const WebOrigin &page)
{
    // Relative addresses belong to the server that the calling page came from. A local page came
    // from none.
    QString realServerUrl = m_realServerUrl;
    if (realServerUrl.isEmpty() && page.isWeb())
        realServerUrl = page.toString();
    ZelkamMobileData::shared().setOptions(
        webViewId,
        realServerUrl.isEmpty() ? std::nullopt : std::optional(WebViewOptions{realServerUrl}));
    const auto plugin = makePlugin<ZelkamMobileContentsPlugin>();
    plugin->setViewController(m_webViewController.get());
    plugin->setWebView(m_webViewController.get());
    return plugin;
}

void HostApplication::start()
{
    m_window->setRootViewController(m_webViewController);
    m_window->makeKeyAndVisible();
    m_device->show();
    m_webViewController->load(m_startPage);
}

CommandDelegate::UrlTransformer HostApplication::urlTransformer() const
{
    return m_transformsUrls ? UrlTransformer(containerAddress) : UrlTransformer();
}

void HostApplication::connectPage()
{
    m_profile.get().installUrlSchemeHandler(hostScheme, &m_schemeHandler);
    // A command finds the cookies that the page set before it called, and the page those that the
    // command left behind.
    m_bridge.setGate([this](std::function<void()> work) { m_cookies.flush(std::move(work)); });
    m_channel.registerObject(QStringLiteral("host"), m_bridge.channel());
    m_page.setWebChannel(&m_channel);
    m_page.scripts().insert(pageScript());

    connect(&m_page, &QWebEnginePage::windowCloseRequested, this, &HostApplication::closeRequested);
    connect(&m_bridge, &ScriptBridge::closeRequested, this, &HostApplication::closeRequested);
    connect(&m_page, &QWebEnginePage::urlChanged, this, [this](const QUrl &url) {
        // A blob's address has none of its own, but its document may have the page's.
        if (const auto origin = WebOrigin::fromUrl(url))
            m_bridge.showsOrigin(*origin);
    });
    connect(&m_page, &QWebEnginePage::titleChanged, m_device.get(), &QWidget::setWindowTitle);
    connect(m_webViewController.get(), &WebViewController::loaded, this,
            &HostApplication::showOrigin);
    connect(m_webViewController.get(), &WebViewController::crashed, this,
            [this] { m_bridge.endSessions(); });
    connect(m_webViewController.get(), &WebViewController::failed, this,
            [](const QUrl &url, const QString &reason) {
                std::fprintf(stderr, "zelkam-mobile: %s could not be loaded: %s\n",
                             qUtf8Printable(url.toDisplayString()), qUtf8Printable(reason));
            });
}

void HostApplication::connectScreens()
{
    UIApplication &application = UIApplication::shared();
    connect(&application, &UIApplication::networkActivityIndicatorVisibleChanged, m_statusBar,
            &StatusBar::setActive);
}

void HostApplication::takeScreenshots(const QString &directory)
{
    m_screenshots = std::make_unique<Screenshots>(directory, m_device.get(), m_window);
    connect(m_webViewController.get(), &WebViewController::loaded, m_screenshots.get(),
            [this] { m_screenshots->request(QStringLiteral("page")); });
    connect(m_webViewController.get(), &WebViewController::failed, m_screenshots.get(),
            [this] { m_screenshots->request(QStringLiteral("page-failed")); });
    connect(
        &m_bridge, &ScriptBridge::replied, m_screenshots.get(),
        [this](const ScriptReply &reply) { m_screenshots->request(u"reply-"_s + reply.command); });
    connect(m_window, &UIWindow::screenDidAppear, m_screenshots.get(),
            [this](const UIViewController *screen) {
                if (screen == m_webViewController.get())
                    return;
                QString name = screen->title();
                if (name.isEmpty())
                    name = QString::fromLatin1(screen->metaObject()->className())
                               .section(QStringLiteral("::"), -1);
                m_screenshots->request(u"screen-"_s + name);
            });
}

void HostApplication::showOrigin()
{
    const auto origin = WebOrigin::fromUrl(m_page.url());
    const bool isLocal = m_page.url().scheme() == QLatin1String(hostScheme);
    m_statusBar->setPageName(isLocal ? m_page.title() : m_page.url().host());
    if (!m_bridge.isAllowed(origin)) {
        std::fprintf(stderr,
                     "zelkam-mobile: %s may not call the application (--allow-origin allows it)\n",
                     qUtf8Printable(origin ? origin->toString() : m_page.url().toDisplayString()));
    }
}

} // namespace zelkam
