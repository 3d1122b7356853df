#include "platform/network/http_cookie.h"

#include "platform/network/cookie_date.h"
#include "platform/network/header_text.h"

#include <QHostAddress>
#include <QNetworkCookieJar>
#include <QStringList>
#include <algorithm>

namespace zelkam {

namespace {

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

/// Qt knows the list of public suffixes, and shows it here only.
class PublicSuffixes : private QNetworkCookieJar
{
public:
    bool contain(const QString &domain) const
    {
        QNetworkCookie cookie("any");
        cookie.setDomain(u'.' + domain);
        QUrl below;
        below.setScheme(QStringLiteral("http"));
        below.setHost(QStringLiteral("any.") + domain);
        return !validateCookie(cookie, below);
    }
};

/// Whether a cookie may be one of all hosts below the domain. An address and a name of one label
/// have none, and those below a public suffix are strangers to each other. A cookie for them is one
/// of the host alone, as in browsers. A dot at the end is the name's root and changes none of this.
bool maySpan(const QString &domain)
{
    static const PublicSuffixes suffixes;
    const QString name = domain.endsWith(u'.') ? domain.chopped(1) : domain;
    return name.contains(u'.') && QHostAddress(name).isNull() && !suffixes.contain(name);
}

bool covers(const HTTPCookie &cookie, const QString &host)
{
    const QString own = cookie.effectiveDomain();
    return cookie.isHostOnly ? host == own : domainMatches(host, own);
}

QString hostOf(const URL &url)
{
    return url.host().value_or(QString()).toLower();
}

/// The web view writes names in punycode and IPv6 addresses in brackets; everything here has them
/// as QUrl::host() gives them. Any other text stays: QUrl would take a number for an address.
QString normalized(const QString &domain)
{
    if (!domain.contains(u"xn--") && !domain.startsWith(u'['))
        return domain;
    const bool hasDot = domain.startsWith(u'.');
    QUrl url;
    url.setHost(hasDot ? domain.mid(1) : domain);
    return url.host().isEmpty() ? domain : (hasDot ? QStringLiteral(".") : QString()) + url.host();
}

/// The device itself counts too, as it does for the web view: nobody is on the way to it.
bool isTrustworthy(const URL &url)
{
    const QString host = hostOf(url);
    return url.scheme() == QStringLiteral("https") || host == u"localhost" ||
           host.endsWith(u".localhost") || QHostAddress(host).isLoopback();
}

/// RFC 6265bis, 4.1.3.
bool keepsPromiseOfName(const QNetworkCookie &cookie)
{
    const QByteArray name = cookie.name().toLower();
    if (name.startsWith("__host-"))
        return cookie.isSecure() && cookie.domain().isEmpty() && cookie.path() == u"/";
    return !name.startsWith("__secure-") || cookie.isSecure();
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

/// RFC 6265, 5.2.2.
std::optional<QDateTime> readMaxAge(const QByteArray &text)
{
    const bool isNegative = text.startsWith('-');
    const QByteArray digits = isNegative ? text.mid(1) : text;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDigit))
        return std::nullopt;
    constexpr qint64 longest = 400LL * 24 * 3600 * 10; // decades would overflow the date
    bool fits = false;
    const qint64 seconds = digits.toLongLong(&fits);
    if (isNegative || (fits && seconds == 0))
        return QDateTime::fromSecsSinceEpoch(0);
    return QDateTime::currentDateTimeUtc().addSecs(fits ? qMin(seconds, longest) : longest);
}

// The last attribute of a name counts, and Max-Age goes before Expires (RFC 6265, 5.3, step 3),
// as it does not depend on the device's clock. QNetworkCookie lets the later of the two win.
std::optional<QDateTime> expiry(const QByteArray &line)
{
    std::optional<QDateTime> byDate;
    const QList<QByteArray> attributes = line.split(';');
    for (qsizetype i = attributes.size() - 1; i > 0; --i) {
        const qsizetype equals = attributes[i].indexOf('=');
        const QByteArray name = attributes[i].left(equals).trimmed().toLower();
        const QByteArray value = attributes[i].mid(equals + 1).trimmed();
        if (name == "max-age") {
            if (const auto byAge = readMaxAge(value))
                return byAge;
        }
        if (name == "expires" && !byDate)
            byDate = readCookieDate(value);
    }
    return byDate;
}

std::optional<HTTPCookie> parsedCookie(const QByteArray &line, const URL &url)
{
    const QList<QNetworkCookie> parsed = QNetworkCookie::parseCookies(line);
    if (parsed.size() != 1 || parsed.first().name().isEmpty())
        return std::nullopt;
    const QNetworkCookie &source = parsed.first();
    const QString host = hostOf(url);
    const bool namesDomain = !source.domain().isEmpty();
    const QString path = source.path().isEmpty() ? defaultPath(url) : source.path();
    HTTPCookie cookie(headerText(source.name()), headerText(source.value()),
                      namesDomain ? source.domain() : host, path);
    cookie.isHostOnly = !namesDomain || !maySpan(cookie.effectiveDomain());
    cookie.expiresDate = expiry(line);
    cookie.isSecure = source.isSecure();
    cookie.isHTTPOnly = source.isHttpOnly();
    cookie.sameSite = source.sameSitePolicy();
    cookie.setOrigin(url);
    const bool mayBeSet = keepsPromiseOfName(source) && cookie.isOfItsOrigin() &&
                          !(cookie.isSecure && cookie.isFromInsecureOrigin);
    return mayBeSet ? std::optional(cookie) : std::nullopt;
}

} // namespace

HTTPCookie::HTTPCookie(const QString &cookieName, const QString &cookieValue,
                       const QString &cookieDomain, const QString &cookiePath)
    : name(cookieName),
      value(cookieValue),
      domain(cookieDomain),
      path(cookiePath.startsWith(u'/') ? cookiePath : QStringLiteral("/")),
      isHostOnly(!cookieDomain.startsWith(u'.') || !maySpan(withoutLeadingDot(cookieDomain)))
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

void HTTPCookie::setOrigin(const URL &response)
{
    originHost = hostOf(response);
    isFromInsecureOrigin = !originHost.isEmpty() && !isTrustworthy(response);
}

bool HTTPCookie::isOfItsOrigin() const
{
    return originHost.isEmpty() || covers(*this, originHost);
}

bool HTTPCookie::mustLeaveAlone(const HTTPCookie &other) const
{
    if (name != other.name)
        return false;
    if (hasSameIdentity(other) && other.isOfItsOrigin() && !isOfItsOrigin())
        return true;
    const QString mine = effectiveDomain();
    const QString theirs = other.effectiveDomain();
    return isFromInsecureOrigin && other.isSecure && pathMatches(path, other.path) &&
           (domainMatches(mine, theirs) || domainMatches(theirs, mine));
}

bool HTTPCookie::belongsTo(const URL &url) const
{
    const QString host = hostOf(url);
    if (host.isEmpty() || !covers(*this, host) || (isSecure && !isTrustworthy(url)))
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
    HTTPCookie result(headerText(cookie.name()), headerText(cookie.value()),
                      normalized(cookie.domain()), cookie.path());
    if (!cookie.isSessionCookie())
        result.expiresDate = cookie.expirationDate();
    result.isSecure = cookie.isSecure();
    result.isHTTPOnly = cookie.isHttpOnly();
    result.sameSite = cookie.sameSitePolicy();
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
    cookie.setSameSitePolicy(sameSite);
    return cookie;
}

} // namespace zelkam
