#include "platform/ui/pdf_pages.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"

#include <algorithm>

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

Decoded PdfPages::Source::ask(DecodeWish wish, const DecodeCancel &canceller) const
{
    wish.document = document;
    return decode(wish, *file, DecodeUrgency::waitedFor, canceller);
}

std::shared_ptr<PdfPages> PdfPages::open(std::shared_ptr<const RegularFile> file,
                                         const DecodeCancel &cancel, DecodeReply::Outcome &outcome)
{
    std::shared_ptr<PdfPages> document(new PdfPages(std::move(file)));
    DecodeWish wish;
    wish.task = DecodeWish::Task::document;
    const Decoded opened = document->m_source.ask(wish, cancel);
    outcome = opened.reply.outcome;
    const auto *const numbers = reinterpret_cast<const double *>(opened.bytes.constData());
    constexpr qsizetype mostPages = 5000;
    const qsizetype pages =
        std::min(mostPages, opened.bytes.size() / qsizetype(2 * sizeof(double)));
    if (!opened.isDone() || pages == 0)
        return nullptr;
    for (qsizetype page = 0; page < pages; ++page)
        document->m_sizes.append({pageEdge(numbers[2 * page]), pageEdge(numbers[2 * page + 1])});
    return document;
}

PdfPages::~PdfPages()
{
    m_source.cancel.cancel();
}

void PdfPages::request(const QList<Request> &wanted, Rendered rendered)
{
    m_wanted = wanted;
    m_rendered = std::move(rendered);
    if (!m_isDrawing)
        drawNext();
}

void PdfPages::drawNext()
{
    m_isDrawing = !m_wanted.isEmpty();
    if (!m_isDrawing)
        return;
    const Request request = m_wanted.takeFirst();
    runInBackground([source = m_source, request, rendered = m_rendered, self = weak_from_this()] {
        DecodeWish wish;
        wish.task = DecodeWish::Task::page;
        wish.index = request.page;
        wish.width = request.size.width();
        wish.height = request.size.height();
        DispatchQueue::main().async(
            [request, rendered, self, image = source.ask(wish, source.cancel).image] {
                if (const auto document = self.lock())
                    document->drawNext();
                rendered(request, image);
            });
    });
}

} // namespace zelkam
