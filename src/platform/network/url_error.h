#pragma once

#include <QString>

namespace zelkam {

/// Why a transfer failed.
class URLError
{
public:
    enum class Code {
        unknown,
        cancelled,
        badURL, ///< also a header that cannot be sent
        unsupportedURL,
        timedOut,
        notConnectedToInternet,
        cannotFindHost,
        cannotConnectToProxy,
        cannotConnectToHost,
        networkConnectionLost,
        bodyCutShort,
        secureConnectionFailed,
        serverCertificateUntrusted,
        httpTooManyRedirects,
        redirectToUnsupportedURL,
        redirectNotAllowed, ///< to a more private network, or from https to http
        badServerResponse,
        headersTooLarge,
        dataLengthExceedsMaximum,
        cannotDecodeContentData,
        cannotCreateFile,
        cannotWriteToFile,
        diskFull,
    };

    /// The detail is for developers: what the library or the system said, in its own words.
    explicit URLError(Code code, const QString &detail = {}) : m_code(code), m_detail(detail) {}

    Code code() const { return m_code; }

    /// One sentence for people, in their language. From any thread.
    QString localizedDescription() const;

    /// For a log: the code's name and the detail, never the address or a header, which may
    /// hold secrets.
    QString debugDescription() const;

private:
    Code m_code;
    QString m_detail;
};

} // namespace zelkam
