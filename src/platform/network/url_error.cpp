#include "platform/network/url_error.h"

#include <QCoreApplication>

namespace zelkam {

namespace {

struct Words
{
    const char *name;
    const char *sentence;
};

Words wordsOf(URLError::Code code)
{
    using Code = URLError::Code;
    switch (code) {
    case Code::unknown:
        break;
    case Code::cancelled:
        return {"cancelled", QT_TRANSLATE_NOOP("URLError", "The download was cancelled.")};
    case Code::badURL:
        return {"badURL", QT_TRANSLATE_NOOP("URLError", "The address or a header of the request "
                                                        "is not valid.")};
    case Code::unsupportedURL:
        return {"unsupportedURL",
                QT_TRANSLATE_NOOP("URLError", "This kind of address is not supported.")};
    case Code::timedOut:
        return {"timedOut", QT_TRANSLATE_NOOP("URLError", "The request timed out.")};
    case Code::notConnectedToInternet:
        return {"notConnectedToInternet",
                QT_TRANSLATE_NOOP("URLError", "There is no network connection.")};
    case Code::cannotFindHost:
        return {"cannotFindHost", QT_TRANSLATE_NOOP("URLError", "The server could not be found.")};
    case Code::cannotConnectToProxy:
        return {"cannotConnectToProxy",
                QT_TRANSLATE_NOOP("URLError", "Could not connect to the proxy server.")};
    case Code::cannotConnectToHost:
        return {"cannotConnectToHost",
                QT_TRANSLATE_NOOP("URLError", "Could not connect to the server.")};
    case Code::networkConnectionLost:
        return {"networkConnectionLost",
                QT_TRANSLATE_NOOP("URLError", "The network connection was lost.")};
    case Code::bodyCutShort:
        return {"bodyCutShort",
                QT_TRANSLATE_NOOP("URLError", "The server sent only a part of the file.")};
    case Code::secureConnectionFailed:
        return {
            "secureConnectionFailed",
            QT_TRANSLATE_NOOP("URLError", "A secure connection to the server could not be made.")};
    case Code::serverCertificateUntrusted:
        return {"serverCertificateUntrusted",
                QT_TRANSLATE_NOOP("URLError", "The certificate of the server is not trusted.")};
    case Code::httpTooManyRedirects:
        return {"httpTooManyRedirects",
                QT_TRANSLATE_NOOP("URLError", "The server redirected the request too often.")};
    case Code::redirectToUnsupportedURL:
        return {"redirectToUnsupportedURL",
                QT_TRANSLATE_NOOP("URLError",
                                  "The server redirected the request to an address that is not "
                                  "supported.")};
    case Code::redirectNotAllowed:
        return {"redirectNotAllowed",
                QT_TRANSLATE_NOOP("URLError",
                                  "The server redirected the request to a place that is not "
                                  "allowed.")};
    case Code::badServerResponse:
        return {"badServerResponse",
                QT_TRANSLATE_NOOP("URLError", "The server sent an answer that is not valid.")};
    case Code::headersTooLarge:
        return {"headersTooLarge",
                QT_TRANSLATE_NOOP("URLError", "The server sent an answer that is too large.")};
    case Code::dataLengthExceedsMaximum:
        return {"dataLengthExceedsMaximum",
                QT_TRANSLATE_NOOP("URLError", "The server sent an answer that is too large.")};
    case Code::cannotDecodeContentData:
        return {"cannotDecodeContentData",
                QT_TRANSLATE_NOOP("URLError", "The data from the server is damaged.")};
    case Code::cannotCreateFile:
        return {"cannotCreateFile", QT_TRANSLATE_NOOP("URLError", "The file could not be made.")};
    case Code::cannotWriteToFile:
        return {"cannotWriteToFile",
                QT_TRANSLATE_NOOP("URLError", "The file could not be written.")};
    case Code::diskFull:
        return {"diskFull",
                QT_TRANSLATE_NOOP("URLError", "There is not enough space for the file.")};
    }
    return {"unknown", QT_TRANSLATE_NOOP("URLError", "The download failed.")};
}

} // namespace

QString URLError::localizedDescription() const
{
    return QCoreApplication::translate("URLError", wordsOf(m_code).sentence);
}

QString URLError::debugDescription() const
{
    const QString name = QStringLiteral("URLError.") + QLatin1String(wordsOf(m_code).name);
    return m_detail.isEmpty() ? name : name + QStringLiteral(" (") + m_detail + u')';
}

} // namespace zelkam
