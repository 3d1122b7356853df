#pragma once

#include "app/reply_body.h"
#include "app/web_origin.h"

#include <QByteArray>
#include <QList>
#include <bitset>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace zelkam {

/// A stretch of a text, which is shared and not copied.
struct TextPart
{
    QByteArray text;
    qint64 start = 0;
    qint64 size = 0;
};

/// The replies that wait for one document, from its first call until it is left.
///
/// The token, random and given only to a request that the web engine itself says came from the
/// origin, names the session in every call and every fetch of replies.
class ScriptSession : public std::enable_shared_from_this<ScriptSession>
{
public:
    /// @param wake  told on the main thread that replies wait; not after close()
    ScriptSession(WebOrigin origin, std::function<void()> wake);

    const QByteArray &token() const { return m_token; }
    const WebOrigin &origin() const { return m_origin; }

    /// Adds a reply behind those that wait. Dropped when the session is closed. From any thread.
    void push(ScriptReply reply);

    /// Takes the replies that wait, in their order. From any thread.
    QList<ScriptReply> take();
    /// Puts replies that were taken back before those that wait. From any thread.
    void putBack(const QList<ScriptReply> &replies);

    /// Keeps the long texts of the replies that were taken last, until each of their parts is
    /// taken or the next replies are. Main thread.
    void keep(const QList<QByteArray> &texts);
    /// Gives one of the keptTextParts of a text, once. Main thread.
    std::optional<TextPart> takePart(qsizetype index, int part);

    /// Ends the session: what waits and what comes is dropped. Main thread.
    void close();

private:
    struct KeptText
    {
        QByteArray text;
        std::bitset<keptTextParts> isTaken;
    };

    void wakeLater();

    const QByteArray m_token;
    const WebOrigin m_origin;
    std::function<void()> m_wake; // main thread only
    QList<KeptText> m_kept;       // likewise
    std::mutex m_mutex;
    QList<ScriptReply> m_replies;
    bool m_closed = false;
};

} // namespace zelkam
