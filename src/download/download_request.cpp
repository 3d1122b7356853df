// From the options to the request: method, headers, body, cookies.

#include "download/zelkam_mobile_file_download_util.h"

#include "platform/foundation/console.h"
#include "platform/foundation/json_serialization.h"
#include "platform/network/http_cookie.h"
#include "platform/network/url_request.h"

namespace zelkam {

namespace {

/// Pairs of key=value&, with the last "&" kept. Nothing is percent-encoded, and what is not text
/// is written as nothing: servers that are called this way expect it so.
QByteArray formBody(const QVariantMap &data)
{
    QString body;
    for (auto it = data.cbegin(); it != data.cend(); ++it) {
        const bool isText = it.value().typeId() == QMetaType::QString;
        body += it.key() + u'=' + (isText ? it.value().toString() : QString()) + u'&';
    }
    return body.toUtf8();
}

} // namespace

std::optional<URLRequest> ZelkamMobileFileDownloadUtil::makeRequest(const URL &url) const
{
    print(QStringLiteral("makeRequest(_:)"));
    URLRequest request(url, URLRequest::CachePolicy::useProtocolCachePolicy,
                       std::chrono::seconds(60));
    request.setValue(m_dataType, QStringLiteral("Content-Type"));
    for (auto it = m_httpHeaders.cbegin(); it != m_httpHeaders.cend(); ++it)
        request.setValue(it.value(), it.key());
    if (!isPost()) {
        request.httpMethod = QStringLiteral("GET");
        return request;
    }
    request.httpMethod = QStringLiteral("POST");
    const auto body = makeBody();
    if (!body) {
        // The caller replies once more, as it does for any request that cannot be made.
        replyError(CommandStatus::INVALID_PARAM);
        return std::nullopt;
    }
    request.httpBody = *body;
    return request;
}

std::optional<QByteArray> ZelkamMobileFileDownloadUtil::makeBody() const
{
    if (m_dataType == u"application/x-www-form-urlencoded")
        return formBody(m_requestData);
    return jsonData(m_requestData);
}

URLRequest ZelkamMobileFileDownloadUtil::setRequestCookie(const URLRequest &request,
                                                          const QList<HTTPCookie> &cookies) const
{
    print(QStringLiteral("setRequestCookie(_:_:)"));
    URLRequest copy = request;
    const QString header = HTTPCookie::requestHeaderFields(cookies).value(QStringLiteral("Cookie"));
    if (!header.isEmpty())
        copy.setValue(header, QStringLiteral("Cookie"));
    return copy;
}

} // namespace zelkam
