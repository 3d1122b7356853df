#include "platform/network/http_cookie_storage.h"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace zelkam {

namespace {

qsizetype sizeOf(const HTTPCookie &cookie)
{
    return cookie.name.toUtf8().size() + cookie.value.toUtf8().size() +
           cookie.domain.toUtf8().size() + cookie.path.toUtf8().size();
}

// The web view keeps dates by the second, and spells out a domain that is empty here. Its echo of
// a cookie must count as the same one, or the two stores would tell each other for ever.
bool isEcho(const HTTPCookie &a, const HTTPCookie &b)
{
    const auto second = [](const HTTPCookie &cookie) {
        return cookie.expiresDate ? cookie.expiresDate->toSecsSinceEpoch() : -1;
    };
    return a.hasSameIdentity(b) && a.value == b.value && a.isSecure == b.isSecure &&
           a.isHTTPOnly == b.isHTTPOnly && second(a) == second(b);
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

    template<typename Predicate>
    void evictOldest(Predicate among, qsizetype limit, Changes &changes)
    {
        qsizetype surplus = std::count_if(cookies.begin(), cookies.end(), among) - limit;
        for (; surplus > 0; --surplus) {
            const auto oldest = std::find_if(cookies.begin(), cookies.end(), among);
            changes.emplace_back(Change::removed, *oldest);
            cookies.erase(oldest);
        }
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
    if (cookie.isExpired())
        return deleteCookie(cookie);
    if (!cookie.isSendable() || sizeOf(cookie) > maxCookieBytes)
        return;
    Data::Changes changes;
    {
        const std::lock_guard lock(m_data->mutex);
        m_data->cookies.removeIf([](const HTTPCookie &stored) { return stored.isExpired(); });
        const auto stored = m_data->find(cookie);
        if (stored != m_data->cookies.end() && isEcho(*stored, cookie))
            return;
        if (stored != m_data->cookies.end())
            *stored = cookie;
        else
            m_data->cookies += cookie;
        const QString domain = cookie.effectiveDomain();
        m_data->evictOldest(
            [&](const HTTPCookie &other) { return other.effectiveDomain() == domain; },
            maxCookiesPerDomain, changes);
        m_data->evictOldest([](const HTTPCookie &) { return true; }, maxCookies, changes);
        changes.emplace_back(Change::set, cookie);
    }
    m_data->notify(changes);
}

void HTTPCookieStorage::deleteCookie(const HTTPCookie &cookie)
{
    Data::Changes changes;
    {
        const std::lock_guard lock(m_data->mutex);
        const auto stored = m_data->find(cookie);
        if (stored == m_data->cookies.end())
            return;
        changes.emplace_back(Change::removed, *stored);
        m_data->cookies.erase(stored);
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
