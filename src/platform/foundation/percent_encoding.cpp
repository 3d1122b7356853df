#include "platform/foundation/percent_encoding.h"

#include <QByteArray>
#include <QStringDecoder>
#include <QStringEncoder>
#include <cstring>

namespace zelkam {

namespace {

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

std::optional<QByteArray> utf8(const QString &text)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    QByteArray bytes = encoder(text);
    if (encoder.hasError())
        return std::nullopt;
    return bytes;
}

bool isAllowedInQuery(char c)
{
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
        return true;
    // '\0' ends the list for strchr and is no member of it.
    return c != '\0' && std::strchr("-._~!$&'()*+,;=:@/?", c) != nullptr;
}

} // namespace

std::optional<QString> removingPercentEncoding(const QString &text)
{
    const auto encoded = utf8(text);
    if (!encoded)
        return std::nullopt;
    QByteArray bytes;
    bytes.reserve(encoded->size());
    for (qsizetype i = 0; i < encoded->size(); ++i) {
        const char c = encoded->at(i);
        if (c != '%') {
            bytes.append(c);
            continue;
        }
        if (i + 2 >= encoded->size())
            return std::nullopt;
        const int high = hexValue(encoded->at(i + 1));
        const int low = hexValue(encoded->at(i + 2));
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes.append(static_cast<char>(high * 16 + low));
        i += 2;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return decoded;
}

std::optional<QString> addingPercentEncodingForUrlQuery(const QString &text)
{
    const auto bytes = utf8(text);
    if (!bytes)
        return std::nullopt;
    static constexpr char digits[] = "0123456789ABCDEF";
    QByteArray encoded;
    encoded.reserve(bytes->size());
    for (const char c : *bytes) {
        if (isAllowedInQuery(c)) {
            encoded.append(c);
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded.append('%');
        encoded.append(digits[byte >> 4]);
        encoded.append(digits[byte & 0xF]);
    }
    return QString::fromLatin1(encoded);
}

} // namespace zelkam
