#include "platform/network/header_text.h"

#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace zelkam {

namespace {

constexpr char16_t escapeBase = 0xDC00;

bool isEscapedByte(QChar unit)
{
    return unit.unicode() >= escapeBase + 0x80 && unit.unicode() <= escapeBase + 0xFF;
}

} // namespace

QString headerText(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError())
        return text;
    text.clear();
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += QChar(static_cast<char16_t>(byte < 0x80 ? byte : escapeBase + byte));
    }
    return text;
}

QByteArray headerBytes(const QString &text)
{
    QByteArray bytes;
    qsizetype done = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isEscapedByte(text[i]))
            continue;
        if (i > 0 && text[i - 1].isHighSurrogate())
            continue; // half of a character, not a byte
        bytes += QStringView(text).mid(done, i - done).toUtf8();
        bytes += static_cast<char>(text[i].unicode() - escapeBase);
        done = i + 1;
    }
    return bytes + QStringView(text).mid(done).toUtf8();
}

bool isHeaderName(QByteArrayView name)
{
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               (c != 0 && std::strchr("!#$%&'*+-.^_`|~", c));
    });
}

bool isHeaderValue(QByteArrayView value)
{
    return std::all_of(value.begin(), value.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte >= 0x20 && byte != 0x7F) || byte == '\t';
    });
}

} // namespace zelkam
