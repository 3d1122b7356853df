#include "platform/network/curl_error.h"

#include <cstring>

namespace zelkam {

namespace {

URLError::Code codeOf(CURLcode result, const char *text)
{
    using Code = URLError::Code;
    switch (result) {
    case CURLE_URL_MALFORMAT:
    case CURLE_BAD_FUNCTION_ARGUMENT:
        return Code::badURL;
    case CURLE_COULDNT_RESOLVE_HOST:
        return Code::cannotFindHost;
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
        return Code::cannotConnectToProxy;
    case CURLE_COULDNT_CONNECT:
    case CURLE_INTERFACE_FAILED:
        return Code::cannotConnectToHost;
    case CURLE_OPERATION_TIMEDOUT:
        return Code::timedOut;
    case CURLE_RECV_ERROR:
        // A broken chunk shares its number with a broken connection; only the text differs.
        return std::strstr(text, "chunk") ? Code::badServerResponse : Code::networkConnectionLost;
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
        return Code::networkConnectionLost;
    case CURLE_PARTIAL_FILE:
        return Code::bodyCutShort;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_SHUTDOWN_FAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_CLIENTCERT:
        return Code::secureConnectionFailed;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
        return Code::serverCertificateUntrusted;
    case CURLE_UNSUPPORTED_PROTOCOL: // an answer without a status line: schemes are checked before
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING: // of the framing; contents are decoded elsewhere
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return Code::badServerResponse;
    default:
        return Code::unknown;
    }
}

} // namespace

URLError errorOfCurl(CURLcode result, const char *text, bool isReadingHead)
{
    // In a head, curl calls a line too long what it calls a lack of memory elsewhere, and a folded
    // line without one before it what it calls a bad argument.
    if (isReadingHead && result == CURLE_OUT_OF_MEMORY)
        return URLError(URLError::Code::headersTooLarge);
    if (isReadingHead && result == CURLE_BAD_FUNCTION_ARGUMENT)
        return URLError(URLError::Code::badServerResponse, QStringLiteral("folded line"));
    const QString words =
        QString::fromUtf8(text && *text ? text : curl_easy_strerror(result)).trimmed();
    return URLError(codeOf(result, text ? text : ""),
                    QStringLiteral("curl %1: %2").arg(static_cast<int>(result)).arg(words));
}

} // namespace zelkam
