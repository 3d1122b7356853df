#include "app/script_call.h"

namespace zelkam {

ScriptCall::ScriptCall(std::shared_ptr<ScriptSession> session, qint64 number, QString command,
                       std::optional<QVariantMap> argumentDic, CommandDelegate *delegate)
    : m_session(std::move(session)),
      m_number(number),
      m_command(std::move(command)),
      m_argumentDic(std::move(argumentDic)),
      m_delegate(delegate)
{
}

ScriptCall::~ScriptCall()
{
    if (!m_replied)
        ScriptCall::error(CommandStatus::NO_REPLY,
                          QStringLiteral("The call ended without a reply."), false);
    ScriptReply end;
    end.call = m_number;
    end.released = true;
    m_session->push(std::move(end));
}

void ScriptCall::success(bool keepCallback)
{
    ScriptReply answer;
    answer.success = true;
    answer.keepCallback = keepCallback;
    reply(std::move(answer));
}

void ScriptCall::success(const QVariant &data, bool keepCallback)
{
    ScriptReply answer;
    answer.success = true;
    answer.data = data;
    answer.hasData = true;
    answer.keepCallback = keepCallback;
    reply(std::move(answer));
}

void ScriptCall::error(CommandStatus status, bool keepCallback)
{
    error(status, QString(), keepCallback);
}

void ScriptCall::error(CommandStatus status, const QString &error, bool keepCallback)
{
    ScriptReply answer;
    answer.status = commandStatusName(status);
    answer.code = static_cast<int>(status);
    answer.message = error;
    answer.keepCallback = keepCallback;
    reply(std::move(answer));
}

void ScriptCall::error(const QString &status, const QString &error, bool keepCallback)
{
    ScriptReply answer;
    answer.status = status;
    // A command's own statuses are numbers written as text ("2043").
    bool isNumber = false;
    const int number = status.toInt(&isNumber);
    if (isNumber)
        answer.code = number;
    answer.message = error;
    answer.keepCallback = keepCallback;
    reply(std::move(answer));
}

void ScriptCall::reply(ScriptReply reply)
{
    m_replied = true;
    reply.call = m_number;
    reply.command = m_command;
    m_session->push(std::move(reply));
}

} // namespace zelkam
