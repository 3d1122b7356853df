#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <QVariant>

namespace zelkam {

/// One reply on its way to the page, or the news that a call was let go.
struct ScriptReply
{
    qint64 call = 0;       ///< the page's number of the call
    QString command;       ///< for the host's own eyes; the page does not get it
    bool released = false; ///< no further reply will follow; the fields below do not count

    bool success = false;
    QVariant data; ///< what JSON can hold; a QByteArray is ASCII text
    bool hasData = false;
    QString status;  ///< of an error
    QVariant code;   ///< of an error; absent when the status has no number
    QString message; ///< of an error; null when it has none
    bool keepCallback = false;
};

/// Writes replies as one body for the injected script: a line of JSON, then raw text.
///
/// The line is pure ASCII: { "replies": [...], "texts": [lengths], "kept": count,
/// "parts": count }. ASCII text of
/// 64 KiB and more that comes as a QByteArray is not put into the line; an object whose only key is
/// the tag stands for it there, and its bytes follow the line's feed, shared and not copied.
///
/// @param kept  takes the texts of 1 MiB and more, shared, when it is given: the script fetches
///              each of them in parts at the same time, which takes less than two thirds of the
///              time. It takes shorter ones too once the body is full. The value under the tag is
///              then a list with the index of the text.
///
/// What JSON cannot hold (a number that is not finite, say) is written as null.
QList<QByteArray> replyBody(const QList<ScriptReply> &replies, const QByteArray &tag,
                            QList<QByteArray> *kept = nullptr);

/// In how many parts the script fetches a long text. The web engine hands 64 KiB at a time to the
/// page's process and waits for it; with several parts on the way, one of them is always ready.
inline constexpr int keptTextParts = 4;

/// The longest text that the web engine's script can hold, less some room. A body beyond it arrives
/// as an empty text, and its replies with it; so does a kept text, which is one as well.
inline constexpr qint64 longestBody = (qint64(1) << 29) - 4096;

qint64 bodySize(const QList<QByteArray> &pieces);

/// Keeps the first of the replies and gives the rest. More than one are kept only where all they
/// hold together is no longer than a body, so that a page is not flooded. A reply with a text that
/// no script can hold becomes an error that says so: the page gets an answer even then.
QList<ScriptReply> cutToBody(QList<ScriptReply> &replies, const QByteArray &tag);

/// A read-only device over pieces of memory, without joining them.
class PiecesDevice : public QIODevice
{
    Q_OBJECT

public:
    explicit PiecesDevice(QList<QByteArray> pieces, QObject *parent = nullptr);

    /// Gives one stretch of the whole only. Before it is opened.
    void setStretch(qint64 start, qint64 size);

    qint64 size() const override { return m_size; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QList<QByteArray> m_pieces;
    qint64 m_start = 0;
    qint64 m_size = 0;
};

} // namespace zelkam
