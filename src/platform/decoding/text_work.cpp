#include "platform/decoding/decode_work.h"
#include "platform/foundation/text_encoding.h"

#include <QStringDecoder>

namespace zelkam {

namespace {

constexpr qsizetype longestText = 2 << 20; ///< in bytes of the file
constexpr qsizetype longestLine = 1024;
constexpr qsizetype mostLines = 20'000;
/// Marks that a font stacks on one letter, and joiners, which make one shape of many letters: what
/// goes on for longer is no word of any language, and takes minutes to lay out.
constexpr qsizetype longestShape = 32;

QString decoded(const QByteArray &bytes)
{
    if (const auto encoding = unicodeEncoding(bytes))
        return QStringDecoder(*encoding).decode(bytes);
    QStringDecoder utf8(QStringConverter::Utf8);
    const QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    QStringDecoder windows("windows-1252");
    return windows.isValid() ? QString(windows.decode(bytes)) : QString::fromLatin1(bytes);
}

/// Whether a character goes into the shape of the one before it.
bool joins(char32_t character)
{
    return QChar::isMark(character) || QChar::category(character) == QChar::Other_Format;
}

/// What a text view can show of a character. For its own document it is the end of a line at more
/// characters than one, and the borders of a frame at two that no text has.
char32_t shown(char32_t character)
{
    constexpr char32_t frameBegins = 0xfdd0;
    constexpr char32_t frameEnds = 0xfdd1;
    switch (character) {
    case U'\r':
    case QChar::ParagraphSeparator:
        return U'\n';
    case 0: // would end the line
    case frameBegins:
    case frameEnds:
        return QChar::ReplacementCharacter;
    default:
        return character;
    }
}

/// The text in lines that can be laid out; sets whether that is not all of it.
QString inLines(const QString &text, bool &isCut)
{
    QString result;
    result.reserve(text.size() + text.size() / longestLine);
    qsizetype column = 0;
    qsizetype shape = 0;
    qsizetype lines = 1;
    for (qsizetype at = 0; at < text.size(); ++at) {
        char32_t character = text.at(at).unicode();
        const QChar next = at + 1 < text.size() ? text.at(at + 1) : QChar();
        if (character == U'\r' && next == u'\n')
            continue;
        if (QChar::isHighSurrogate(character) && next.isLowSurrogate()) {
            character = QChar::surrogateToUcs4(text.at(at), next);
            ++at;
        }
        character = shown(character);
        shape = joins(character) ? shape + 1 : 0;
        if (shape > longestShape)
            continue;
        const bool isBreak = character == U'\n';
        const bool isFull = column >= longestLine;
        if ((isBreak || isFull) && ++lines > mostLines) {
            isCut = true;
            break;
        }
        if (isFull && !isBreak) {
            result.append(u'\n');
            column = 0;
        }
        const auto units = QChar::fromUcs4(character);
        column = isBreak ? 0 : column + QStringView(units).size();
        result.append(units);
    }
    return result;
}

} // namespace

DecodeOutcome decodeTextWish(const QByteArray &file)
{
    DecodeOutcome outcome;
    bool isCut = file.size() > longestText;
    const QString text = inLines(decoded(file.first(qMin(file.size(), longestText))), isCut);
    outcome.reply.outcome = DecodeReply::Outcome::done;
    outcome.reply.value = isCut;
    outcome.bytes = QByteArray(reinterpret_cast<const char *>(text.constData()),
                               text.size() * qsizetype(sizeof(QChar)));
    return outcome;
}

} // namespace zelkam
