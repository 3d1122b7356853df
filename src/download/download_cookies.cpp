// The cookies of a response, on their way into the application's store.

#include "download/zelkam_mobile_file_download_util.h"

#include "platform/network/http_cookie_storage.h"
#include "platform/network/url_response.h"

namespace zelkam {

QString ZelkamMobileFileDownloadUtil::getRootURL(const std::optional<URL> &url) const
{
    if (!url)
        return QStringLiteral("://");
    QString root =
        url->scheme().value_or(QString()) + QStringLiteral("://") + url->host().value_or(QString());
    if (const int port = url->port().value_or(0); port != 0)
        root += u':' + QString::number(port);
    return root;
}

void ZelkamMobileFileDownloadUtil::saveCookieStore(const QList<HTTPCookie> &cookies,
                                                   const QString &host) const
{
    for (const HTTPCookie &cookie : cookies) {
        // A session of a server is only taken from that server itself, by its exact name.
        if (cookie.name == u"JSESSIONID" && cookie.domain != host)
            continue;
        HTTPCookieStorage::shared().setCookie(cookie);
    }
}

void ZelkamMobileFileDownloadUtil::saveResponseCookies(const URL &temporaryFile,
                                                       const URLResponse &response) const
{
    const auto *http = dynamic_cast<const HTTPURLResponse *>(&response);
    // The root of the temporary file, not of the server: cookies that name no domain then have
    // none, which is what the rule for sessions above tells apart.
    const auto root = URL::fromString(getRootURL(temporaryFile));
    if (!http || !root)
        return;
    QList<HTTPCookie> cookies = HTTPCookie::cookies(http->allHeaderFields(), *root);
    for (HTTPCookie &cookie : cookies)
        cookie.setOrigin(response.url());
    saveCookieStore(cookies, response.url().host().value_or(QString()));
}

} // namespace zelkam
