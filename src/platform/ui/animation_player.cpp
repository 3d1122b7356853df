#include "platform/ui/animation_player.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"

#include <QPointer>
#include <QTimer>

namespace zelkam {

namespace {

int shownFor(qint64 milliseconds)
{
    constexpr int shortestAsked = 11;
    constexpr int usual = 100;
    constexpr int shortest = 20;
    constexpr int longest = 60'000;
    return milliseconds < shortestAsked
               ? usual
               : int(qBound(qint64(shortest), milliseconds, qint64(longest)));
}

} // namespace

AnimationPlayer::AnimationPlayer(std::shared_ptr<const RegularFile> file, int frames,
                                 QObject *parent)
    : QObject(parent), m_source{std::move(file), newDecodedDocument(), {}}, m_frames(frames)
{
}

AnimationPlayer::~AnimationPlayer()
{
    m_source.cancel.cancel();
}

/// @param delay  for which the frame before is to stand, in milliseconds from now
void AnimationPlayer::fetch(int index, int delay)
{
    m_sinceAsked.start();
    runInBackground([source = m_source, index, delay, player = QPointer(this)] {
        DecodeWish wish;
        wish.task = DecodeWish::Task::frame;
        wish.index = index;
        wish.document = source.document;
        const Decoded frame = decode(wish, *source.file, DecodeUrgency::background, source.cancel);
        DispatchQueue::main().async([player, frame, index, delay] {
            if (player)
                player->take(frame, index, delay);
        });
    });
}

void AnimationPlayer::take(const Decoded &frame, int index, int delay)
{
    constexpr int slow = 300;
    constexpr int mostSlowFrames = 5;
    m_slowFrames += m_sinceAsked.elapsed() > slow ? 1 : 0;
    if (!frame.isDone() || m_slowFrames > mostSlowFrames)
        return;
    const int wait = int(qMax<qint64>(0, delay - m_sinceAsked.elapsed()));
    QTimer::singleShot(wait, Qt::PreciseTimer, this, [this, frame, index] {
        emit frameChanged(frame.image);
        fetch((index + 1) % m_frames, shownFor(frame.reply.value));
    });
}

} // namespace zelkam
