#include "platform/network/http_cookie_storage.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace zelkam {

namespace {

/// The sizes of RFC 6265bis, 5.6 and 5.7.
bool isTooLarge(const HTTPCookie &cookie)
{
    using Store = HTTPCookieStorage;
    return cookie.name.toUtf8().size() + cookie.value.toUtf8().size() > Store::maxPairBytes ||
           cookie.domain.toUtf8().size() > Store::maxAttributeBytes ||
           cookie.path.toUtf8().size() > Store::maxAttributeBytes;
}

// The web view keeps dates by the second, and spells out a domain that is empty here. Its echo of
// a cookie must count as the same one, or the two stores would tell each other for ever.
bool isEcho(const HTTPCookie &a, const HTTPCookie &b)
{
    const auto second = [](const HTTPCookie &cookie) {
        return cookie.expiresDate ? cookie.expiresDate->toSecsSinceEpoch() : -1;
    };
    return a.hasSameIdentity(b) && a.value == b.value && a.isOfItsOrigin() == b.isOfItsOrigin() &&
           a.isSecure == b.isSecure && a.isHTTPOnly == b.isHTTPOnly && second(a) == second(b);
}

} // namespace

struct HTTPCookieStorage::Data
{
    using Changes = std::vector<std::pair<Change, HTTPCookie>>;

    QList<HTTPCookie>::iterator find(const HTTPCookie &cookie)
    {
        return std::find_if(cookies.begin(), cookies.end(), [&](const HTTPCookie &stored) {
            return stored.hasSameIdentity(cookie);
        });
    }

    Changes remove(QList<HTTPCookie>::iterator stored)
    {
        if (stored == cookies.end())
            return {};
        const HTTPCookie removed = *stored;
        cookies.erase(stored);
        return {{Change::removed, removed}};
    }

    template<typename Predicate>
    void forgetOldest(Predicate among, qsizetype surplus)
    {
        if (surplus > 0)
            cookies.removeIf([&](const auto &cookie) { return among(cookie) && surplus-- > 0; });
    }

    void keepLimits(const HTTPCookie &newest)
    {
        // Those that are trusted share their domain's room, not that of a server.
        const auto isOfSameServer = [&](const HTTPCookie &cookie) {
            return cookie.originHost == newest.originHost &&
                   (!newest.originHost.isEmpty() ||
                    cookie.effectiveDomain() == newest.effectiveDomain());
        };
        const qsizetype ofServer = std::count_if(cookies.begin(), cookies.end(), isOfSameServer);
        forgetOldest(isOfSameServer, ofServer - maxCookiesPerServer);
        forgetOldest([](const HTTPCookie &cookie) { return !cookie.originHost.isEmpty(); },
                     cookies.size() - maxCookies);
        forgetOldest([](const HTTPCookie &) { return true; }, cookies.size() - maxCookies);
    }

    void notify(const Changes &changes)
    {
        if (changes.empty())
            return;
        std::vector<std::shared_ptr<Observer>> living;
        {
            const std::lock_guard lock(mutex);
            std::erase_if(observers, [](const auto &observer) { return observer.expired(); });
            for (const auto &observer : observers) {
                if (auto alive = observer.lock())
                    living.push_back(std::move(alive));
            }
        }
        for (const auto &[change, cookie] : changes) {
            for (const auto &observer : living)
                (*observer)(change, cookie);
        }
    }

    std::mutex mutex;
    QList<HTTPCookie> cookies; // in the order of creation
    std::vector<std::weak_ptr<Observer>> observers;
};

HTTPCookieStorage &HTTPCookieStorage::shared()
{
    static HTTPCookieStorage storage;
    return storage;
}

HTTPCookieStorage::HTTPCookieStorage() : m_data(std::make_unique<Data>()) {}

HTTPCookieStorage::~HTTPCookieStorage() = default;

std::optional<QList<HTTPCookie>> HTTPCookieStorage::cookies() const
{
    const std::lock_guard lock(m_data->mutex);
    QList<HTTPCookie> cookies = m_data->cookies;
    cookies.removeIf([](const HTTPCookie &cookie) { return cookie.isExpired(); });
    return cookies;
}

QList<HTTPCookie> HTTPCookieStorage::cookies(const URL &forURL) const
{
    QList<HTTPCookie> cookies = this->cookies().value_or(QList<HTTPCookie>());
    cookies.removeIf([&](const HTTPCookie &cookie) { return !cookie.belongsTo(forURL); });
    std::stable_sort(cookies.begin(), cookies.end(), [](const HTTPCookie &a, const HTTPCookie &b) {
        return a.path.size() > b.path.size();
    });
    return cookies;
}

void HTTPCookieStorage::setCookie(const HTTPCookie &cookie)
{
    if (!cookie.isSendable() || isTooLarge(cookie))
        return;
    if (cookie.isSecure && cookie.isFromInsecureOrigin)
        return;
    Data::Changes changes;
    {
        const std::lock_guard lock(m_data->mutex);
        auto &cookies = m_data->cookies;
        cookies.removeIf([](const HTTPCookie &stored) { return stored.isExpired(); });
        const auto isInTheWay = [&](const HTTPCookie &stored) {
            return cookie.mustLeaveAlone(stored);
        };
        if (std::any_of(cookies.cbegin(), cookies.cend(), isInTheWay))
            return;
        const auto stored = m_data->find(cookie);
        if (cookie.isExpired()) {
            changes = m_data->remove(stored);
        } else if (stored == cookies.end() || !isEcho(*stored, cookie)) {
            if (stored == cookies.end())
                cookies += cookie;
            else
                *stored = cookie;
            m_data->keepLimits(cookie);
            changes.emplace_back(Change::set, cookie);
        }
    }
    m_data->notify(changes);
}

void HTTPCookieStorage::deleteCookie(const HTTPCookie &cookie)
{
    Data::Changes changes;
    {
        const std::lock_guard lock(m_data->mutex);
        changes = m_data->remove(m_data->find(cookie));
    }
    m_data->notify(changes);
}

HTTPCookieStorage::Observation HTTPCookieStorage::observe(Observer observer)
{
    auto kept = std::make_shared<Observer>(std::move(observer));
    const std::lock_guard lock(m_data->mutex);
    m_data->observers.push_back(kept);
    return kept;
}

} // namespace zelkam
