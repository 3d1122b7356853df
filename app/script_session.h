#pragma once

#include "app/reply_body.h"
#include "app/web_origin.h"

#include <QByteArray>
#include <QList>
#include <functional>
#include <memory>
#include <mutex>

namespace zelkam {

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

    /// Ends the session: what waits and what comes is dropped. Main thread.
    void close();

private:
    void wakeLater();

    const QByteArray m_token;
    const WebOrigin m_origin;
    std::function<void()> m_wake; // main thread only
    std::mutex m_mutex;
    QList<ScriptReply> m_replies;
    bool m_closed = false;
};

} // namespace zelkam
