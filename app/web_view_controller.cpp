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

/// What the web engine makes of an answer without a body.
const QString emptyDocument = QStringLiteral("<html><head></head><body></body></html>");

} // namespace

WebViewController::WebViewController(WebPage *page, QString webViewId)
    : m_page(page), m_webViewId(std::move(webViewId))
{
}

WebViewController::~WebViewController() = default;

void WebViewController::load(const QUrl &url)
{
    if (m_page)
        m_page->load(url);
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
    connect(m_message, &MessageScreen::retryRequested, this, [this] {
        // Where the document is gone, it has to come again before it can do anything.
        if (m_hasCrashed)
            m_page->triggerAction(QWebEnginePage::Reload);
        else if (!m_page->retry())
            showPage();
    });
    watchPage();
    return stack;
}

void WebViewController::watchPage()
{
    connect(m_page, &QWebEnginePage::loadingChanged, this, &WebViewController::followLoad);
    connect(m_page, &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status, int) {
                if (status == QWebEnginePage::NormalTerminationStatus)
                    return;
                showFailure(QStringLiteral("dialog-warning-symbolic"), tr("This page has stopped"),
                            tr("Something went wrong while the page was shown."));
                m_hasCrashed = true;
                emit crashed();
            });
}

void WebViewController::followLoad(const QWebEngineLoadingInfo &info)
{
    ++m_loadSteps;
    if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) {
        m_hasCrashed = false;
        showPage();
        emit loaded();
        return;
    }
    if (info.status() != QWebEngineLoadingInfo::LoadFailedStatus || info.errorCode() == abortedLoad)
        return;
    if (info.errorDomain() != QWebEngineLoadingInfo::HttpStatusCodeDomain) {
        showLoadFailure(info.url(), info.errorString());
        return;
    }
    // The page that a server sends with an error is the server's to design: it may well ask for a
    // password. Whether there is one is known only by looking.
    const auto look = [self = QPointer(this), step = m_loadSteps, url = info.url(),
                       status = info.errorCode()](const QString &html) {
        if (!self || self->m_loadSteps != step)
            return;
        if (html == emptyDocument) {
            self->showLoadFailure(url, tr("The server answered with the status %1.").arg(status));
        } else {
            self->showPage();
            emit self->loaded();
        }
    };
    m_page->toHtml(look);
}

void WebViewController::showLoadFailure(const QUrl &url, const QString &reason)
{
    showFailure(QStringLiteral("network-disconnect-symbolic"), tr("This page cannot be shown"),
                url.host().isEmpty()
                    ? tr("The file could not be read.")
                    : tr("%1 could not be reached, or did not give the page.").arg(url.host()));
    emit failed(url, reason);
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
