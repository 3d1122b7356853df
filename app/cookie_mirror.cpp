#include "app/cookie_mirror.h"

#include "platform/foundation/dispatch_queue.h"

#include <QPointer>
#include <QTimer>
#include <QWebEngineCookieStore>
#include <algorithm>
#include <chrono>

namespace zelkam {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 2s;

/// A reserved top-level domain (RFC 6761, 6.4), so that no server ever gets the marker.
const QLatin1String markerDomain("cookie-mirror.invalid");
const QByteArray markerName("marker");

bool isMarker(const QNetworkCookie &cookie)
{
    return cookie.domain() == markerDomain && cookie.name() == markerName;
}

/// The server in whose name a cookie is set.
QUrl serverOf(const QString &host, bool isSecure)
{
    QUrl url;
    url.setScheme(isSecure ? QStringLiteral("https") : QStringLiteral("http"));
    url.setHost(host);
    url.setPath(QStringLiteral("/"));
    return url;
}

/// The server of a download may name any domain; the web view takes only what it may set.
bool isForView(const HTTPCookie &cookie)
{
    return !cookie.effectiveDomain().isEmpty() && cookie.isOfItsOrigin();
}

QNetworkCookie viewCookie(const HTTPCookie &cookie)
{
    QNetworkCookie result = cookie.toNetworkCookie();
    // With its domain written out it would become a cookie of the hosts below it too.
    if (cookie.isHostOnly)
        result.setDomain(QString());
    return result;
}

} // namespace

CookieMirror::CookieMirror(QWebEngineCookieStore &view, HTTPCookieStorage &store)
    : m_view(view), m_store(store)
{
    connect(&view, &QWebEngineCookieStore::cookieAdded, this, &CookieMirror::viewAdded);
    connect(&view, &QWebEngineCookieStore::cookieRemoved, this, &CookieMirror::viewRemoved);
    const QPointer<CookieMirror> self(this);
    m_observation = store.observe([self](HTTPCookieStorage::Change, const HTTPCookie &cookie) {
        if (isMainThread() && self && self->m_changingStore)
            return;
        DispatchQueue::main().async([self, cookie] {
            if (self)
                self->storeChanged(cookie);
        });
    });
    const auto cookies = store.cookies();
    if (cookies) {
        for (const HTTPCookie &cookie : *cookies)
            setInView(cookie);
    }
    view.loadAllCookies();
}

CookieMirror::~CookieMirror() = default;

void CookieMirror::flush(std::function<void()> then)
{
    const quint64 marker = ++m_lastMarker;
    m_waiting.append({marker, std::move(then)});
    // Through the main queue, behind the changes that other threads have queued there.
    DispatchQueue::main().async([self = QPointer<CookieMirror>(this), marker] {
        if (!self)
            return;
        QNetworkCookie cookie(markerName, QByteArray::number(marker));
        cookie.setPath(QStringLiteral("/"));
        self->m_view.setCookie(cookie, serverOf(markerDomain, true));
        QTimer::singleShot(patience, self, [self, marker] { self->pass(marker); });
    });
}

void CookieMirror::viewAdded(const QNetworkCookie &networkCookie)
{
    if (isMarker(networkCookie)) {
        pass(networkCookie.value().toULongLong());
        return;
    }
    const HTTPCookie cookie = HTTPCookie::fromNetworkCookie(networkCookie);
    const auto isSame = [&cookie](const HTTPCookie &other) {
        return cookie.hasSameIdentity(other);
    };
    m_removals.removeIf(isSame);

    const auto isSameSet = [&isSame](const Expected &set) { return isSame(set.cookie); };
    const auto expected = std::find_if(m_expected.begin(), m_expected.end(), isSameSet);
    if (expected != m_expected.end()) {
        const bool isEcho = expected->cookie.value == cookie.value;
        if (isEcho)
            m_expected.erase(expected);
        // While a value of ours is still on its way, whatever is told of this cookie lies before
        // it. The last echo changes nothing either, unless the page was faster than the store.
        const bool moreToCome = std::any_of(m_expected.cbegin(), m_expected.cend(), isSameSet);
        const auto stored = inStore(cookie);
        if (moreToCome && !isEcho)
            expected->told = cookie;
        if (moreToCome || (isEcho && stored && stored->value == cookie.value))
            return;
    }
    changeStore([&] { m_store.setCookie(cookie); });
}

void CookieMirror::viewRemoved(const QNetworkCookie &networkCookie)
{
    if (isMarker(networkCookie))
        return;
    const HTTPCookie cookie = HTTPCookie::fromNetworkCookie(networkCookie);
    for (Expected &set : m_expected) {
        if (set.cookie.hasSameIdentity(cookie))
            set.told.reset();
    }
    m_removals.append(cookie);
    if (m_passedMarker == m_lastMarker)
        flush([] {});
}

void CookieMirror::storeChanged(const HTTPCookie &cookie)
{
    // Changes of several threads may be told out of order, the store is the truth.
    if (const auto stored = inStore(cookie))
        setInView(*stored);
    else
        removeFromView(cookie);
}

void CookieMirror::setInView(const HTTPCookie &cookie)
{
    if (!isForView(cookie))
        return;
    m_expected.append({cookie, m_lastMarker});
    m_view.setCookie(viewCookie(cookie),
                     serverOf(cookie.effectiveDomain(), !cookie.isFromInsecureOrigin));
    // Its marker tells that the web view did not take the cookie, if that is so.
    if (m_passedMarker == m_lastMarker)
        flush([] {});
}

void CookieMirror::removeFromView(const HTTPCookie &cookie)
{
    if (!isForView(cookie))
        return;
    // Set with an expiry in the past, as deleting by name would take its namesakes of other paths;
    // and in the name of a secure server only where such a one was removed, so that a newer secure
    // one stays.
    QNetworkCookie networkCookie = viewCookie(cookie);
    networkCookie.setExpirationDate(QDateTime::fromSecsSinceEpoch(1));
    m_view.setCookie(networkCookie, serverOf(cookie.effectiveDomain(), cookie.isSecure));
}

std::optional<HTTPCookie> CookieMirror::inStore(const HTTPCookie &identity) const
{
    const auto cookies = m_store.cookies();
    if (!cookies)
        return std::nullopt;
    const auto found =
        std::find_if(cookies->cbegin(), cookies->cend(),
                     [&](const HTTPCookie &cookie) { return cookie.hasSameIdentity(identity); });
    return found == cookies->cend() ? std::nullopt : std::optional(*found);
}

void CookieMirror::changeStore(const std::function<void()> &change)
{
    m_changingStore = true;
    change();
    m_changingStore = false;
}

void CookieMirror::pass(quint64 marker)
{
    if (marker <= m_passedMarker)
        return;
    m_passedMarker = marker;
    const QList<HTTPCookie> removals = std::exchange(m_removals, {});
    for (const HTTPCookie &cookie : removals) {
        const auto stored = inStore(cookie);
        if (stored && stored->value == cookie.value)
            changeStore([&] { m_store.deleteCookie(*stored); });
    }
    while (!m_expected.isEmpty() && m_expected.first().marker < marker) {
        if (const auto told = m_expected.takeFirst().told)
            changeStore([&] { m_store.setCookie(*told); });
    }
    while (!m_waiting.isEmpty() && m_waiting.first().first <= marker) {
        const auto then = std::move(m_waiting.first().second);
        m_waiting.removeFirst();
        then();
    }
}

} // namespace zelkam
