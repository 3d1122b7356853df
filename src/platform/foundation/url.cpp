#include "platform/foundation/url.h"

#include "platform/foundation/file_name.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/system_version.h"

#include <QRegularExpression>
#include <algorithm>

namespace zelkam {

namespace {

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// Percent-encodes what may not stand in a URL and leaves what may, "#" and "[" included: they
/// have a meaning of their own. Nothing when the text is not valid UTF-16.
std::optional<QString> encodingInvalidCharacters(const QString &string)
{
    QString result;
    qsizetype plain = 0; // start of the stretch not yet encoded
    const auto flush = [&](qsizetype end) {
        const auto encoded = addingPercentEncodingForUrlQuery(string.mid(plain, end - plain));
        if (encoded)
            result += *encoded;
        return encoded.has_value();
    };
    for (qsizetype i = 0; i < string.size(); ++i) {
        const QChar c = string.at(i);
        const bool escape = c == u'%' && i + 2 < string.size() && isHexDigit(string.at(i + 1)) &&
                            isHexDigit(string.at(i + 2));
        if (!escape && c != u'#' && c != u'[' && c != u']')
            continue;
        if (!flush(i))
            return std::nullopt;
        result += c;
        plain = i + 1;
    }
    if (!flush(string.size()))
        return std::nullopt;
    return result;
}

/// RFC 3986 allows percent-encoded UTF-8 in a host name, QUrl does not: gives the text with such
/// a host in its ASCII form. Nothing when the host is none once it is decoded.
std::optional<QString> withAsciiHost(const QString &text)
{
    static const QRegularExpression authority(
        QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*://(?:[^/?#@]*@)?([^/?#@:]*%[^/?#@:]*)"));
    const auto match = authority.match(text);
    if (!match.hasMatch())
        return text;
    const auto host = removingPercentEncoding(match.captured(1));
    const QByteArray ascii = host ? QUrl::toAce(*host) : QByteArray();
    if (ascii.isEmpty())
        return std::nullopt;
    return QString(text).replace(match.capturedStart(1), match.capturedLength(1),
                                 QString::fromLatin1(ascii));
}

/// Escapes the percent sign and all bytes beyond ASCII, and leaves it to QUrl to escape the rest.
QString escapingNonAscii(const QByteArray &bytes)
{
    static const QByteArray left = [] {
        QByteArray characters;
        for (char c = 0; c < 0x7F; ++c)
            characters += c == '%' ? QByteArray() : QByteArray(1, c);
        return characters;
    }();
    return QString::fromLatin1(bytes.toPercentEncoding(left));
}

} // namespace

std::optional<URL> URL::fromString(const QString &string)
{
    QString text = string;
    if (isSystemVersionAtLeast(17, 0)) {
        const auto encoded = encodingInvalidCharacters(string);
        if (!encoded)
            return std::nullopt;
        text = *encoded;
    }
    if (text.isEmpty())
        return std::nullopt;
    // QUrl's strict mode takes letters beyond ASCII and control characters; RFC 3986 does not.
    if (std::any_of(text.begin(), text.end(), [](QChar c) { return c < u' ' || c >= u'\x7f'; }))
        return std::nullopt;
    const auto parsable = withAsciiHost(text);
    const QUrl url(parsable.value_or(QString()), QUrl::StrictMode);
    if (!parsable || !url.isValid())
        return std::nullopt;
    return URL(text, url, string);
}

URL URL::fromBarePath(const QString &path)
{
    QUrl url;
    url.setPath(path, QUrl::DecodedMode);
    return URL(path, url, path);
}

URL URL::fromFilePath(const QString &path)
{
    const QString absolute = path.startsWith(u'/') ? path : u'/' + path;
    QUrl url;
    url.setScheme(QStringLiteral("file"));
    url.setHost(QString());
    url.setPath(escapingNonAscii(encodeFileName(absolute)), QUrl::TolerantMode);
    return URL(url.toString(QUrl::FullyEncoded), url);
}

std::optional<URL> URL::fromQUrl(const QUrl &url)
{
    if (!url.isValid() || url.isEmpty())
        return std::nullopt;
    const QString text = url.toString(QUrl::FullyEncoded);
    return URL(text, url, text);
}

std::optional<QString> URL::scheme() const
{
    if (m_url.scheme().isEmpty())
        return std::nullopt;
    return m_url.scheme();
}

std::optional<QString> URL::host() const
{
    const QString host = m_url.host(QUrl::FullyDecoded);
    if (host.isEmpty())
        return std::nullopt;
    return host;
}

std::optional<int> URL::port() const
{
    const int port = m_url.port();
    if (port < 0)
        return std::nullopt;
    return port;
}

QString URL::path() const
{
    // The name of a file may hold bytes that are no UTF-8, which QUrl would replace.
    if (isFileURL())
        return decodeFileName(
            QByteArray::fromPercentEncoding(m_url.path(QUrl::FullyEncoded).toLatin1()));
    return m_url.path(QUrl::FullyDecoded);
}

QString URL::lastPathComponent() const
{
    QString path = this->path();
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path == u"/" ? path : path.section(u'/', -1);
}

std::optional<QString> URL::barePath() const
{
    const bool isBare = m_url.scheme().isEmpty() && m_url.authority().isEmpty();
    return isBare && m_given.startsWith(u'/') ? std::optional(m_given) : std::nullopt;
}

bool URL::isFileURL() const
{
    return m_url.scheme() == u"file";
}

} // namespace zelkam
