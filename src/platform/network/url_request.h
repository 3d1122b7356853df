#pragma once

#include "platform/foundation/url.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <chrono>
#include <optional>
#include <utility>

namespace zelkam {

/// One HTTP request: a value, copied freely, from any thread.
class URLRequest
{
public:
    /// How the platform may answer from a cache. There is no cache here: every request goes out.
    enum class CachePolicy { useProtocolCachePolicy = 0 };

    explicit URLRequest(const URL &address,
                        CachePolicy policy = CachePolicy::useProtocolCachePolicy,
                        std::chrono::milliseconds timeout = std::chrono::seconds(60))
        : url(address), cachePolicy(policy), timeoutInterval(timeout)
    {
    }

    URL url;
    CachePolicy cachePolicy;
    /// The longest silence in the transfer; the session's own limit counts too, the shorter wins.
    std::chrono::milliseconds timeoutInterval;
    QString httpMethod = QStringLiteral("GET");
    QByteArray httpBody; ///< not sent with a GET

    /// Sets a header, replacing one whose name differs only in case; an absent value removes it.
    /// Text goes out as UTF-8. The header keeps its place among the others.
    ///
    /// Content-Length, Transfer-Encoding, Host, Connection and their like are the transfer's own:
    /// they can be set but are not sent. A name that is no token (RFC 9110, 5.6.2) or a value
    /// that holds a line break or another control character fails the request with badURL.
    void setValue(const std::optional<QString> &value, const QString &forHTTPHeaderField);

    /// The value of a header, its name compared without case.
    std::optional<QString> value(const QString &forHTTPHeaderField) const;

    /// All headers, in the order in which they were first set.
    const QList<std::pair<QString, QString>> &allHTTPHeaderFields() const { return m_headers; }

private:
    QList<std::pair<QString, QString>> m_headers;
};

} // namespace zelkam
