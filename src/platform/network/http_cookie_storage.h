#pragma once

#include "platform/network/http_cookie.h"

#include <QList>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

/// The cookies of the application, shared by its transfers and its web content. In memory only:
/// what outlives the program is the web view's business, which is kept in step by an observer.
///
/// Expired cookies are dropped. The limits are those of RFC 6265, 6.1: 4096 bytes for name,
/// value and attributes of a cookie, 50 cookies a domain, 3000 in all; beyond them the expired
/// cookies go first, then the oldest.
///
/// All operations may be called from any thread.
class HTTPCookieStorage
{
public:
    static constexpr qsizetype maxCookieBytes = 4096;
    static constexpr qsizetype maxCookiesPerDomain = 50;
    static constexpr qsizetype maxCookies = 3000;

    enum class Change { set, removed };
    using Observer = std::function<void(Change, const HTTPCookie &)>;
    /// Ends the observation when it goes. A call that is under way on another thread may still end
    /// after that.
    using Observation = std::shared_ptr<void>;

    static HTTPCookieStorage &shared();

    HTTPCookieStorage();
    ~HTTPCookieStorage();
    Q_DISABLE_COPY_MOVE(HTTPCookieStorage)

    /// Every cookie of the store, in the order of creation. This store always has a list; the
    /// type leaves room for one that accepts no cookies.
    std::optional<QList<HTTPCookie>> cookies() const;

    /// The cookies that a request to the URL carries, in the order of RFC 6265, 5.4: longer
    /// paths first, then the older ones.
    QList<HTTPCookie> cookies(const URL &forURL) const;

    /// Adds a cookie or replaces the one of the same identity, which keeps its place. A cookie
    /// that has expired removes that one instead. One without a name or beyond the size limit
    /// is ignored, as is one that equals what is stored.
    void setCookie(const HTTPCookie &cookie);

    /// Removes the cookie of the same identity.
    void deleteCookie(const HTTPCookie &cookie);

    /// Calls the observer after each change, on the thread that made it and with no lock held, so
    /// it may call the store. Changes of several threads may be told in another order than they
    /// were made in; cookies() is the truth. That a cookie has expired is not told: whoever copied
    /// it knows its date too.
    [[nodiscard]] Observation observe(Observer observer);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace zelkam
