#include "platform/decoding/decode_work.h"
#include "platform/foundation/text_encoding.h"

#include <QStringDecoder>

namespace zelkam {

namespace {

constexpr qsizetype longestText = 2 << 20; ///< in bytes of the file
constexpr qsizetype longestLine = 4096;
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
bool joins(QChar character)
{
    return character.isMark() || character.category() == QChar::Other_Format;
}

/// The text in lines that can be laid out; sets whether that is not all of it.
QString inLines(const QString &text, bool &isCut)
{
    QString result;
    result.reserve(text.size() + text.size() / longestLine);
    qsizetype column = 0;
    qsizetype shape = 0;
    qsizetype lines = 1;
    for (const QChar character : text) {
        shape = joins(character) ? shape + 1 : 0;
        if (shape > longestShape)
            continue;
        const bool isBreak = character == u'\n';
        const bool isFull = column >= longestLine && !character.isLowSurrogate();
        if ((isBreak || isFull) && ++lines > mostLines) {
            isCut = true;
            break;
        }
        if (isFull && !isBreak) {
            result.append(u'\n');
            column = 0;
        }
        column = isBreak ? 0 : column + 1;
        // A zero would end the line in a text view.
        result.append(character.isNull() ? QChar(QChar::ReplacementCharacter) : character);
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
