#include "platform/ui/pdf_pages.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/ui/background_work.h"

#include <QFile>
#include <QPainter>
#include <QPdfDocument>
#include <condition_variable>
#include <future>
#include <mutex>
#include <optional>

namespace zelkam {

namespace {

constexpr int mostPages = 5000;

QList<QSizeF> pageSizes(const QPdfDocument &document)
{
    QList<QSizeF> sizes;
    const int count = qMin(document.pageCount(), mostPages);
    for (int page = 0; page < count; ++page) {
        const QSizeF size = document.pagePointSize(page);
        // A page's box is whatever the file says; outside of these it is no paper.
        constexpr double shortest = 1.0;
        constexpr double longest = 14400.0;
        sizes.append(
            {qBound(shortest, size.width(), longest), qBound(shortest, size.height(), longest)});
    }
    return sizes;
}

} // namespace

struct PdfPages::Shared
{
    std::mutex mutex;
    std::condition_variable changed;
    QList<Request> wanted;
    Rendered rendered;
    bool stopped = false;

    /// The next request, or nothing at the end.
    std::optional<Request> next(Rendered &callback)
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return stopped || !wanted.isEmpty(); });
        if (stopped)
            return std::nullopt;
        callback = rendered;
        return wanted.takeFirst();
    }

    void serve(QPdfDocument &document)
    {
        Rendered callback;
        while (const auto request = next(callback)) {
            QImage image(request->size, QImage::Format_RGB32); // paper is white, not see-through
            image.fill(Qt::white);
            const QImage page = document.render(request->page, request->size);
            if (!image.isNull() && !page.isNull())
                QPainter(&image).drawImage(0, 0, page);
            DispatchQueue::main().async(
                [callback, wish = *request, image] { callback(wish, image); });
        }
    }
};

std::shared_ptr<PdfPages> PdfPages::open(std::shared_ptr<QFile> device, Outcome &outcome)
{
    std::shared_ptr<PdfPages> pages(new PdfPages);
    pages->m_shared = std::make_shared<Shared>();
    auto opened = std::make_shared<std::promise<Outcome>>();
    std::future<Outcome> result = opened->get_future();
    PdfPages *filled = pages.get(); // valid until the promise is kept
    runInBackground([shared = pages->m_shared, device = std::move(device), opened, filled] {
        QPdfDocument document;
        document.load(device.get());
        if (document.status() != QPdfDocument::Status::Ready || document.pageCount() < 1) {
            const bool locked = document.error() == QPdfDocument::Error::IncorrectPassword ||
                                document.error() == QPdfDocument::Error::UnsupportedSecurityScheme;
            opened->set_value(locked ? Outcome::locked : Outcome::damaged);
            return;
        }
        filled->m_sizes = pageSizes(document);
        opened->set_value(Outcome::ready);
        shared->serve(document);
    });
    outcome = result.get();
    return outcome == Outcome::ready ? pages : nullptr;
}

PdfPages::~PdfPages()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->stopped = true;
    m_shared->changed.notify_all();
}

void PdfPages::request(const QList<Request> &wanted, Rendered rendered)
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->wanted = wanted;
    m_shared->rendered = std::move(rendered);
    m_shared->changed.notify_all();
}

} // namespace zelkam
