#include "platform/network/http_cookie.h"

#include "platform/network/header_text.h"

#include <QHostAddress>
#include <QNetworkCookieJar>
#include <QStringList>

namespace zelkam {

namespace {

/// Qt knows the list of public suffixes, and shows it here only.
class PublicSuffixes : private QNetworkCookieJar
{
public:
    bool allow(const QString &domain, const QUrl &url) const
    {
        QNetworkCookie cookie("any");
        cookie.setDomain(u'.' + domain);
        return validateCookie(cookie, url);
    }
};

QString withoutLeadingDot(const QString &domain)
{
    return (domain.startsWith(u'.') ? domain.mid(1) : domain).toLower();
}

/// RFC 6265, 5.1.3.
bool domainMatches(const QString &host, const QString &domain)
{
    if (host == domain)
        return true;
    return host.endsWith(u'.' + domain) && QHostAddress(host).isNull();
}

/// An address and a name of one label have no hosts below them, so a cookie for "all of them"
/// is one of the host alone, as in browsers. Two kinds of it would be kept and sent side by side.
bool hasSubdomains(const QString &domain)
{
    return domain.contains(u'.') && QHostAddress(domain).isNull();
}

QString requestPath(const URL &url)
{
    const QString path = url.toQUrl().path(QUrl::FullyEncoded);
    return path.startsWith(u'/') ? path : QStringLiteral("/");
}

/// RFC 6265, 5.1.4.
QString defaultPath(const URL &url)
{
    const QString path = requestPath(url);
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash > 0 ? path.left(slash) : QStringLiteral("/");
}

bool pathMatches(const QString &requestPath, const QString &cookiePath)
{
    if (!requestPath.startsWith(cookiePath))
        return false;
    return requestPath.size() == cookiePath.size() || cookiePath.endsWith(u'/') ||
           requestPath[cookiePath.size()] == u'/';
}

// Max-Age goes before Expires (RFC 6265, 5.3, step 3): it does not depend on the device's
// clock. QNetworkCookie lets the later of the two win.
std::optional<QDateTime> expiryByMaxAge(const QByteArray &line)
{
    const QList<QByteArray> attributes = line.split(';');
    for (qsizetype i = attributes.size() - 1; i > 0; --i) {
        const qsizetype equals = attributes[i].indexOf('=');
        if (attributes[i].left(equals).trimmed().compare("max-age", Qt::CaseInsensitive) != 0)
            continue;
        bool isNumber = false;
        const qint64 seconds = attributes[i].mid(equals + 1).trimmed().toLongLong(&isNumber);
        constexpr qint64 longest = 400LL * 24 * 3600 * 10; // decades would overflow the date
        if (isNumber)
            return seconds <= 0 ? QDateTime::fromSecsSinceEpoch(0)
                                : QDateTime::currentDateTimeUtc().addSecs(qMin(seconds, longest));
    }
    return std::nullopt;
}

std::optional<HTTPCookie> parsedCookie(const QByteArray &line, const URL &url)
{
    const QList<QNetworkCookie> parsed = QNetworkCookie::parseCookies(line);
    if (parsed.size() != 1 || parsed.first().name().isEmpty())
        return std::nullopt;
    const QNetworkCookie &source = parsed.first();
    const QString host = url.host().value_or(QString()).toLower();
    const bool namesDomain = !source.domain().isEmpty();
    const QString path = source.path().isEmpty() ? defaultPath(url) : source.path();
    HTTPCookie cookie(headerText(source.name()), headerText(source.value()),
                      namesDomain ? source.domain() : host, path);
    cookie.isHostOnly = !namesDomain || !hasSubdomains(cookie.effectiveDomain());
    if (namesDomain && !host.isEmpty()) {
        static const PublicSuffixes suffixes;
        const QString own = cookie.effectiveDomain();
        if (!domainMatches(host, own) || (host != own && !suffixes.allow(own, url.toQUrl())))
            return std::nullopt;
    }
    if (!source.isSessionCookie())
        cookie.expiresDate = source.expirationDate();
    if (const auto expiry = expiryByMaxAge(line))
        cookie.expiresDate = expiry;
    cookie.isSecure = source.isSecure();
    cookie.isHTTPOnly = source.isHttpOnly();
    return cookie;
}

} // namespace

HTTPCookie::HTTPCookie(const QString &cookieName, const QString &cookieValue,
                       const QString &cookieDomain, const QString &cookiePath)
    : name(cookieName),
      value(cookieValue),
      domain(cookieDomain),
      path(cookiePath.startsWith(u'/') ? cookiePath : QStringLiteral("/")),
      isHostOnly(!cookieDomain.startsWith(u'.') || !hasSubdomains(cookieDomain.mid(1)))
{
}

bool HTTPCookie::isExpired() const
{
    return expiresDate && *expiresDate <= QDateTime::currentDateTimeUtc();
}

bool HTTPCookie::isSendable() const
{
    const QByteArray bytes = headerBytes(name + value);
    return !name.isEmpty() && isHeaderValue(bytes) && !bytes.contains(';') && !name.contains(u'=');
}

QString HTTPCookie::effectiveDomain() const
{
    return withoutLeadingDot(domain.isEmpty() ? originHost : domain);
}

bool HTTPCookie::hasSameIdentity(const HTTPCookie &other) const
{
    return name == other.name && path == other.path && isHostOnly == other.isHostOnly &&
           effectiveDomain() == other.effectiveDomain();
}

bool HTTPCookie::isOfItsOrigin() const
{
    const QString origin = originHost.toLower();
    return origin.isEmpty() || domainMatches(origin, effectiveDomain());
}

bool HTTPCookie::belongsTo(const URL &url) const
{
    const QString host = url.host().value_or(QString()).toLower();
    const QString own = effectiveDomain();
    if (host.isEmpty() || own.isEmpty())
        return false;
    if (isHostOnly ? host != own : !domainMatches(host, own))
        return false;
    if (isSecure && url.scheme() != QStringLiteral("https"))
        return false;
    return pathMatches(requestPath(url), path);
}

QMap<QString, QString> HTTPCookie::requestHeaderFields(const QList<HTTPCookie> &with)
{
    QStringList pairs;
    for (const HTTPCookie &cookie : with) {
        if (cookie.isSendable())
            pairs += cookie.name + u'=' + cookie.value;
    }
    if (pairs.isEmpty())
        return {};
    return {{QStringLiteral("Cookie"), pairs.join(QLatin1String("; "))}};
}

QList<HTTPCookie> HTTPCookie::cookies(const QMap<QString, QString> &withResponseHeaderFields,
                                      const URL &forURL)
{
    QList<HTTPCookie> cookies;
    for (auto it = withResponseHeaderFields.begin(); it != withResponseHeaderFields.end(); ++it) {
        if (it.key().compare(QLatin1String("Set-Cookie"), Qt::CaseInsensitive) != 0)
            continue;
        const QList<QByteArray> lines = headerBytes(it.value()).split('\n');
        for (const QByteArray &line : lines) {
            if (auto cookie = parsedCookie(line, forURL))
                cookies += *cookie;
        }
    }
    return cookies;
}

HTTPCookie HTTPCookie::fromNetworkCookie(const QNetworkCookie &cookie)
{
    HTTPCookie result(headerText(cookie.name()), headerText(cookie.value()), cookie.domain(),
                      cookie.path());
    if (!cookie.isSessionCookie())
        result.expiresDate = cookie.expirationDate();
    result.isSecure = cookie.isSecure();
    result.isHTTPOnly = cookie.isHttpOnly();
    return result;
}

QNetworkCookie HTTPCookie::toNetworkCookie() const
{
    QNetworkCookie cookie(headerBytes(name), headerBytes(value));
    cookie.setDomain(isHostOnly ? effectiveDomain() : u'.' + effectiveDomain());
    cookie.setPath(path);
    if (expiresDate)
        cookie.setExpirationDate(*expiresDate);
    cookie.setSecure(isSecure);
    cookie.setHttpOnly(isHTTPOnly);
    return cookie;
}

} // namespace zelkam
