#include "platform/network/request_chain.h"

#include "platform/network/header_text.h"
#include "platform/network/http_cookie_storage.h"

#include <QRegularExpression>
#include <algorithm>
#include <initializer_list>

namespace zelkam {

namespace {

bool isOneOf(const QByteArray &name, std::initializer_list<const char *> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char *one) { return name == one; });
}

// They describe the connection or the framing of the message, which the transfer decides.
bool isReserved(const QByteArray &lowerName)
{
    return lowerName.startsWith("proxy-") ||
           isOneOf(lowerName,
                   {"content-length", "transfer-encoding", "host", "connection", "keep-alive", "te",
                    "trailer", "upgrade", "expect", "http2-settings"});
}

bool describesBody(const QByteArray &lowerName)
{
    return lowerName.startsWith("content-");
}

// Another origin sees nothing that was meant for the first; only a body that goes there along
// keeps what it is read by.
bool staysBehind(const QByteArray &lowerName)
{
    return !isOneOf(lowerName, {"content-type", "content-encoding", "content-language"});
}

bool isHttp(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

bool hasSameOrigin(const QUrl &a, const QUrl &b)
{
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

} // namespace

RequestChain::RequestChain(const URLRequest &request, const RedirectLimits &limits)
    : m_url(request.url),
      m_method(request.httpMethod.toUtf8()),
      m_body(request.httpBody),
      m_hasBody(m_method != "GET" && m_method != "HEAD"),
      m_limits(limits)
{
    for (const auto &[name, value] : request.allHTTPHeaderFields()) {
        Header header{headerBytes(name), headerBytes(value)};
        const QByteArray lowerName = header.name.toLower();
        if (lowerName == "cookie")
            m_requestCookies = header.value;
        else if (!isReserved(lowerName))
            m_headers.append(header);
    }
}

std::optional<URLError> RequestChain::refusal() const
{
    using Code = URLError::Code;
    if (!isHttp(m_url.toQUrl()))
        return URLError(Code::unsupportedURL, QStringLiteral("not http or https"));
    if (m_url.toQUrl().host().isEmpty())
        return URLError(Code::badURL, QStringLiteral("no host"));
    if (!isHeaderName(m_method) || m_method == "CONNECT")
        return URLError(Code::badURL, QStringLiteral("bad method"));
    const bool headersAreValid =
        std::all_of(m_headers.begin(), m_headers.end(), [](const Header &header) {
            return isHeaderName(header.name) && isHeaderValue(header.value);
        });
    if (!headersAreValid || !isHeaderValue(m_requestCookies.value_or(QByteArray())))
        return URLError(Code::badURL, QStringLiteral("bad header"));
    return std::nullopt;
}

QByteArray RequestChain::urlOnWire() const
{
    // Path and query go as they were written: some servers sign that text, or route by its dots.
    static const QRegularExpression afterAuthority(QStringLiteral("^[^:]*://[^/?#]*([^#]*)"));
    return m_url.toQUrl().toEncoded(QUrl::FullyEncoded | QUrl::RemovePath | QUrl::RemoveQuery |
                                    QUrl::RemoveFragment | QUrl::RemoveUserInfo) +
           afterAuthority.match(m_url.absoluteString()).captured(1).toLatin1();
}

QList<QByteArray> RequestChain::headerLines() const
{
    QList<QByteArray> lines;
    // A semicolon is how curl is told to send a header without a value.
    for (const Header &header : m_headers)
        lines += header.name + (header.value.trimmed().isEmpty() ? ";" : ": " + header.value);
    if (const QByteArray cookies = cookieHeader(); !cookies.isEmpty())
        lines += "Cookie: " + cookies;
    const bool hasChoice =
        std::any_of(m_headers.begin(), m_headers.end(), [](const Header &header) {
            return header.name.compare("Accept-Encoding", Qt::CaseInsensitive) == 0;
        });
    if (!hasChoice)
        lines += "Accept-Encoding: gzip";
    lines += "Expect:"; // no pause before a body
    return lines;
}

QByteArray RequestChain::cookieHeader() const
{
    QList<QByteArray> pairs;
    if (m_requestCookies) {
        if (m_cookies.isEmpty())
            return *m_requestCookies;
        pairs = m_requestCookies->split(';');
    } else {
        const QList<HTTPCookie> stored = HTTPCookieStorage::shared().cookies(m_url);
        for (const HTTPCookie &cookie : stored)
            pairs += headerBytes(cookie.name) + '=' + headerBytes(cookie.value);
    }
    for (const HTTPCookie &cookie : m_cookies) {
        if (!cookie.belongsTo(m_url) || !cookie.isSendable())
            continue;
        const QByteArray start = headerBytes(cookie.name) + '=';
        pairs.removeIf([&](const QByteArray &pair) { return pair.trimmed().startsWith(start); });
        if (!cookie.isExpired())
            pairs += start + headerBytes(cookie.value);
    }
    for (QByteArray &pair : pairs)
        pair = pair.trimmed();
    pairs.removeAll(QByteArray());
    return pairs.join("; ");
}

std::optional<URLError> RequestChain::reached(AddressSpace space)
{
    if (m_redirects > 0 && space > m_space && !mayLeadAnywhere(m_url.toQUrl()))
        return URLError(URLError::Code::redirectNotAllowed, QStringLiteral("to a private network"));
    m_space = std::min(m_space, space);
    return std::nullopt;
}

bool RequestChain::mayLeadAnywhere(const QUrl &target) const
{
    return m_limits.allowsUnsafeRedirects ||
           (m_limits.ownServer && hasSameOrigin(target, m_limits.ownServer->toQUrl()));
}

bool RequestChain::isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

std::optional<URLError> RequestChain::follow(int status, const QByteArray &location,
                                             const QMap<QString, QString> &responseFields)
{
    using Code = URLError::Code;
    if (++m_redirects > maxRedirects)
        return URLError(Code::httpTooManyRedirects);
    keep(HTTPCookie::cookies(responseFields, m_url));

    const QUrl &from = m_url.toQUrl();
    QUrl target = from.resolved(QUrl::fromEncoded(location, QUrl::TolerantMode));
    if (!target.hasFragment() && from.hasFragment())
        target.setFragment(from.fragment(QUrl::FullyEncoded), QUrl::StrictMode);
    const bool sameOrigin = hasSameOrigin(from, target);
    if (sameOrigin && target.userInfo().isEmpty())
        target.setUserInfo(from.userInfo(QUrl::FullyEncoded), QUrl::StrictMode);
    const std::optional<URL> next = URL::fromQUrl(target);
    if (!next || !isHttp(target) || target.host().isEmpty())
        return URLError(Code::redirectToUnsupportedURL);
    if (from.scheme() == QLatin1String("https") && target.scheme() == QLatin1String("http") &&
        !mayLeadAnywhere(target))
        return URLError(Code::redirectNotAllowed, QStringLiteral("from https to http"));
    m_url = *next;

    const bool becomesGet = status == 303 ? m_method != "GET" && m_method != "HEAD"
                                          : (status == 301 || status == 302) && m_method == "POST";
    if (becomesGet) {
        m_method = "GET";
        m_body.clear();
        m_hasBody = false;
        dropHeaders(&describesBody);
    }
    if (!sameOrigin) {
        dropHeaders(&staysBehind);
        if (!m_hasBody)
            dropHeaders(&describesBody);
        m_requestCookies.reset();
    }
    return std::nullopt;
}

void RequestChain::keep(const QList<HTTPCookie> &cookies)
{
    const QList<HTTPCookie> others =
        HTTPCookieStorage::shared().cookies().value_or(QList<HTTPCookie>()) + m_cookies;
    for (const HTTPCookie &cookie : cookies) {
        const bool isKeptOut =
            std::any_of(others.begin(), others.end(),
                        [&](const HTTPCookie &other) { return cookie.mustLeaveAlone(other); });
        if (isKeptOut)
            continue;
        m_cookies.removeIf([&](const HTTPCookie &old) { return old.hasSameIdentity(cookie); });
        m_cookies += cookie;
    }
}

void RequestChain::dropHeaders(bool (*unwanted)(const QByteArray &))
{
    m_headers.removeIf([&](const Header &header) { return unwanted(header.name.toLower()); });
}

} // namespace zelkam
