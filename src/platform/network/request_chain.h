#pragma once

#include "platform/network/address_space.h"
#include "platform/network/http_cookie.h"
#include "platform/network/url_error.h"
#include "platform/network/url_request.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <optional>

namespace zelkam {

/// Where redirects may lead; URLSessionConfiguration documents it.
struct RedirectLimits
{
    bool allowsUnsafeRedirects = false;
    std::optional<URL> ownServer;
};

/// What goes on the wire: a request and, after each redirect, the one that follows from it. All
/// the rules about what may go to whom are here; there is no input or output.
class RequestChain
{
public:
    static constexpr int maxRedirects = 20;

    explicit RequestChain(const URLRequest &request, const RedirectLimits &limits = {});

    /// Why the request cannot be sent at all.
    std::optional<URLError> refusal() const;

    const URL &url() const { return m_url; }
    /// As it was given, dots and escapes included, but without fragment, user and password.
    QByteArray urlOnWire() const;
    QByteArray method() const { return m_method; }
    const QByteArray &body() const { return m_body; }
    bool hasBody() const { return m_hasBody; }

    /// The header lines as curl wants them; the shared cookie store is asked now.
    QList<QByteArray> headerLines() const;

    /// Tells where the server of url() was found, before anything is sent to it. Fails when a
    /// redirect led into a more private network than the one that it, or an earlier one, came from.
    std::optional<URLError> reached(AddressSpace space);

    static bool isRedirect(int status);

    /// Takes the cookies of a redirect and goes on to its target, by the rules of
    /// URLSession::downloadTask(). Fails when there were too many redirects or the target is none
    /// that is followed.
    std::optional<URLError> follow(int status, const QByteArray &location,
                                   const QMap<QString, QString> &responseFields);

private:
    struct Header
    {
        QByteArray name;
        QByteArray value;
    };

    QByteArray cookieHeader() const;
    void keep(const QList<HTTPCookie> &cookies);
    bool mayLeadAnywhere(const QUrl &target) const;
    void dropHeaders(bool (*unwanted)(const QByteArray &lowerName));

    URL m_url;
    QByteArray m_method;
    QByteArray m_body;
    bool m_hasBody;
    QList<Header> m_headers; // the request's own, without Cookie
    std::optional<QByteArray> m_requestCookies;
    QList<HTTPCookie> m_cookies; // set by redirects; expired ones take others away
    int m_redirects = 0;
    RedirectLimits m_limits;
    AddressSpace m_space = AddressSpace::thisMachine; // the least private one so far
};

} // namespace zelkam
