#include "app/web_page.h"

#include "platform/foundation/console.h"

#include <QDesktopServices>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMessageBox>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineScript>
#include <QWebEngineView>
#include <cstdio>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

void tellUnanswered(const char *kind, const QString &message)
{
    std::fprintf(stderr, "zelkam-mobile: %s: %s\n", kind, qUtf8Printable(message));
}

} // namespace

WebPage::WebPage(QWebEngineProfile *profile, AllowedOrigins allowedOrigins, bool attended)
    : QWebEnginePage(profile), m_allowedOrigins(std::move(allowedOrigins)), m_attended(attended)
{
    connect(this, &QWebEnginePage::featurePermissionRequested, this, &WebPage::answerPermission);
    connect(this, &QWebEnginePage::newWindowRequested, this, &WebPage::openWindow);
    setUrlRequestInterceptor(
        new RequestWatch([this](QWebEngineUrlRequestInfo &info) { noteLoad(info); }, this));
}

void WebPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &message, int,
                                       const QString &)
{
    const QStringList lines = message.split(u'\n');
    QStringList prefixed;
    for (const QString &line : lines)
        prefixed.append(u"page: "_s + line);
    print(prefixed.join(u'\n'));
}

void WebPage::javaScriptAlert(const QUrl &origin, const QString &message)
{
    if (m_attended)
        QWebEnginePage::javaScriptAlert(origin, message);
    else
        tellUnanswered("alert", message);
}

bool WebPage::javaScriptConfirm(const QUrl &origin, const QString &message)
{
    if (m_attended)
        return QWebEnginePage::javaScriptConfirm(origin, message);
    tellUnanswered("confirm, answered with no", message);
    return false;
}

bool WebPage::javaScriptPrompt(const QUrl &origin, const QString &message,
                               const QString &defaultValue, QString *result)
{
    if (m_attended)
        return QWebEnginePage::javaScriptPrompt(origin, message, defaultValue, result);
    tellUnanswered("prompt, answered with no", message);
    return false;
}

void WebPage::answerPermission(const QUrl &origin, QWebEnginePage::Feature feature)
{
    const auto asking = WebOrigin::fromUrl(origin);
    bool granted = false;
    // A page that may not call commands gets no other power over the device either.
    if (m_attended && isAllowed(origin)) {
        const auto answer =
            QMessageBox::question(QWebEngineView::forPage(this), tr("Permission"),
                                  tr("%1 asks for the use of a function of this device, such as "
                                     "the camera, the position or notifications. Allow it?")
                                      .arg(asking->toString()));
        granted = answer == QMessageBox::Yes;
    }
    setFeaturePermission(origin, feature,
                         granted ? PermissionGrantedByUser : PermissionDeniedByUser);
}

void WebPage::openWindow(QWebEngineNewWindowRequest &request)
{
    if (!request.isUserInitiated())
        return;
    // There is one window. A page of the application stays in it when one of its pages asks;
    // everything else opens in the person's browser.
    const QUrl wanted = request.requestedUrl();
    if (isAllowed(wanted) && isAllowed(url()))
        openInPlace(request);
    else if (m_attended && (wanted.scheme() == u"http" || wanted.scheme() == u"https"))
        QDesktopServices::openUrl(wanted);
}

void WebPage::openInPlace(QWebEngineNewWindowRequest &request)
{
    // Which document of the page asks, its own or a frame's, is told by the first request of the
    // window. The window opens to hear this, and goes.
    auto *asked = new QWebEnginePage(profile(), this);
    request.openIn(asked);
    connect(asked, &QWebEnginePage::loadFinished, asked, &QObject::deleteLater);
    asked->setUrlRequestInterceptor(new RequestWatch(
        [this](QWebEngineUrlRequestInfo &info) {
            info.block(true);
            const auto asking = WebOrigin::fromUrl(info.initiator());
            if (asking && asking == WebOrigin::fromUrl(url()))
                follow(info.requestUrl());
        },
        asked));
}

void WebPage::noteLoad(const QWebEngineUrlRequestInfo &info)
{
    const auto type = info.navigationType();
    if (info.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeMainFrame ||
        type == QWebEngineUrlRequestInfo::NavigationTypeRedirect)
        return;
    m_lastLoad = info.requestUrl();
    m_lastLoadIsOwn = type == QWebEngineUrlRequestInfo::NavigationTypeTyped ||
                      type == QWebEngineUrlRequestInfo::NavigationTypeReload ||
                      type == QWebEngineUrlRequestInfo::NavigationTypeBackForward ||
                      (!info.initiator().isEmpty() &&
                       WebOrigin::fromUrl(info.initiator()) == WebOrigin::fromUrl(url()));
}

bool WebPage::retry()
{
    // A load that fails leaves the document before it where it is.
    if (url().isEmpty())
        load(m_lastLoad);
    else if (url() == m_lastLoad)
        triggerAction(Reload);
    else if (m_lastLoadIsOwn)
        follow(m_lastLoad);
    else
        return false;
    return true;
}

void WebPage::follow(const QUrl &url)
{
    // The address as a list of one text in JSON, which is script too.
    const QJsonArray address{url.toString(QUrl::FullyEncoded)};
    runJavaScript(u"location.href = "_s +
                      QString::fromUtf8(QJsonDocument(address).toJson(QJsonDocument::Compact)) +
                      u"[0]"_s,
                  QWebEngineScript::ApplicationWorld);
}

bool WebPage::isAllowed(const QUrl &url) const
{
    const auto origin = WebOrigin::fromUrl(url);
    return origin && m_allowedOrigins.contains(*origin);
}

} // namespace zelkam
