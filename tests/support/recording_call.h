#pragma once

#include "host/call_back_manager.h"

#include <QStringList>
#include <functional>
#include <mutex>
#include <utility>

/// A script call whose replies are written down as text, in order: "success",
/// "success {...}", "error STATUS" or "error STATUS: message". From any thread.
class RecordingCall : public zelkam::CallBackManager
{
public:
    explicit RecordingCall(std::optional<QVariantMap> arguments,
                           zelkam::CommandDelegate *delegate = nullptr)
        : m_arguments(std::move(arguments)), m_delegate(delegate)
    {
    }

    std::optional<QVariantMap> argumentDic() const override { return m_arguments; }
    zelkam::CommandDelegate *commandDelegate() const override { return m_delegate; }

    void success(bool keepCallback) override { record(QStringLiteral("success"), keepCallback); }
    void success(const QVariant &data, bool keepCallback) override
    {
        {
            const std::lock_guard lock(m_mutex);
            m_data.append(data);
        }
        record(QStringLiteral("success with data"), keepCallback);
    }
    void error(zelkam::CommandStatus status, bool keepCallback) override
    {
        record(QStringLiteral("error ") + commandStatusName(status), keepCallback);
    }
    void error(zelkam::CommandStatus status, const QString &error, bool keepCallback) override
    {
        this->error(commandStatusName(status), error, keepCallback);
    }
    void error(const QString &status, const QString &error, bool keepCallback) override
    {
        record(QStringLiteral("error ") + status + QStringLiteral(": ") + error, keepCallback);
    }

    /// What the page does in its handler of the first reply.
    std::function<void()> onReply;

    QStringList replies() const
    {
        const std::lock_guard lock(m_mutex);
        return m_replies;
    }
    QVariantList data() const
    {
        const std::lock_guard lock(m_mutex);
        return m_data;
    }

private:
    void record(const QString &reply, bool keepCallback)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_replies.append(keepCallback ? reply + QStringLiteral(" (kept)") : reply);
        }
        if (const auto then = std::exchange(onReply, {}))
            then();
    }

    std::optional<QVariantMap> m_arguments;
    zelkam::CommandDelegate *m_delegate;
    mutable std::mutex m_mutex;
    QStringList m_replies;
    QVariantList m_data;
};
