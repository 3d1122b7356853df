#include "platform/ui/pdf_pages.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace zelkam {

namespace {

/// A page's box is whatever the file says; outside of these, in points, it is no paper.
double pageEdge(double said)
{
    constexpr double shortest = 1.0;
    constexpr double longest = 14400.0;
    return said > shortest ? std::min(said, longest) : shortest;
}

} // namespace

struct PdfPages::Shared
{
    std::shared_ptr<const RegularFile> file;
    const quint64 document = newDecodedDocument();
    const DecodeCancel cancel;

    std::mutex mutex; // guards the following
    std::condition_variable changed;
    QList<Request> wanted;
    Rendered rendered;
    bool isStopped = false;

    Decoded ask(DecodeWish wish, const DecodeCancel &canceller) const
    {
        wish.document = document;
        return decode(wish, *file, DecodeUrgency::waitedFor, canceller);
    }

    /// The next request, or nothing at the end.
    std::optional<Request> next(Rendered &callback)
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return isStopped || !wanted.isEmpty(); });
        if (isStopped)
            return std::nullopt;
        callback = rendered;
        return wanted.takeFirst();
    }

    void serve()
    {
        Rendered callback;
        while (const auto request = next(callback)) {
            DecodeWish wish;
            wish.task = DecodeWish::Task::page;
            wish.index = request->page;
            wish.width = request->size.width();
            wish.height = request->size.height();
            DispatchQueue::main().async(
                [callback, wished = *request, image = ask(wish, cancel).image] {
                    callback(wished, image);
                });
        }
    }
};

std::shared_ptr<PdfPages> PdfPages::open(std::shared_ptr<const RegularFile> file,
                                         const DecodeCancel &cancel, DecodeReply::Outcome &outcome)
{
    const auto shared = std::make_shared<Shared>();
    shared->file = std::move(file);
    DecodeWish wish;
    wish.task = DecodeWish::Task::document;
    const Decoded opened = shared->ask(wish, cancel);
    outcome = opened.reply.outcome;
    const auto *const numbers = reinterpret_cast<const double *>(opened.bytes.constData());
    constexpr qsizetype mostPages = 5000;
    const qsizetype pages =
        std::min(mostPages, opened.bytes.size() / qsizetype(2 * sizeof(double)));
    if (!opened.isDone() || pages == 0)
        return nullptr;
    std::shared_ptr<PdfPages> document(new PdfPages);
    document->m_shared = shared;
    for (qsizetype page = 0; page < pages; ++page)
        document->m_sizes.append({pageEdge(numbers[2 * page]), pageEdge(numbers[2 * page + 1])});
    runInBackground([shared] { shared->serve(); });
    return document;
}

PdfPages::~PdfPages()
{
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->isStopped = true;
        m_shared->changed.notify_all();
    }
    m_shared->cancel.cancel();
}

void PdfPages::request(const QList<Request> &wanted, Rendered rendered)
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->wanted = wanted;
    m_shared->rendered = std::move(rendered);
    m_shared->changed.notify_all();
}

} // namespace zelkam
