#pragma once

#include "app/script_session.h"
#include "host/call_back_manager.h"

#include <atomic>
#include <memory>

namespace zelkam {

/// A call of the injected script: the host's CallBackManager.
///
/// Its end, wherever it comes, tells the page that nothing more will follow, and when it had no
/// reply at all, that it will get none (NO_REPLY).
class ScriptCall : public CallBackManager
{
public:
    /// @param number  the page's number of the call
    ScriptCall(std::shared_ptr<ScriptSession> session, qint64 number, QString command,
               std::optional<QVariantMap> argumentDic, CommandDelegate *delegate);
    ~ScriptCall() override;
    Q_DISABLE_COPY_MOVE(ScriptCall)

    std::optional<QVariantMap> argumentDic() const override { return m_argumentDic; }
    CommandDelegate *commandDelegate() const override { return m_delegate; }

    void success(bool keepCallback) override;
    void success(const QVariant &data, bool keepCallback) override;
    void error(CommandStatus status, bool keepCallback) override;
    void error(CommandStatus status, const QString &error, bool keepCallback) override;
    void error(const QString &status, const QString &error, bool keepCallback) override;

private:
    void reply(ScriptReply reply);

    const std::shared_ptr<ScriptSession> m_session;
    const qint64 m_number;
    const QString m_command;
    const std::optional<QVariantMap> m_argumentDic;
    CommandDelegate *const m_delegate;
    std::atomic<bool> m_replied = false;
};

} // namespace zelkam
