#include "platform/network/content_disposition.h"

#include "platform/network/header_text.h"

#include <QStringDecoder>
#include <utility>

namespace zelkam {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// Takes the field apart into its parameters, one after another.
class ParameterReader
{
public:
    explicit ParameterReader(const QByteArray &field) : m_field(field) {}

    bool atEnd() const { return m_at >= m_field.size(); }

    /// The next parameter, its name in lower case. A piece without "=", such as the disposition
    /// type, has only a name.
    std::pair<QByteArray, QByteArray> next()
    {
        const qsizetype start = m_at;
        while (!atEnd() && m_field[m_at] != ';' && m_field[m_at] != '=')
            ++m_at;
        const QByteArray name = m_field.mid(start, m_at - start).trimmed().toLower();
        QByteArray value;
        if (!atEnd() && m_field[m_at] == '=') {
            ++m_at;
            while (!atEnd() && isBlank(m_field[m_at]))
                ++m_at;
            value = !atEnd() && m_field[m_at] == '"' ? quotedString() : unquoted();
        }
        while (!atEnd() && m_field[m_at] != ';')
            ++m_at;
        ++m_at;
        return {name, value};
    }

private:
    QByteArray quotedString()
    {
        QByteArray text;
        for (++m_at; !atEnd() && m_field[m_at] != '"'; ++m_at) {
            if (m_field[m_at] == '\\' && m_at + 1 < m_field.size())
                ++m_at;
            text += m_field[m_at];
        }
        return text;
    }

    // A token by the grammar; many servers forget the quotes around a name with blanks.
    QByteArray unquoted()
    {
        const qsizetype start = m_at;
        while (!atEnd() && m_field[m_at] != ';')
            ++m_at;
        return m_field.mid(start, m_at - start).trimmed();
    }

    const QByteArray &m_field;
    qsizetype m_at = 0;
};

std::optional<QString> decoded(const QByteArray &bytes, QStringDecoder::Encoding encoding)
{
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    if (decoder.hasError() || text.isEmpty())
        return std::nullopt;
    return text;
}

/// RFC 8187: charset'language'percent-encoded bytes.
std::optional<QString> extendedValue(const QByteArray &value)
{
    const qsizetype first = value.indexOf('\'');
    const qsizetype second = first < 0 ? -1 : value.indexOf('\'', first + 1);
    if (second < 0)
        return std::nullopt;
    const QByteArray charset = value.left(first).toLower();
    QByteArray bytes;
    for (qsizetype i = second + 1; i < value.size(); ++i) {
        if (value[i] != '%') {
            bytes += value[i];
            continue;
        }
        bool isNumber = false;
        const QByteArray digits = value.mid(i + 1, 2);
        const uint byte = digits.toUInt(&isNumber, 16);
        if (digits.size() != 2 || !isNumber)
            return std::nullopt;
        bytes += static_cast<char>(byte);
        i += 2;
    }
    if (charset == "utf-8")
        return decoded(bytes, QStringDecoder::Utf8);
    if (charset == "iso-8859-1")
        return decoded(bytes, QStringDecoder::Latin1);
    return std::nullopt;
}

std::optional<QString> plainValue(const QByteArray &value)
{
    if (auto text = decoded(value, QStringDecoder::Utf8))
        return text;
    return decoded(value, QStringDecoder::Latin1);
}

} // namespace

std::optional<QString> dispositionFilename(const QString &field)
{
    const QByteArray bytes = headerBytes(field);
    std::optional<QString> plain;
    std::optional<QString> extended;
    for (ParameterReader reader(bytes); !reader.atEnd();) {
        const auto [name, value] = reader.next();
        if (name == "filename*" && !extended)
            extended = extendedValue(value);
        else if (name == "filename" && !plain)
            plain = plainValue(value);
    }
    return extended ? extended : plain;
}

} // namespace zelkam
