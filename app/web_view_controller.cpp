#include "app/web_view_controller.h"

#include "app/message_screen.h"
#include "app/web_page.h"

#include <QStackedWidget>
#include <QWebEngineLoadingInfo>
#include <QWebEngineView>

namespace zelkam {

namespace {

/// The web engine's code for a load that something else took the place of.
constexpr int abortedLoad = -3;

} // namespace

WebViewController::WebViewController(WebPage *page, QString webViewId)
    : m_page(page), m_webViewId(std::move(webViewId))
{
}

WebViewController::~WebViewController() = default;

void WebViewController::load(const QUrl &url)
{
    m_url = url;
    if (m_page)
        m_page->load(url);
}

void WebViewController::reload()
{
    const QUrl current = m_page ? m_page->url() : QUrl();
    load(current.isEmpty() || m_stack->currentWidget() == m_message ? m_url : current);
}

QWidget *WebViewController::loadView()
{
    auto *stack = new QStackedWidget;
    m_stack = stack;
    m_view = new QWebEngineView(stack);
    m_view->setPage(m_page);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    m_message = new MessageScreen(stack);
    m_stack->addWidget(m_view);
    m_stack->addWidget(m_message);
    // Until the page has drawn itself, the screen has the colour of the application.
    m_page->setBackgroundColor(stack->palette().color(QPalette::Window));
    connect(m_message, &MessageScreen::retryRequested, this, &WebViewController::reload);
    watchPage();
    return stack;
}

void WebViewController::watchPage()
{
    connect(
        m_page, &QWebEnginePage::loadingChanged, this, [this](const QWebEngineLoadingInfo &info) {
            if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) {
                showPage();
                emit loaded();
            }
            if (info.status() != QWebEngineLoadingInfo::LoadFailedStatus ||
                info.errorCode() == abortedLoad)
                return;
            m_url = info.url();
            const bool answered = info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain;
            const QString reason =
                answered ? tr("The server answered with the status %1.").arg(info.errorCode())
                         : info.errorString();
            showFailure(
                QStringLiteral("network-disconnect-symbolic"), tr("This page cannot be shown"),
                m_url.host().isEmpty()
                    ? tr("The file could not be read.")
                    : tr("%1 could not be reached, or did not give the page.").arg(m_url.host()));
            emit failed(m_url, reason);
        });
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status, int) {
                if (status == QWebEnginePage::NormalTerminationStatus)
                    return;
                showFailure(QStringLiteral("dialog-warning-symbolic"), tr("This page has stopped"),
                            tr("Something went wrong while the page was shown."));
                emit crashed();
            });
}

void WebViewController::showFailure(const QString &iconName, const QString &title,
                                    const QString &text)
{
    if (!m_stack)
        return;
    m_message->setMessage(iconName, title, text);
    m_stack->setCurrentWidget(m_message);
}

void WebViewController::showPage()
{
    if (m_stack)
        m_stack->setCurrentWidget(m_view);
}

} // namespace zelkam
