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
/// Expired cookies are dropped. Beyond the limits the oldest cookies are forgotten: those of the
/// same server first, and in all those first that came from servers, so that none of them can push
/// out the cookies of the web view. Each limit is wider than a browser's (RFC 6265, 6.1, asks for
/// less), so that it is the web view that forgets.
///
/// All operations may be called from any thread.
class HTTPCookieStorage
{
public:
    static constexpr qsizetype maxPairBytes = 4096;      ///< of name and value together
    static constexpr qsizetype maxAttributeBytes = 1024; ///< of the domain, and of the path
    static constexpr qsizetype maxCookiesPerServer = 400;
    static constexpr qsizetype maxCookies = 6000;

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
    /// is ignored, as is one that equals what is stored, a secure one that came in the clear, and
    /// one that must leave a stored one alone.
    void setCookie(const HTTPCookie &cookie);

    /// Removes the cookie of the same identity.
    void deleteCookie(const HTTPCookie &cookie);

    /// Calls the observer after each change, on the thread that made it and with no lock held, so
    /// it may call the store. Changes of several threads may be told in another order than they
    /// were made in; cookies() is the truth. That a cookie has expired is not told, as whoever
    /// copied it knows its date too, nor that one was forgotten: a copy has limits of its own.
    [[nodiscard]] Observation observe(Observer observer);

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

} // namespace zelkam
