#include "platform/ui/ui_document_picker_reader.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/file_descriptor.h"
#include "platform/foundation/file_name.h"
#include "platform/ui/ui_document_picker_entry_reader.h"

#include <QCollator>
#include <QLocale>
#include <QPointer>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <dirent.h>
#include <numeric>

namespace zelkam {

namespace {

/// Tells when there is something to tell again: a few times a second.
class NewsClock
{
public:
    bool isTime()
    {
        const auto now = std::chrono::steady_clock::now();
        if (now - m_last < std::chrono::milliseconds(150))
            return false;
        m_last = now;
        return true;
    }

private:
    std::chrono::steady_clock::time_point m_last = std::chrono::steady_clock::now();
};

void sortForPeople(QList<DocumentEntry> &entries)
{
    // The "C" locale compares bytes: "10" before "2", and "Z" before "a".
    const bool hasLanguage = QLocale().language() != QLocale::C;
    QCollator collator(hasLanguage ? QLocale() : QLocale(QLocale::English));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(size_t(entries.size()));
    for (const DocumentEntry &entry : std::as_const(entries))
        keys.push_back(collator.sortKey(entry.shown));
    std::vector<size_t> order(keys.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        const DocumentEntry &one = entries.at(qsizetype(a));
        const DocumentEntry &other = entries.at(qsizetype(b));
        if (one.isFolder != other.isFolder)
            return one.isFolder;
        const int compared = keys[a].compare(keys[b]);
        return compared != 0 ? compared < 0 : one.name < other.name;
    });
    QList<DocumentEntry> sorted;
    sorted.reserve(entries.size());
    for (const size_t index : order)
        sorted.append(entries.at(qsizetype(index)));
    entries = std::move(sorted);
}

} // namespace

struct DocumentFolderReader::Job
{
    QPointer<DocumentFolderReader> reader; ///< to be looked at on the main thread only
    QString path;
    QList<UTType> allowedTypes;
    std::atomic<bool> cancelled = false;
};

DocumentFolderReader::DocumentFolderReader(QList<UTType> allowedTypes, QObject *parent)
    : QObject(parent), m_allowedTypes(std::move(allowedTypes))
{
}

DocumentFolderReader::~DocumentFolderReader()
{
    if (m_job)
        m_job->cancelled = true;
}

void DocumentFolderReader::read(const QString &path)
{
    if (m_job)
        m_job->cancelled = true;
    m_job = std::make_shared<Job>();
    m_job->reader = this;
    m_job->path = path;
    m_job->allowedTypes = m_allowedTypes;
    runInBackground([job = m_job] { run(job); });
}

/// Runs something on the main thread, unless the job has been given up by then.
template<typename Deliver>
void DocumentFolderReader::deliver(const std::shared_ptr<Job> &job, Deliver deliver)
{
    DispatchQueue::main().async([job, deliver = std::move(deliver)] {
        if (job->reader && !job->cancelled)
            deliver(*job->reader);
    });
}

void DocumentFolderReader::run(const std::shared_ptr<Job> &job)
{
    DocumentListing listing;
    listing.path = job->path;
    errno = 0;
    DIR *folder = ::opendir(encodeFileName(job->path).constData());
    if (!folder) {
        listing.error = {errno, std::generic_category()};
        deliver(job, [listing](DocumentFolderReader &reader) { emit reader.finished(listing); });
        return;
    }
    DocumentEntryReader entries(::dirfd(folder), job->allowedTypes);
    NewsClock clock;
    while (const dirent *item = job->cancelled ? nullptr : ::readdir(folder)) {
        if (const auto entry = entries.read(item->d_name))
            listing.entries.append(*entry);
        if (clock.isTime()) {
            const int count = int(listing.entries.size());
            deliver(job, [count](DocumentFolderReader &reader) { emit reader.counted(count); });
        }
    }
    ::closedir(folder);
    if (job->cancelled)
        return;
    sortForPeople(listing.entries);
    deliver(job, [listing](DocumentFolderReader &reader) { emit reader.finished(listing); });
    examine(job, listing);
}

void DocumentFolderReader::examine(const std::shared_ptr<Job> &job, const DocumentListing &listing)
{
    int first = 0;
    QList<DocumentChoice> choices;
    const auto flush = [&] {
        if (!choices.isEmpty()) {
            deliver(job, [first, choices](DocumentFolderReader &reader) {
                emit reader.examined(first, choices);
            });
        }
        first += int(choices.size());
        choices.clear();
    };
    NewsClock clock;
    for (const DocumentEntry &entry : listing.entries) {
        if (job->cancelled)
            return;
        choices.append(entry.choice == DocumentChoice::unknown
                           ? choiceOf(job->path + u'/' + entry.name, job->allowedTypes)
                           : entry.choice);
        if (entry.choice == DocumentChoice::unknown && clock.isTime())
            flush();
    }
    const bool isNews = std::any_of(
        listing.entries.cbegin(), listing.entries.cend(),
        [](const DocumentEntry &entry) { return entry.choice == DocumentChoice::unknown; });
    if (isNews)
        flush();
}

DocumentChoice DocumentFolderReader::choiceOf(const QString &path,
                                              const QList<UTType> &allowedTypes)
{
    const auto type = UTType::fromFile(path);
    if (!type)
        return DocumentChoice::notAFile;
    const bool conforms = std::any_of(allowedTypes.cbegin(), allowedTypes.cend(),
                                      [&type](UTType allowed) { return type->conforms(allowed); });
    return conforms ? DocumentChoice::allowed : DocumentChoice::wrongType;
}

} // namespace zelkam
