#include "app/reply_body.h"

#include "host/command_status.h"

#include <QAssociativeIterable>
#include <QLocale>
#include <QSequentialIterable>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

namespace zelkam {

namespace {

constexpr qsizetype rawTextSize = 64 * 1024;
constexpr qsizetype keptTextSize = 1024 * 1024;
/// From this on, a body takes no further texts, which leaves room for the line's own.
constexpr qint64 fullBody = longestBody / 4;

/// Eight bytes at a time, as a reply may hold tens of megabytes.
bool isAscii(const QByteArray &bytes)
{
    const char *at = bytes.constData();
    const char *const end = at + bytes.size();
    quint64 seen = 0;
    for (quint64 word = 0; end - at >= qptrdiff(sizeof word); at += sizeof word) {
        std::memcpy(&word, at, sizeof word);
        seen |= word;
    }
    for (; at != end; ++at)
        seen |= static_cast<quint64>(static_cast<unsigned char>(*at));
    return (seen & 0x8080808080808080U) == 0;
}

class Writer
{
public:
    explicit Writer(const QByteArray &tag, QList<QByteArray> *kept) : m_tag(tag), m_kept(kept) {}

    void key(const char *name, bool first = false)
    {
        if (!first)
            line += ',';
        line.append('"').append(name).append("\":");
    }

    void text(QStringView text)
    {
        constexpr char digits[] = "0123456789abcdef";
        line += '"';
        for (const QChar character : text) {
            const char16_t unit = character.unicode();
            if (unit == u'"' || unit == u'\\') {
                line.append('\\').append(static_cast<char>(unit));
            } else if (unit >= 0x20 && unit < 0x7f) {
                line += static_cast<char>(unit);
            } else {
                const char escape[] = {'\\',
                                       'u',
                                       digits[unit >> 12],
                                       digits[(unit >> 8) & 15],
                                       digits[(unit >> 4) & 15],
                                       digits[unit & 15]};
                line.append(escape, sizeof escape);
            }
        }
        line += '"';
    }

    void value(const QVariant &value)
    {
        switch (value.typeId()) {
        case QMetaType::Bool:
            line += value.toBool() ? "true" : "false";
            return;
        case QMetaType::Int:
        case QMetaType::LongLong:
            line += QByteArray::number(value.toLongLong());
            return;
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            line += QByteArray::number(value.toULongLong());
            return;
        case QMetaType::Float:
        case QMetaType::Double:
            number(value.toDouble());
            return;
        case QMetaType::QString:
            text(*static_cast<const QString *>(value.constData()));
            return;
        case QMetaType::QByteArray:
            bytes(value.toByteArray());
            return;
        default:
            break;
        }
        // Lists before dictionaries: both kinds of container have many types.
        if (value.canConvert<QVariantMap>() && value.canView<QAssociativeIterable>())
            dictionary(value.toMap());
        else if (value.canView<QSequentialIterable>())
            list(value.toList());
        else
            line += "null";
    }

    QByteArray line;
    QList<QByteArray> texts;

private:
    void number(double number)
    {
        line += std::isfinite(number)
                    ? QByteArray::number(number, 'g', QLocale::FloatingPointShortest)
                    : QByteArrayLiteral("null");
    }

    void bytes(const QByteArray &bytes)
    {
        // A kept text is a body of its own, of which no length counts: it is taken for the ASCII
        // that it should be, as looking at tens of megabytes takes as long as encoding them.
        if (m_kept && bytes.size() >= keptTextSize) {
            keep(bytes);
            return;
        }
        const bool ascii = isAscii(bytes);
        // What would make the body too long is kept too, however short it is.
        if (ascii && m_kept && line.size() + m_textsSize + bytes.size() > fullBody) {
            keep(bytes);
        } else if (ascii && bytes.size() >= rawTextSize) {
            line += "{\"" + m_tag + "\":" + QByteArray::number(texts.size()) + '}';
            texts.append(bytes);
            m_textsSize += bytes.size();
        } else {
            text(ascii ? QString::fromLatin1(bytes) : QString::fromUtf8(bytes));
        }
    }

    void keep(const QByteArray &bytes)
    {
        line += "{\"" + m_tag + "\":[" + QByteArray::number(m_kept->size()) + "]}";
        m_kept->append(bytes);
    }

    void list(const QVariantList &list)
    {
        line += '[';
        for (qsizetype i = 0; i < list.size(); ++i) {
            if (i > 0)
                line += ',';
            value(list.at(i));
        }
        line += ']';
    }

    void dictionary(const QVariantMap &map)
    {
        line += '{';
        for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
            if (it != map.constBegin())
                line += ',';
            text(it.key());
            line += ':';
            value(it.value());
        }
        line += '}';
    }

    QByteArray m_tag;
    QList<QByteArray> *m_kept;
    qint64 m_textsSize = 0;
};

void writeReply(Writer &writer, const ScriptReply &reply)
{
    writer.line += '{';
    writer.key("call", true);
    writer.value(reply.call);
    if (reply.released) {
        writer.line += '}';
        return;
    }
    writer.key("reply");
    writer.line += '{';
    writer.key("success", true);
    writer.value(reply.success);
    if (reply.hasData) {
        writer.key("data");
        writer.value(reply.data);
    }
    if (!reply.success) {
        writer.key("status");
        writer.text(reply.status);
        if (reply.code.isValid()) {
            writer.key("code");
            writer.value(reply.code);
        }
        if (!reply.message.isNull()) {
            writer.key("message");
            writer.text(reply.message);
        }
    }
    writer.key("keepCallback");
    writer.value(reply.keepCallback);
    writer.line += "}}";
}

} // namespace

QList<QByteArray> replyBody(const QList<ScriptReply> &replies, const QByteArray &tag,
                            QList<QByteArray> *kept)
{
    Writer writer(tag, kept);
    writer.line += "{\"replies\":[";
    for (qsizetype i = 0; i < replies.size(); ++i) {
        if (i > 0)
            writer.line += ',';
        writeReply(writer, replies.at(i));
    }
    writer.line += "],\"texts\":[";
    for (qsizetype i = 0; i < writer.texts.size(); ++i) {
        if (i > 0)
            writer.line += ',';
        writer.line += QByteArray::number(writer.texts.at(i).size());
    }
    writer.line += "],\"kept\":" + QByteArray::number(kept ? kept->size() : 0) +
                   ",\"parts\":" + QByteArray::number(keptTextParts) + "}\n";
    return QList<QByteArray>{writer.line} + writer.texts;
}

qint64 bodySize(const QList<QByteArray> &pieces)
{
    return std::accumulate(pieces.cbegin(), pieces.cend(), qint64(0),
                           [](qint64 sum, const QByteArray &piece) { return sum + piece.size(); });
}

QList<ScriptReply> cutToBody(QList<ScriptReply> &replies, const QByteArray &tag)
{
    const auto size = [&tag](const ScriptReply &reply) {
        QList<QByteArray> kept;
        const qint64 body = bodySize(replyBody({reply}, tag, &kept));
        const bool fits = body <= longestBody &&
                          std::all_of(kept.cbegin(), kept.cend(), [](const QByteArray &text) {
                              return text.size() <= longestBody;
                          });
        return fits ? std::optional(body + bodySize(kept)) : std::nullopt;
    };
    qint64 sum = 0;
    for (qsizetype i = 0; i < replies.size(); ++i) {
        auto own = size(replies.at(i));
        if (!own) {
            ScriptReply &reply = replies[i];
            reply.success = false;
            reply.hasData = false;
            reply.data.clear();
            reply.status = commandStatusName(CommandStatus::UNKNOWN);
            reply.code = static_cast<int>(CommandStatus::UNKNOWN);
            reply.message = QStringLiteral("The reply is too long for a page.");
            own = size(reply);
        }
        sum += own.value_or(0);
        // One reply alone may be as long as all its texts together are.
        if (i > 0 && sum > longestBody) {
            QList<ScriptReply> rest = replies.mid(i);
            replies.resize(i);
            return rest;
        }
    }
    return {};
}

PiecesDevice::PiecesDevice(QList<QByteArray> pieces, QObject *parent)
    : QIODevice(parent), m_pieces(std::move(pieces))
{
    for (const QByteArray &piece : std::as_const(m_pieces))
        m_size += piece.size();
}

void PiecesDevice::setStretch(qint64 start, qint64 size)
{
    m_start = start;
    m_size = size;
}

qint64 PiecesDevice::readData(char *data, qint64 maxSize)
{
    maxSize = std::min(maxSize, m_size - pos());
    qint64 skip = m_start + pos();
    qint64 copied = 0;
    for (const QByteArray &piece : std::as_const(m_pieces)) {
        if (copied == maxSize)
            break;
        if (skip >= piece.size()) {
            skip -= piece.size();
            continue;
        }
        const qint64 part = std::min<qint64>(maxSize - copied, piece.size() - skip);
        std::memcpy(data + copied, piece.constData() + skip, static_cast<size_t>(part));
        copied += part;
        skip = 0;
    }
    return copied;
}

} // namespace zelkam
