#include "app/script_session.h"

#include "platform/foundation/dispatch_queue.h"

#include <QRandomGenerator>
#include <array>
#include <utility>

namespace zelkam {

namespace {

QByteArray randomToken()
{
    std::array<quint32, 4> words{};
    QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    return QByteArray(reinterpret_cast<const char *>(words.data()), sizeof words).toHex();
}

} // namespace

ScriptSession::ScriptSession(WebOrigin origin, std::function<void()> wake)
    : m_token(randomToken()), m_origin(std::move(origin)), m_wake(std::move(wake))
{
}

void ScriptSession::push(ScriptReply reply)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            return;
        m_replies.append(std::move(reply));
    }
    wakeLater();
}

void ScriptSession::wakeLater()
{
    DispatchQueue::main().async([weak = weak_from_this()] {
        const auto session = weak.lock();
        if (session && session->m_wake)
            session->m_wake();
    });
}

QList<ScriptReply> ScriptSession::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_replies, {});
}

void ScriptSession::putBack(const QList<ScriptReply> &replies)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_closed)
            return;
        m_replies = replies + m_replies;
    }
    wakeLater();
}

void ScriptSession::keep(const QList<QByteArray> &texts)
{
    m_kept.clear();
    for (const QByteArray &text : texts)
        m_kept.append({text});
}

std::optional<TextHalf> ScriptSession::takeHalf(qsizetype index, int half)
{
    if (index < 0 || index >= m_kept.size() || half < 0 || half > 1)
        return std::nullopt;
    KeptText &kept = m_kept[index];
    if (std::exchange(kept.isTaken[half], true))
        return std::nullopt;
    const qint64 middle = kept.text.size() / 2;
    TextHalf result{kept.text, half == 0 ? 0 : middle,
                    half == 0 ? middle : kept.text.size() - middle};
    if (kept.isTaken[0] && kept.isTaken[1])
        kept.text.clear();
    return result;
}

void ScriptSession::close()
{
    m_wake = nullptr;
    m_kept.clear();
    const std::lock_guard lock(m_mutex);
    m_closed = true;
    m_replies.clear();
}

} // namespace zelkam
