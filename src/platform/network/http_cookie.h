#pragma once

#include "platform/foundation/url.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QNetworkCookie>
#include <QString>
#include <optional>

namespace zelkam {

/// One cookie: a value. From any thread.
class HTTPCookie
{
public:
    HTTPCookie(const QString &name, const QString &value, const QString &domain,
               const QString &path);

    QString name;
    QString value;
    /// The domain as the server named it ("example.com" or ".example.com"); for a cookie without
    /// a Domain attribute the host of the URL that it came from, empty when that has none.
    QString domain;
    QString path;                         ///< "/" at least
    std::optional<QDateTime> expiresDate; ///< absent for a session cookie
    bool isSecure = false;
    bool isHTTPOnly = false;
    /// Whether the cookie belongs to exactly one host, and not to the hosts below it too.
    bool isHostOnly = true;
    /// Names the server that gave the cookie, where nothing else tells: the domain may be empty,
    /// or one that the server has no right to. Whoever stores the cookie sets it.
    QString originHost;

    bool isSessionOnly() const { return !expiresDate; }
    bool isExpired() const;

    /// The domain, or for an empty one the origin host; lower case, without a dot in front.
    QString effectiveDomain() const;

    /// Whether both have the same name, effective domain, host-only flag and path: setting one
    /// replaces the other.
    bool hasSameIdentity(const HTTPCookie &other) const;

    /// Whether domain, path and security fit a request to the URL, by RFC 6265, 5.4. A cookie that
    /// names no server at all fits none.
    bool belongsTo(const URL &url) const;

    /// Whether the server that gave the cookie may set it by RFC 6265, 5.3: its own domain or one
    /// above it. True when that server is not known.
    bool isOfItsOrigin() const;

    /// Whether a request can carry it: it has a name, and holds nothing that would end its place
    /// in the header.
    bool isSendable() const;

    /// The "Cookie" header that carries all the cookies, in the order given, with no choice made
    /// among them; no entry when there are none.
    static QMap<QString, QString> requestHeaderFields(const QList<HTTPCookie> &with);

    /// The cookies that response header fields set, in their order. Field names are compared
    /// without case; several Set-Cookie fields are separated by line feeds, as
    /// HTTPURLResponse::allHeaderFields() gives them.
    ///
    /// A Domain attribute that the URL's host does not belong to, or that is a public suffix such
    /// as "com", drops its cookie. When the URL has no host, the attribute stands as it is and
    /// cookies without one get an empty domain.
    static QList<HTTPCookie> cookies(const QMap<QString, QString> &withResponseHeaderFields,
                                     const URL &forURL);

    /// From a cookie of the web view: a domain without a dot in front means that host alone.
    static HTTPCookie fromNetworkCookie(const QNetworkCookie &cookie);
    /// For the web view, with the effective domain in the same notation.
    QNetworkCookie toNetworkCookie() const;

    friend bool operator==(const HTTPCookie &, const HTTPCookie &) = default;
};

} // namespace zelkam
