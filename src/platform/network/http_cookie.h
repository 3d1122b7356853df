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
    /// Whether the cookie belongs to exactly one host, and not to the hosts below it too. So it is
    /// for every address, name of one label and public suffix, whatever the server asked for.
    bool isHostOnly = true;
    /// As the server wrote it; nothing here goes by it, it is for the web view.
    QNetworkCookie::SameSite sameSite = QNetworkCookie::SameSite::Default;
    /// The server that gave the cookie, in lower case; empty when it is not known, as with cookies
    /// that the application makes or its web view tells. Those are trusted.
    QString originHost;
    /// Whether that server sent it in the clear, where anybody on the way may have written it. This
    /// device's own servers (localhost, loopback addresses) count as secure, as in the web view.
    bool isFromInsecureOrigin = false;

    /// Names the server by the URL of its response.
    void setOrigin(const URL &response);

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

    /// Whether its server may set it by RFC 6265, 5.3: its own domain or one above it that is no
    /// public suffix. True when that server is not known.
    bool isOfItsOrigin() const;

    /// Whether this cookie may not replace, remove or hide the other: the other is secure and this
    /// one came in the clear (RFC 6265bis, "leave secure cookies alone"), or the other is its
    /// server's own and this one's server has no right to its domain.
    bool mustLeaveAlone(const HTTPCookie &other) const;

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
    /// A cookie is dropped when its Domain attribute names a domain that the URL's host does not
    /// belong to, or a public suffix such as "com"; when it is secure and the URL is not; and when
    /// its name begins with "__Host-" or "__Secure-" (in any case) without what this promises by
    /// RFC 6265bis, 4.1.3. When the URL has no host, a Domain attribute stands as it is, cookies
    /// without one get an empty domain, and none has an origin: whoever stores them sets it.
    static QList<HTTPCookie> cookies(const QMap<QString, QString> &withResponseHeaderFields,
                                     const URL &forURL);

    /// From a cookie of the web view: a domain without a dot in front means that host alone.
    static HTTPCookie fromNetworkCookie(const QNetworkCookie &cookie);
    /// For the web view, with the effective domain in the same notation.
    QNetworkCookie toNetworkCookie() const;

    friend bool operator==(const HTTPCookie &, const HTTPCookie &) = default;
};

} // namespace zelkam
