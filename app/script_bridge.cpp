#include "app/script_bridge.h"

#include "app/script_arguments.h"
#include "app/script_call.h"
#include "host/zlog.h"

#include <QMetaMethod>
#include <QPointer>

namespace zelkam {

namespace {

/// A document opens one session. Frames of its origin may open some as well, to no avail.
constexpr qsizetype maxSessions = 32;

/// A public method that a plug-in's own class declares, of the command's name and with the one
/// parameter that every command has. What the base and QObject declare is no command.
QMetaMethod findCommand(const QMetaObject &meta, const QByteArray &name)
{
    for (int i = meta.methodCount() - 1; i >= ZelkamMobilePlugin::staticMetaObject.methodCount();
         --i) {
        const QMetaMethod method = meta.method(i);
        const bool isInvokable =
            method.access() == QMetaMethod::Public && (method.methodType() == QMetaMethod::Method ||
                                                       method.methodType() == QMetaMethod::Slot);
        if (isInvokable && method.name() == name && method.parameterCount() == 1 &&
            method.parameterMetaType(0) == QMetaType::fromType<CallBackManagerPtr>())
            return method;
    }
    return {};
}

} // namespace

void ScriptChannel::begin()
{
    m_bridge.endSessions();
}

void ScriptChannel::call(const QString &token, double number, const QString &command,
                         const QString &arguments, const QString &tag)
{
    m_bridge.call(token.toLatin1(), static_cast<qint64>(number), command, arguments, tag);
}

void ScriptChannel::close(const QString &token)
{
    m_bridge.close(token.toLatin1());
}

ScriptBridge::ScriptBridge(AllowedOrigins allowedOrigins, CommandDelegate *delegate)
    : m_allowedOrigins(std::move(allowedOrigins)),
      m_delegate(delegate),
      m_gate([](const std::function<void()> &work) { work(); }),
      m_channel(*this)
{
}

ScriptBridge::~ScriptBridge()
{
    endSessions();
}

void ScriptBridge::addPlugin(std::shared_ptr<ZelkamMobilePlugin> plugin)
{
    m_plugins.append(std::move(plugin));
}

bool ScriptBridge::isAllowed(const std::optional<WebOrigin> &origin) const
{
    return origin && m_allowedOrigins.contains(*origin);
}

std::optional<QByteArray> ScriptBridge::openSession(const std::optional<WebOrigin> &origin)
{
    if (!isAllowed(origin) || m_sessions.size() >= maxSessions)
        return std::nullopt;
    const QPointer<ScriptBridge> self(this);
    const auto session = std::make_shared<ScriptSession>(*origin, [self] {
        if (!self)
            return;
        self->m_gate([self] {
            if (self)
                emit self->m_channel.repliesWait();
        });
    });
    m_sessions.insert(session->token(), session);
    return session->token();
}

std::optional<QList<QByteArray>> ScriptBridge::takeReplies(const QByteArray &token,
                                                           const std::optional<WebOrigin> &origin)
{
    const auto session = m_sessions.value(token);
    if (!session || !origin || session->origin() != *origin)
        return std::nullopt;
    QList<ScriptReply> replies = session->take();
    QList<QByteArray> kept;
    QList<QByteArray> body = replyBody(replies, session->token(), &kept);
    if (bodySize(body + kept) > longestBody) {
        session->putBack(cutToBody(replies, session->token()));
        kept.clear();
        body = replyBody(replies, session->token(), &kept);
    }
    session->keep(kept);
    for (const ScriptReply &reply : replies) {
        if (!reply.released)
            emit replied(reply);
    }
    return body;
}

std::optional<TextPart> ScriptBridge::takePart(const QByteArray &token, qsizetype index, int part,
                                               const std::optional<WebOrigin> &origin)
{
    const auto session = m_sessions.value(token);
    if (!session || !origin || session->origin() != *origin)
        return std::nullopt;
    return session->takePart(index, part);
}

void ScriptBridge::endSessions()
{
    for (const auto &session : std::as_const(m_sessions))
        session->close();
    m_sessions.clear();
}

void ScriptBridge::call(const QByteArray &token, qint64 number, const QString &command,
                        const QString &arguments, const QString &tag)
{
    const auto session = m_sessions.value(token);
    if (!session) {
        ZLog::debug(QStringLiteral("A call without a session was dropped."));
        return;
    }
    m_gate([self = QPointer<ScriptBridge>(this), session, number, command, arguments, tag] {
        if (self)
            self->run(session, number, command, arguments, tag);
    });
}

void ScriptBridge::close(const QByteArray &token)
{
    if (m_sessions.contains(token))
        emit closeRequested();
}

void ScriptBridge::run(const std::shared_ptr<ScriptSession> &session, qint64 number,
                       const QString &command, const QString &arguments, const QString &tag)
{
    const auto fail = [&](CommandStatus status, const QString &message) {
        ScriptCall(session, number, command, std::nullopt, nullptr).error(status, message, false);
    };
    if (!isAllowed(session->origin())) {
        fail(CommandStatus::ORIGIN_NOT_ALLOWED,
             QStringLiteral("This page may not call the application."));
        return;
    }
    const auto read = readScriptArguments(arguments, tag);
    if (!read) {
        fail(CommandStatus::INVALID_PARAM, QStringLiteral("The arguments cannot be read."));
        return;
    }
    for (const auto &plugin : std::as_const(m_plugins)) {
        const QMetaMethod method = findCommand(*plugin->metaObject(), command.toUtf8());
        if (!method.isValid())
            continue;
        emit called(command, arguments);
        const CallBackManagerPtr call =
            std::make_shared<ScriptCall>(session, number, command, read->dictionary, m_delegate);
        // Held for the call, as the command may let go of the last other reference to its plug-in.
        method.invoke(std::shared_ptr(plugin).get(), Qt::DirectConnection,
                      Q_ARG(zelkam::CallBackManagerPtr, call));
        return;
    }
    fail(CommandStatus::COMMAND_NOT_FOUND,
         QStringLiteral("There is no command of the name \"%1\".").arg(command.left(64)));
}

} // namespace zelkam
