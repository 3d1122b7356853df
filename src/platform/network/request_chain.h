#pragma once

#include "platform/network/http_cookie.h"
#include "platform/network/url_error.h"
#include "platform/network/url_request.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <optional>

namespace zelkam {

/// What goes on the wire: a request and, after each redirect, the one that follows from it. All
/// the rules about what may go to whom are here; there is no input or output.
///
/// A change from https to http is followed, as it is when a person follows such a link: it is
/// another origin, so nothing of the request goes along, and no secure cookie.
class RequestChain
{
public:
    static constexpr int maxRedirects = 20;

    explicit RequestChain(const URLRequest &request);

    /// Why the request cannot be sent at all.
    std::optional<URLError> refusal() const;

    const URL &url() const { return m_url; }
    QByteArray urlOnWire() const; ///< without fragment, user and password
    QByteArray method() const { return m_method; }
    const QByteArray &body() const { return m_body; }
    bool hasBody() const { return m_hasBody; }

    /// The header lines as curl wants them; the shared cookie store is asked now.
    QList<QByteArray> headerLines() const;

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
    void dropHeaders(bool (*unwanted)(const QByteArray &lowerName));

    URL m_url;
    QByteArray m_method;
    QByteArray m_body;
    bool m_hasBody;
    QList<Header> m_headers; // the request's own, without Cookie
    std::optional<QByteArray> m_requestCookies;
    QList<HTTPCookie> m_cookies; // set by redirects; expired ones take others away
    int m_redirects = 0;
};

} // namespace zelkam
