#include "platform/foundation/text_encoding.h"

#include <algorithm>

namespace zelkam {

std::optional<QStringConverter::Encoding> unicodeEncoding(const QByteArray &bytes)
{
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return marked;
    constexpr qsizetype headSize = 16 * 1024;
    const qsizetype pairs = std::min<qsizetype>(bytes.size(), headSize) / 2;
    if (pairs < 4)
        return std::nullopt;
    qsizetype zeros[2] = {0, 0};
    for (qsizetype i = 0; i < 2 * pairs; ++i)
        zeros[i % 2] += bytes.at(i) == '\0';
    if (zeros[0] == 0 && zeros[1] > pairs / 2)
        return QStringConverter::Utf16LE;
    if (zeros[1] == 0 && zeros[0] > pairs / 2)
        return QStringConverter::Utf16BE;
    return std::nullopt;
}

bool looksLikeText(const QByteArray &head)
{
    if (unicodeEncoding(head))
        return true;
    const auto isControl = [](char byte) {
        const auto value = static_cast<uchar>(byte);
        return value < 32 && byte != '\n' && byte != '\r' && byte != '\t' && byte != '\f' &&
               byte != '\x1b';
    };
    const auto controls = std::count_if(head.cbegin(), head.cend(), isControl);
    return !head.contains('\0') && controls * 50 <= head.size();
}

} // namespace zelkam
