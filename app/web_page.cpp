#include "app/web_page.h"

#include "platform/foundation/console.h"

#include <QDesktopServices>
#include <QMessageBox>
#include <QWebEngineNewWindowRequest>
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
    if (m_attended && asking && m_allowedOrigins.contains(*asking)) {
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
    // There is one window. A page of the application stays in it; another one opens in the
    // person's browser, and only when the person asked for it.
    const QUrl url = request.requestedUrl();
    const auto origin = WebOrigin::fromUrl(url);
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    if (origin && m_allowedOrigins.contains(*origin))
        setUrl(url);
    else if (isWeb && request.isUserInitiated() && m_attended)
        QDesktopServices::openUrl(url);
}

} // namespace zelkam
