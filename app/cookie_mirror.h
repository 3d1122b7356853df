#pragma once

#include "platform/network/http_cookie_storage.h"

#include <QList>
#include <QObject>
#include <functional>
#include <optional>
#include <utility>

class QWebEngineCookieStore;

namespace zelkam {

/// Keeps the application's cookie store and the web view's cookies in step, both ways, http-only
/// ones included.
///
/// The web view tells its changes some time after they were made, in their order. So whoever needs
/// to see them all passes a flush: it writes a marker cookie of a host that cannot exist, and when
/// the marker's own change is told, every change before it has been. An overwritten cookie is told
/// as a removal and an addition; a removal therefore reaches the store with the next marker, and
/// only if no addition followed.
///
/// A cookie of the store with an empty domain becomes the web view's host-only cookie of the
/// server that gave it. One whose server is not known, or has no right to its domain, stays out of
/// the web view. One that came in the clear is offered to it as such, so that the web view
/// protects its secure cookies itself.
///
/// Main thread only; the store may be changed on any.
class CookieMirror : public QObject
{
    Q_OBJECT

public:
    /// Starts with what both hold already. The web view's store lives as long as this.
    CookieMirror(QWebEngineCookieStore &view, HTTPCookieStorage &store);
    ~CookieMirror() override;

    /// Runs the work once all changes made so far on either side have reached the other one, in
    /// the order of the calls; never inside this call. If the web view does not answer within
    /// two seconds, runs it all the same.
    void flush(std::function<void()> then);

private:
    void viewAdded(const QNetworkCookie &networkCookie);
    void viewRemoved(const QNetworkCookie &networkCookie);
    void storeChanged(const HTTPCookie &cookie);
    void setInView(const HTTPCookie &cookie);
    void removeFromView(const HTTPCookie &cookie);
    std::optional<HTTPCookie> inStore(const HTTPCookie &identity) const;
    void changeStore(const std::function<void()> &change);
    void pass(quint64 marker);

    /// A cookie set in the view by us and not told yet.
    struct Expected
    {
        HTTPCookie cookie;
        quint64 marker; ///< once a later one has passed, the view did not take the cookie
        std::optional<HTTPCookie> told = std::nullopt; ///< and then this is what it holds instead
    };

    QWebEngineCookieStore &m_view;
    HTTPCookieStorage &m_store;
    HTTPCookieStorage::Observation m_observation;
    bool m_changingStore = false;
    QList<Expected> m_expected;   ///< in their order
    QList<HTTPCookie> m_removals; ///< told as removed since the last marker
    QList<std::pair<quint64, std::function<void()>>> m_waiting;
    quint64 m_lastMarker = 0;
    quint64 m_passedMarker = 0;
};

} // namespace zelkam
