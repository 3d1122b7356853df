#include "app/web_origin.h"

namespace zelkam {

namespace {

int defaultPort(const QString &scheme)
{
    if (scheme == u"http")
        return 80;
    if (scheme == u"https")
        return 443;
    return -1;
}

} // namespace

std::optional<WebOrigin> WebOrigin::fromUrl(const QUrl &url)
{
    const QString scheme = url.scheme().toLower();
    const bool isWeb = scheme == u"http" || scheme == u"https";
    // A backslash ends the host for a browser, where QUrl takes it for a part of the user's name.
    if (!url.isValid() || url.userInfo().contains(u'\\') ||
        (!isWeb && scheme != QLatin1String(hostScheme)))
        return std::nullopt;
    WebOrigin origin;
    origin.m_scheme = scheme;
    origin.m_host = url.host(QUrl::FullyEncoded).toLower();
    origin.m_port = url.port(defaultPort(scheme));
    if (origin.m_host.isEmpty())
        return std::nullopt;
    return origin;
}

std::optional<WebOrigin> WebOrigin::fromText(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool isWeb = url.scheme() == u"http" || url.scheme() == u"https";
    const bool isBare = (url.path().isEmpty() || url.path() == u"/") && !url.hasQuery() &&
                        !url.hasFragment() && url.userInfo().isEmpty();
    if (!isWeb || !isBare || url.host().contains(u'*'))
        return std::nullopt;
    return fromUrl(url);
}

QString WebOrigin::toString() const
{
    QUrl url;
    url.setScheme(m_scheme);
    url.setHost(m_host);
    if (m_port != defaultPort(m_scheme))
        url.setPort(m_port);
    return url.toString(QUrl::FullyEncoded);
}

} // namespace zelkam
