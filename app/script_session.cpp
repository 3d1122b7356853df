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
        m_kept.append({text, {}});
}

std::optional<TextPart> ScriptSession::takePart(qsizetype index, int part)
{
    if (index < 0 || index >= m_kept.size() || part < 0 || part >= keptTextParts)
        return std::nullopt;
    KeptText &kept = m_kept[index];
    const auto bit = static_cast<size_t>(part);
    if (kept.isTaken.test(bit))
        return std::nullopt;
    kept.isTaken.set(bit);
    const qint64 start = kept.text.size() * part / keptTextParts;
    const qint64 end = kept.text.size() * (part + 1) / keptTextParts;
    TextPart result{kept.text, start, end - start};
    if (kept.isTaken.all())
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
