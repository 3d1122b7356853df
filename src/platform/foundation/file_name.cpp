#include "platform/foundation/file_name.h"

#include <QCoreApplication>
#include <QStringDecoder>
#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace zelkam {

namespace {

constexpr char16_t firstKept = 0xDC80;
constexpr char16_t lastKept = 0xDCFF;

/// Whether the character is a kept byte, and not the second half of one beyond the 16-bit range.
bool isKeptByte(const QString &name, qsizetype at)
{
    const char16_t c = name.at(at).unicode();
    return c >= firstKept && c <= lastKept && (at == 0 || !name.at(at - 1).isHighSurrogate());
}

/// Nothing when not all of it is UTF-8. A byte order mark is a part of a name.
std::optional<QString> fromUtf8(QByteArrayView bytes)
{
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

/// How many bytes the first character has; none when the bytes begin with no character.
qsizetype firstCharacter(QByteArrayView bytes)
{
    for (qsizetype size = 1; size <= std::min<qsizetype>(bytes.size(), 4); ++size) {
        if (fromUtf8(bytes.first(size)))
            return size;
    }
    return 0;
}

/// A few bytes stand for nothing there; they show as such and not as controls, which are dropped.
uint fromWindows1252(char byte)
{
    QStringDecoder decoder("windows-1252", QStringDecoder::Flag::Stateless);
    const QString text =
        decoder.isValid() ? QString(decoder(QByteArrayView(&byte, 1))) : QString(QLatin1Char(byte));
    const QChar c = text.isEmpty() ? QChar(QChar::ReplacementCharacter) : text.front();
    return c.category() == QChar::Other_Control ? uint(QChar::ReplacementCharacter) : c.unicode();
}

std::vector<uint> charactersOf(const QString &name)
{
    std::vector<uint> characters;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        if (c.isHighSurrogate() && i + 1 < name.size() && name.at(i + 1).isLowSurrogate())
            characters.push_back(QChar::surrogateToUcs4(c, name.at(++i)));
        else
            characters.push_back(isKeptByte(name, i) ? fromWindows1252(char(c.unicode() & 0xFF))
                                                     : c.unicode());
    }
    return characters;
}

bool isDrawn(uint c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

/// A joiner belongs to the shape of such neighbours: letters, their marks, and pictures.
bool isShaped(const std::vector<uint> &characters, size_t at)
{
    if (at >= characters.size())
        return false;
    const uint c = characters[at];
    return QChar::isLetter(c) || QChar::isMark(c) || QChar::isSymbol(c);
}

/// Whether the character leaves a trace by itself. Some letters and symbols are made to be empty.
bool hasInk(uint c)
{
    constexpr uint empty[] = {0x115F, 0x1160, 0x2800, 0x3164, 0xFFA0};
    constexpr uint supplementaryPlane = 0xE;
    return !QChar::isSpace(c) && !QChar::isMark(c) && c >> 16 != supplementaryPlane &&
           std::find(std::begin(empty), std::end(empty), c) == std::end(empty);
}

bool isRightToLeft(uint c)
{
    const QChar::Direction direction = QChar::direction(c);
    return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirAN;
}

} // namespace

QString decodeFileName(const QByteArray &bytes)
{
    if (const auto text = fromUtf8(bytes))
        return *text;
    QString name;
    for (QByteArrayView rest = bytes; !rest.isEmpty();) {
        const qsizetype size = firstCharacter(rest);
        if (size > 0)
            name += *fromUtf8(rest.first(size));
        else
            name += QChar(char16_t(0xDC00 | uchar(rest.front())));
        rest = rest.sliced(std::max<qsizetype>(size, 1));
    }
    return name;
}

QByteArray encodeFileName(const QString &name)
{
    QByteArray bytes;
    qsizetype plain = 0; // start of the stretch not yet encoded
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (!isKeptByte(name, i))
            continue;
        bytes += QStringView(name).sliced(plain, i - plain).toUtf8();
        bytes += char(name.at(i).unicode() & 0xFF);
        plain = i + 1;
    }
    return plain == 0 ? name.toUtf8() : bytes + QStringView(name).sliced(plain).toUtf8();
}

QString visibleName(const QString &name)
{
    const bool isPlain =
        std::all_of(name.cbegin(), name.cend(), [](QChar c) { return c > u' ' && c < u'\x7f'; });
    if (isPlain && !name.isEmpty())
        return name;
    const std::vector<uint> characters = charactersOf(name);
    QString visible;
    for (size_t i = 0; i < characters.size(); ++i) {
        const uint c = characters[i];
        const bool isJoiner = c == 0x200C || c == 0x200D;
        const bool stays =
            isJoiner ? isShaped(characters, i - 1) && isShaped(characters, i + 1) : isDrawn(c);
        if (stays)
            visible += QChar::fromUcs4(c);
    }
    if (std::any_of(characters.cbegin(), characters.cend(),
                    [](uint c) { return isDrawn(c) && hasInk(c); }))
        return visible;
    return QCoreApplication::translate("FileName", "(unnamed)");
}

QString displayName(const QString &name)
{
    constexpr QChar firstStrongIsolate(0x2068);
    constexpr QChar popDirectionalIsolate(0x2069);
    const QString visible = visibleName(name);
    const QList<uint> characters = visible.toUcs4();
    if (std::any_of(characters.cbegin(), characters.cend(), isRightToLeft))
        return firstStrongIsolate + visible + popDirectionalIsolate;
    return visible;
}

} // namespace zelkam
