#pragma once

#include "app/script_session.h"
#include "app/web_origin.h"
#include "host/zelkam_mobile_plugin.h"

#include <QHash>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

class ScriptBridge;

/// What the injected script reaches through the web channel, and all that it reaches there.
class ScriptChannel : public QObject
{
    Q_OBJECT

public:
    explicit ScriptChannel(ScriptBridge &bridge) : m_bridge(bridge) {}

    /// Another document begins in the main frame.
    Q_INVOKABLE void begin();
    /// A call; see ScriptBridge::call().
    Q_INVOKABLE void call(const QString &token, double number, const QString &command,
                          const QString &arguments, const QString &tag);
    /// The page closes its window.
    Q_INVOKABLE void close(const QString &token);

signals:
    /// Replies may be fetched. Carries nothing, as whatever goes through the channel reaches the
    /// document that is there when it arrives, which need not be the one that it is meant for.
    void repliesWait();

private:
    ScriptBridge &m_bridge;
};

/// Routes the page's calls to the commands of plug-ins, and their replies back.
///
/// A call names its session by the token; the session's origin was told by the web engine, not by
/// the page. It is checked against the allowed origins when the call arrives. A call without a
/// session that is open is dropped: nobody is there to be told.
///
/// Main thread only.
class ScriptBridge : public QObject
{
    Q_OBJECT

public:
    /// Runs the given work when something else is done, in the order in which it was given.
    using Gate = std::function<void(std::function<void()>)>;

    /// Makes a plug-in for a document of the origin.
    using PluginMaker = std::function<std::shared_ptr<ZelkamMobilePlugin>(const WebOrigin &)>;

    explicit ScriptBridge(AllowedOrigins allowedOrigins, CommandDelegate *delegate);
    ~ScriptBridge() override;

    /// Adds a plug-in. Each document has one of its own, which is made for its first call and
    /// invalidated with its session: no document has to do with what another one started.
    void addPlugin(PluginMaker maker) { m_pluginMakers.append(std::move(maker)); }

    /// What each command, and each notice of replies, waits for; nothing by default.
    void setGate(Gate gate) { m_gate = std::move(gate); }

    /// The object to register with the web channel.
    ScriptChannel *channel() { return &m_channel; }

    bool isAllowed(const std::optional<WebOrigin> &origin) const;

    /// Opens a session for a document of an allowed origin. Nothing for any other, or when this
    /// document opened more than a page has reason to.
    std::optional<QByteArray> openSession(const std::optional<WebOrigin> &origin);

    /// The replies that wait, as replyBody() writes them. Nothing unless the session is open and
    /// belongs to the origin.
    std::optional<QList<QByteArray>> takeReplies(const QByteArray &token,
                                                 const std::optional<WebOrigin> &origin);

    /// One part of a long text of the replies that were taken last, once. Nothing unless there is
    /// one of that index and the session belongs to the origin.
    std::optional<TextPart> takePart(const QByteArray &token, qsizetype index, int part,
                                     const std::optional<WebOrigin> &origin);

    /// Ends every session, and what its document started: the document is gone.
    void endSessions();

    /// The page shows a document of this origin now. Ends every session when there is one of
    /// another origin: a document that runs no script does not begin by itself.
    void showsOrigin(const WebOrigin &origin);

    /// Runs a command. The status of a call that no command takes is COMMAND_NOT_FOUND; that of
    /// arguments that cannot be read is INVALID_PARAM.
    void call(const QByteArray &token, qint64 number, const QString &command,
              const QString &arguments, const QString &tag);

    /// Passes on the page's wish to close its window, when it has an open session.
    void close(const QByteArray &token);

signals:
    void closeRequested();
    /// A call was handed to its command.
    void called(const QString &command, const QString &arguments);
    /// The page fetches a reply.
    void replied(const zelkam::ScriptReply &reply);

private:
    void run(const QByteArray &token, qint64 number, const QString &command,
             const QString &arguments, const QString &tag);

    /// What belongs to one document.
    struct Document
    {
        std::shared_ptr<ScriptSession> session;
        QList<std::shared_ptr<ZelkamMobilePlugin>> plugins; ///< none before the first call
    };

    std::shared_ptr<ScriptSession> session(const QByteArray &token,
                                           const std::optional<WebOrigin> &origin) const;

    const AllowedOrigins m_allowedOrigins;
    CommandDelegate *const m_delegate;
    QList<PluginMaker> m_pluginMakers;
    QHash<QByteArray, Document> m_documents; ///< by the tokens of their sessions
    Gate m_gate;
    ScriptChannel m_channel;
};

} // namespace zelkam
