#include "platform/network/url_response.h"

#include "platform/network/content_disposition.h"
#include "platform/network/suggested_filename.h"

namespace zelkam {

namespace {

QString fieldValue(const QMap<QString, QString> &fields, QLatin1String name)
{
    for (auto it = fields.begin(); it != fields.end(); ++it) {
        if (it.key().compare(name, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    return {};
}

QString mimeTypeOf(const QMap<QString, QString> &fields)
{
    const QString contentType = fieldValue(fields, QLatin1String("Content-Type"));
    return contentType.section(u';', 0, 0).section(u',', 0, 0).trimmed().toLower();
}

// The length of an encoded body says nothing about the data that comes out of it.
qint64 lengthOf(const QMap<QString, QString> &fields)
{
    if (!fieldValue(fields, QLatin1String("Content-Encoding")).isEmpty() ||
        !fieldValue(fields, QLatin1String("Transfer-Encoding")).isEmpty())
        return URLResponse::unknownLength;
    bool isNumber = false;
    const qint64 length =
        fieldValue(fields, QLatin1String("Content-Length")).trimmed().toLongLong(&isNumber);
    return isNumber && length >= 0 ? length : URLResponse::unknownLength;
}

} // namespace

URLResponse::URLResponse(const URL &url, const QString &mimeType, qint64 expectedContentLength)
    : m_url(url), m_mimeType(mimeType), m_expectedContentLength(expectedContentLength)
{
}

URLResponse::~URLResponse() = default;

std::optional<QString> URLResponse::suggestedFilename() const
{
    return harmlessFilename({m_url.lastPathComponent()}, m_mimeType);
}

HTTPURLResponse::HTTPURLResponse(const URL &url, int statusCode,
                                 const QMap<QString, QString> &headerFields)
    : URLResponse(url, mimeTypeOf(headerFields), lengthOf(headerFields)),
      m_statusCode(statusCode),
      m_headerFields(headerFields)
{
}

std::optional<QString> HTTPURLResponse::value(const QString &forHTTPHeaderField) const
{
    for (auto it = m_headerFields.begin(); it != m_headerFields.end(); ++it) {
        if (it.key().compare(forHTTPHeaderField, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    return std::nullopt;
}

std::optional<QString> HTTPURLResponse::suggestedFilename() const
{
    const QString disposition = fieldValue(m_headerFields, QLatin1String("Content-Disposition"));
    return harmlessFilename(
        {dispositionFilename(disposition).value_or(QString()), url().lastPathComponent()},
        mimeType());
}

} // namespace zelkam
