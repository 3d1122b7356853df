#pragma once

#include "platform/foundation/url.h"

#include <QMap>
#include <QString>
#include <memory>
#include <optional>

namespace zelkam {

/// What a server said about the data that it sent. Immutable, so it may be shared by threads.
class URLResponse
{
public:
    /// The length of a body whose length the server did not say.
    static constexpr qint64 unknownLength = -1;

    URLResponse(const URL &url, const QString &mimeType, qint64 expectedContentLength);
    virtual ~URLResponse();
    Q_DISABLE_COPY_MOVE(URLResponse)

    const URL &url() const { return m_url; }               ///< the final one, after all redirects
    const QString &mimeType() const { return m_mimeType; } ///< lower case; empty when unknown
    qint64 expectedContentLength() const { return m_expectedContentLength; } ///< bytes

    /// The name that the data should have as a file: what the server says, else the last piece of
    /// the URL's path, in both cases with the extension of the MIME type when it has none.
    /// Absent when neither gives a name.
    ///
    /// Whatever the server sent, the name is one harmless path component: no separator, control
    /// or direction-changing character, never "." or "..", at most 255 bytes of UTF-8. It is the
    /// same name after percent-decoding, and as a part of a bare path that is read as a URL.
    virtual std::optional<QString> suggestedFilename() const;

private:
    URL m_url;
    QString m_mimeType;
    qint64 m_expectedContentLength;
};

/// The response of an HTTP server.
class HTTPURLResponse : public URLResponse
{
public:
    /// Takes MIME type and length from the header fields; their names are compared without case.
    HTTPURLResponse(const URL &url, int statusCode, const QMap<QString, QString> &headerFields);

    int statusCode() const { return m_statusCode; }

    /// The header fields under the names that the server used. Fields of one name are joined by
    /// ", ", except Set-Cookie: its fields are joined by a line feed, which can stand in no
    /// value, as a comma may be part of a cookie's date. A value that is not UTF-8 keeps each
    /// byte above 127 as the code unit 0xDC00 plus the byte, so that no cookie is damaged.
    const QMap<QString, QString> &allHeaderFields() const { return m_headerFields; }

    /// The value of a field, its name compared without case.
    std::optional<QString> value(const QString &forHTTPHeaderField) const;

    std::optional<QString> suggestedFilename() const override;

private:
    int m_statusCode;
    QMap<QString, QString> m_headerFields;
};

} // namespace zelkam
