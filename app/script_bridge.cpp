#include "app/script_bridge.h"

#include "app/script_arguments.h"
#include "app/script_call.h"
#include "host/zlog.h"

#include <QMetaMethod>
#include <QPointer>
#include <algorithm>
#include <utility>

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

bool ScriptBridge::isAllowed(const std::optional<WebOrigin> &origin) const
{
    return origin && m_allowedOrigins.contains(*origin);
}

std::optional<QByteArray> ScriptBridge::openSession(const std::optional<WebOrigin> &origin)
{
    if (!isAllowed(origin) || m_documents.size() >= maxSessions)
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
    m_documents.insert(session->token(), {session, {}});
    return session->token();
}

std::optional<QList<QByteArray>> ScriptBridge::takeReplies(const QByteArray &token,
                                                           const std::optional<WebOrigin> &origin)
{
    const auto session = this->session(token, origin);
    if (!session)
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
    const auto session = this->session(token, origin);
    if (!session)
        return std::nullopt;
    return session->takePart(index, part);
}

std::shared_ptr<ScriptSession> ScriptBridge::session(const QByteArray &token,
                                                     const std::optional<WebOrigin> &origin) const
{
    const auto session = m_documents.value(token).session;
    return session && origin && session->origin() == *origin ? session : nullptr;
}

void ScriptBridge::endSessions()
{
    // Taken out first: the end of what a plug-in started may call back.
    const auto documents = std::exchange(m_documents, {});
    for (const Document &document : documents) {
        document.session->close();
        for (const auto &plugin : document.plugins)
            plugin->invalidate();
    }
}

void ScriptBridge::showsOrigin(const WebOrigin &origin)
{
    const auto isElsewhere = [&origin](const Document &document) {
        return document.session->origin() != origin;
    };
    if (std::any_of(m_documents.cbegin(), m_documents.cend(), isElsewhere))
        endSessions();
}

void ScriptBridge::call(const QByteArray &token, qint64 number, const QString &command,
                        const QString &arguments, const QString &tag)
{
    m_gate([self = QPointer<ScriptBridge>(this), token, number, command, arguments, tag] {
        if (self)
            self->run(token, number, command, arguments, tag);
    });
}

void ScriptBridge::close(const QByteArray &token)
{
    if (m_documents.contains(token))
        emit closeRequested();
}

void ScriptBridge::run(const QByteArray &token, qint64 number, const QString &command,
                       const QString &arguments, const QString &tag)
{
    // Looked for behind the gate: the document may have gone while the call waited there.
    const auto document = m_documents.find(token);
    if (document == m_documents.end()) {
        ZLog::debug(QStringLiteral("A call without a session was dropped."));
        return;
    }
    const auto session = document->session;
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
    if (document->plugins.isEmpty()) {
        for (const PluginMaker &maker : std::as_const(m_pluginMakers))
            document->plugins.append(maker(session->origin()));
    }
    const auto plugins = document->plugins;
    for (const auto &plugin : plugins) {
        const QMetaMethod method = findCommand(*plugin->metaObject(), command.toUtf8());
        if (!method.isValid())
            continue;
        emit called(command, arguments);
        const CallBackManagerPtr call =
            std::make_shared<ScriptCall>(session, number, command, read->dictionary, m_delegate);
        method.invoke(plugin.get(), Qt::DirectConnection, Q_ARG(zelkam::CallBackManagerPtr, call));
        return;
    }
    fail(CommandStatus::COMMAND_NOT_FOUND,
         QStringLiteral("There is no command of the name \"%1\".").arg(command.left(64)));
}

} // namespace zelkam
