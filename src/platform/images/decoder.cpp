#include "platform/images/decoder.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/memory_file.h"
#include "platform/images/decoder_process.h"
#include "platform/images/image_scaling.h"

#include <QColorSpace>
#include <QRandomGenerator>
#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <list>
#include <mutex>

namespace zelkam {

using namespace std::chrono_literals;

namespace {

using Outcome = DecodeReply::Outcome;

/// What the other side says, without what no picture has.
qint64 pixelCount(qint32 width, qint32 height)
{
    constexpr qint64 most = 1LL << 32;
    return width > 0 && height > 0 ? std::min(qint64(width) * height, most) : 0;
}

/// Ends what runs for ever, and never what is honestly large on a slow device.
std::chrono::nanoseconds allowance(const DecodeWish &wish, const DecodeReply &announced,
                                   qint64 fileBytes)
{
    constexpr auto always = 2s;
    constexpr auto forStoredPixel = 150ns;
    constexpr auto forEncodedPixel = 300ns;
    constexpr auto most = 40s;
    // A few hundred bytes that unpack to a large picture are no photo.
    constexpr qint64 longestFile = 1LL << 30;
    const qint64 honest = (16LL << 20) + 32 * std::min(fileBytes, longestFile);
    const qint64 stored = pixelCount(announced.ownWidth, announced.ownHeight);
    const qint64 made = std::min(pixelCount(announced.width, announced.height),
                                 std::max(honest, pixelCount(wish.width, wish.height)));
    std::chrono::nanoseconds sum = always + std::min(stored, honest) * forStoredPixel;
    if (wish.form != DecodeWish::Form::pixels)
        sum += made * forEncodedPixel;
    return std::min<std::chrono::nanoseconds>(sum, most);
}

Decoded failed(Outcome outcome = Outcome::damaged)
{
    Decoded result;
    result.reply.outcome = outcome;
    return result;
}

bool givesPixels(const DecodeWish &wish)
{
    return wish.task != DecodeWish::Task::document && wish.task != DecodeWish::Task::text &&
           wish.form == DecodeWish::Form::pixels;
}

/// How large an answer may be at most, which the application holds.
qint64 mostPixels(const DecodeWish &wish)
{
    constexpr qint64 mostOfItsOwn = 128LL << 20;
    constexpr qint64 edgeOfThumbnail = thumbnailEdges.back();
    switch (wish.task) {
    case DecodeWish::Task::page:
        return pixelCount(wish.width, wish.height);
    case DecodeWish::Task::thumbnail:
        return pixelCount(wish.width, wish.width);
    default:
        break;
    }
    switch (wish.size) {
    case DecodeWish::Size::own:
        return mostOfItsOwn;
    case DecodeWish::Size::stretched:
        return pixelCount(std::max(1, wish.width), std::max(1, wish.height));
    case DecodeWish::Size::within:
    case DecodeWish::Size::filling:
        return pixelCount(wish.width, wish.width);
    case DecodeWish::Size::stored:
        return edgeOfThumbnail * edgeOfThumbnail;
    }
    return 0;
}

qint64 mostBytes(const DecodeWish &wish)
{
    constexpr qint64 mostOfText = 8LL << 20; // its first 2 MiB, in characters of two bytes
    constexpr qint64 mostOfPicture = 2LL << 30;
    const bool isPicture = givesPixels(wish) || wish.task == DecodeWish::Task::picture;
    return isPicture ? mostOfPicture : mostOfText;
}

/// Believes nothing of a reply: whatever the process was made to say, an image lies within its
/// bytes.
Decoded taken(const DecodeWish &wish, const DecodeReply &reply, const FileDescriptor &memory)
{
    if (reply.outcome != Outcome::done)
        return failed(reply.outcome);
    const auto mapping = reply.bytes >= 0 && reply.bytes <= mostBytes(wish) && memory.isOpen() &&
                                 isSealed(memory.get(), reply.bytes)
                             ? FileMapping::map(memory.get(), reply.bytes)
                             : std::nullopt;
    if (!mapping)
        return failed();
    Decoded result;
    result.reply = reply;
    if (!givesPixels(wish)) {
        result.bytes = mapping->bytes().toByteArray();
        return result;
    }
    constexpr qint64 pixelSize = 4;
    constexpr qint32 longest = 1 << 24;
    if (reply.width < 1 || reply.height < 1 || reply.width > longest || reply.height > longest ||
        reply.bytesPerLine < reply.width * pixelSize || reply.bytesPerLine % pixelSize != 0 ||
        qint64(reply.bytesPerLine) * reply.height > reply.bytes ||
        pixelCount(reply.width, reply.height) > mostPixels(wish))
        return failed();
    auto *const owner = new std::shared_ptr<const char>(mapping->owner());
    result.image = QImage(
        reinterpret_cast<const uchar *>(mapping->bytes().data()), reply.width, reply.height,
        reply.bytesPerLine, reply.isTransparent ? QImage::Format_ARGB32 : QImage::Format_RGB32,
        [](void *bytes) { delete static_cast<std::shared_ptr<const char> *>(bytes); }, owner);
    result.image.setColorSpace(QColorSpace(QColorSpace::SRgb));
    return result.image.isNull() ? failed() : result;
}

struct Job
{
    const DecodeWish &wish;
    int file;
    qint64 size;
    DecodeUrgency urgency;
};

struct Slot
{
    std::unique_ptr<DecoderProcess> process;
    bool isBusy = false;
    quint64 document = 0; ///< that the process has open
};

} // namespace

struct DecodeCancel::State
{
    std::atomic_bool isCancelled = false;
    std::mutex mutex;
    DecoderProcess *process = nullptr; ///< that works for it
};

/// The processes, and the jobs that wait for one.
class DecoderPool
{
public:
    static DecoderPool &shared()
    {
        // Never destroyed: a job may end while the program's statics already go.
        static DecoderPool &instance = *new DecoderPool;
        return instance;
    }

    Decoded run(const Job &job, const DecodeCancel &cancel)
    {
        Slot *const slot = take(job, *cancel.m_state);
        if (!slot)
            return failed();
        // One that has ended while it had nothing to do, as the system was short of memory.
        if (!slot->process || slot->process->isGone())
            slot->process = DecoderProcess::start();
        Decoded result = failed();
        const bool isStarted = slot->process != nullptr;
        if (isStarted) {
            watch(*cancel.m_state, slot->process.get());
            const bool isLeft = exchange(job, *slot->process, result);
            watch(*cancel.m_state, nullptr);
            // What it has decoded stays in the heap of a process, and its processor time is
            // bounded. A late cancel may have ended it behind its answer.
            constexpr auto longestLife = 2min;
            if (!isLeft || cancel.m_state->isCancelled ||
                slot->process->processorTime() > longestLife)
                slot->process.reset();
        }
        slot->document = slot->process ? job.wish.document : 0;
        const bool isMissing = isStarted && !slot->process;
        giveBack(*slot);
        if (isMissing)
            startMissing();
        return result;
    }

    void startMissing()
    {
        runInBackground([this] {
            while (Slot *const slot = takeEmpty()) {
                slot->process = DecoderProcess::start();
                const bool isStarted = slot->process != nullptr;
                giveBack(*slot);
                if (!isStarted)
                    return;
            }
        });
    }

    void wake()
    {
        const std::lock_guard lock(m_mutex);
        m_changed.notify_all();
    }

private:
    /// Waits for the job's turn. Nothing when it is cancelled before.
    Slot *take(const Job &job, const DecodeCancel::State &cancel)
    {
        std::unique_lock lock(m_mutex);
        m_waiting.push_back(&job);
        Slot *found = nullptr;
        m_changed.wait(lock,
                       [&] { return cancel.isCancelled || (found = slotFor(job)) != nullptr; });
        m_waiting.remove(&job);
        if (found)
            found->isBusy = true;
        m_changed.notify_all(); // the next in the row
        return found;
    }

    Slot *takeEmpty()
    {
        const std::lock_guard lock(m_mutex);
        for (Slot &slot : m_slots) {
            if (!slot.isBusy && !slot.process) {
                slot.isBusy = true;
                return &slot;
            }
        }
        return nullptr;
    }

    void giveBack(Slot &slot)
    {
        const std::lock_guard lock(m_mutex);
        slot.isBusy = false;
        m_changed.notify_all();
    }

    /// A free slot, if it is the job's turn: the one whose process has its document open, otherwise
    /// one that has none.
    Slot *slotFor(const Job &job)
    {
        const auto urgent =
            std::find_if(m_waiting.cbegin(), m_waiting.cend(), [](const Job *other) {
                return other->urgency == DecodeUrgency::waitedFor;
            });
        if (&job != (urgent != m_waiting.cend() ? *urgent : m_waiting.front()))
            return nullptr;
        Slot *found = nullptr;
        for (Slot &slot : m_slots) {
            if (slot.isBusy)
                continue;
            if (job.wish.document != 0 && slot.document == job.wish.document)
                return &slot;
            if (!found || (slot.document == 0 && slot.process))
                found = &slot;
        }
        return found;
    }

    static void watch(DecodeCancel::State &cancel, DecoderProcess *process)
    {
        const std::lock_guard lock(cancel.mutex);
        cancel.process = process;
        if (process && cancel.isCancelled)
            process->kill();
    }

    /// Whether the process is fit for another job.
    static bool exchange(const Job &job, DecoderProcess &process, Decoded &result)
    {
        constexpr auto look = 100ms;            // at the processor time
        constexpr auto longestStandstill = 30s; // of a file system that does not answer
        const auto before = process.processorTime();
        const auto begin = std::chrono::steady_clock::now();
        DecodeWish wish = job.wish;
        wish.job = QRandomGenerator::global()->generate64();
        if (!process.send(wish, job.file))
            return false;
        auto limit = allowance(job.wish, {}, job.size);
        auto used = 0ns;
        auto lastUse = begin;
        for (;;) {
            DecodeReply reply;
            FileDescriptor memory;
            const Received received = process.receive(reply, memory, look);
            if (received == Received::gone)
                return false;
            if (received == Received::message && reply.job == wish.job) {
                if (reply.outcome != Outcome::working) {
                    result = taken(job.wish, reply, memory);
                    return true;
                }
                limit = std::max(limit, allowance(job.wish, reply, job.size));
            }
            const auto now = std::chrono::steady_clock::now();
            const auto usedNow = process.processorTime() - before;
            if (usedNow > used + 1ms)
                lastUse = now;
            used = usedNow;
            // Nor may it sleep, a little work now and then.
            constexpr int slowestMachine = 20;
            if (used > limit || now - lastUse > longestStandstill ||
                now - begin > longestStandstill + slowestMachine * limit)
                return false;
        }
    }

    std::mutex m_mutex; // guards the following, but not the process of a busy slot
    std::condition_variable m_changed;
    std::array<Slot, 2> m_slots;
    std::list<const Job *> m_waiting;
};

DecodeCancel::DecodeCancel() : m_state(std::make_shared<State>()) {}

void DecodeCancel::cancel() const
{
    m_state->isCancelled = true;
    {
        const std::lock_guard lock(m_state->mutex);
        if (m_state->process)
            m_state->process->kill();
    }
    DecoderPool::shared().wake();
}

Decoded decode(const DecodeWish &wish, const RegularFile &file, DecodeUrgency urgency,
               const DecodeCancel &cancel)
{
    return DecoderPool::shared().run({wish, file.descriptor(), file.size(), urgency}, cancel);
}

Decoded decode(const DecodeWish &wish, const QByteArray &bytes, DecodeUrgency urgency,
               const DecodeCancel &cancel)
{
    const FileDescriptor file = sealedMemoryFile(bytes);
    if (!file.isOpen())
        return failed();
    return DecoderPool::shared().run({wish, file.get(), bytes.size(), urgency}, cancel);
}

void warmUpDecoders()
{
    DecoderPool::shared().startMissing();
}

quint64 newDecodedDocument()
{
    static std::atomic<quint64> last = 0;
    return ++last;
}

} // namespace zelkam
