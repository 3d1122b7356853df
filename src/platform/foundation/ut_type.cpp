#include "platform/foundation/ut_type.h"

#include "platform/foundation/regular_file.h"
#include "platform/foundation/ut_type_record.h"

#include <QFileInfo>
#include <QHash>
#include <QMimeDatabase>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace zelkam {

namespace {

/// How much of a file decides what it is, as in Qt's own lookup.
constexpr qsizetype sniffedBytes = 16 * 1024;

struct DynamicRecord : UTTypeRecord
{
    QString identifierText;
    QString mimeText;
};

/// What was found for one spelling of one extension; nothing when it is not known.
struct RememberedExtension
{
    QString extension;
    std::vector<const UTTypeRecord *> records;
};

QString textOf(QStringView view)
{
    // The records live for ever, so their text need not be copied.
    return QString::fromRawData(view.data(), view.size());
}

} // namespace

/// The table of what was looked up: read without a lock, filled under one, never emptied.
class UTTypeRegistry
{
public:
    static UTTypeRegistry &shared()
    {
        // Never destroyed: types are handed out for the life of the process.
        static UTTypeRegistry &registry = *new UTTypeRegistry;
        return registry;
    }

    static UTType typeOf(const UTTypeRecord *record) { return UTType(record); }
    static const UTTypeRecord *recordOf(UTType type) { return type.m_record; }

    const UTTypeRecord *find(QStringView extension, const UTTypeRecord *conformingTo)
    {
        const size_t start = qHash(extension);
        for (size_t i = 0; i < slotCount; ++i) {
            const auto *entry = m_slots[(start + i) % slotCount].load(std::memory_order_acquire);
            if (!entry)
                break;
            if (entry->extension == extension)
                return firstConforming(entry->records, conformingTo);
        }
        return lookUp(extension, start, conformingTo);
    }

    const UTTypeRecord *recordOf(const QMimeType &mime)
    {
        const std::lock_guard lock(m_mutex);
        return recordOfLocked(mime);
    }

    const QMimeDatabase &database() const { return m_database; }

private:
    static constexpr size_t slotCount = 4096;
    // Names are not ours to choose: what nobody knows may fill a part of the table, and the whole
    // may fill to a half. Whatever comes later is looked up each time.
    static constexpr size_t maxUnknown = slotCount / 8;
    static constexpr size_t maxRemembered = slotCount / 2;
    static constexpr qsizetype maxExtension = 64;

    static const UTTypeRecord *firstConforming(const std::vector<const UTTypeRecord *> &records,
                                               const UTTypeRecord *conformingTo)
    {
        for (const UTTypeRecord *record : records) {
            if (record->conforms(conformingTo))
                return record;
        }
        return nullptr;
    }

    const UTTypeRecord *lookUp(QStringView extension, size_t start,
                               const UTTypeRecord *conformingTo)
    {
        // A separator would make the rest a file name of its own.
        if (extension.isEmpty() || extension.contains(u'/') || extension.contains(u'.'))
            return nullptr;
        auto entry = std::make_unique<RememberedExtension>();
        entry->extension = extension.toString();
        const std::lock_guard lock(m_mutex);
        collect(*entry);
        const UTTypeRecord *found = firstConforming(entry->records, conformingTo);
        size_t &count = entry->records.empty() ? m_unknown : m_known;
        const size_t limit = entry->records.empty() ? maxUnknown : maxRemembered - maxUnknown;
        if (count >= limit || extension.size() > maxExtension)
            return found;
        for (size_t i = 0; i < slotCount; ++i) {
            auto &slot = m_slots[(start + i) % slotCount];
            const auto *taken = slot.load(std::memory_order_relaxed);
            if (taken && taken->extension == extension)
                return found; // another thread was faster
            if (!taken) {
                ++count;
                slot.store(entry.get(), std::memory_order_release);
                m_entries.push_back(std::move(entry));
                break;
            }
        }
        return found;
    }

    void collect(RememberedExtension &entry)
    {
        for (const DeclaredExtension &declared : declaredExtensions()) {
            if (declared.extension.compare(entry.extension, Qt::CaseInsensitive) == 0)
                entry.records.push_back(declared.record);
        }
        const auto types = m_database.mimeTypesForFileName(QStringLiteral("a.") + entry.extension);
        for (const QMimeType &mime : types) {
            if (!mime.isDefault())
                entry.records.push_back(recordOfLocked(mime));
        }
    }

    const UTTypeRecord *recordOfLocked(const QMimeType &mime)
    {
        const QString name = mime.name();
        if (const auto found = m_byMime.constFind(name); found != m_byMime.cend())
            return *found;
        const QStringList aliases = mime.aliases();
        for (const UTTypeRecord *record : declaredTypes()) {
            if (!record->mimeType.isEmpty() &&
                (record->mimeType == name || aliases.contains(record->mimeType)))
                return *m_byMime.insert(name, record);
        }
        auto record = std::make_unique<DynamicRecord>();
        record->identifierText = QStringLiteral("dyn.") + name;
        record->mimeText = name;
        record->identifier = record->identifierText;
        record->mimeType = record->mimeText;
        record->parents = parentsByMimeName(name, mime.genericIconName(),
                                            mime.inherits(QStringLiteral("text/plain")),
                                            mime.inherits(QStringLiteral("application/xml")),
                                            mime.inherits(QStringLiteral("application/zip")));
        const UTTypeRecord *plain = record.get();
        m_dynamic.push_back(std::move(record));
        return *m_byMime.insert(name, plain);
    }

    QMimeDatabase m_database;
    std::mutex m_mutex;
    std::array<std::atomic<const RememberedExtension *>, slotCount> m_slots = {};
    std::vector<std::unique_ptr<RememberedExtension>> m_entries;
    std::vector<std::unique_ptr<DynamicRecord>> m_dynamic;
    QHash<QString, const UTTypeRecord *> m_byMime;
    size_t m_known = 0;
    size_t m_unknown = 0;
};

std::optional<UTType> UTType::fromFilenameExtension(QStringView filenameExtension,
                                                    UTType conformingTo)
{
    const auto *record = UTTypeRegistry::shared().find(filenameExtension, conformingTo.m_record);
    return record ? std::optional(UTType(record)) : std::nullopt;
}

std::optional<UTType> UTType::fromIdentifier(const QString &identifier)
{
    // The one identifier that got another name when the constants came.
    if (identifier.compare(kUTTypeZipArchive, Qt::CaseInsensitive) == 0)
        return zip;
    for (const UTTypeRecord *record : declaredTypes()) {
        if (record->identifier.compare(identifier, Qt::CaseInsensitive) == 0)
            return UTType(record);
    }
    if (identifier.startsWith(u"dyn."))
        return fromMIMEType(identifier.mid(4));
    return std::nullopt;
}

std::optional<UTType> UTType::fromMIMEType(const QString &mimeType)
{
    UTTypeRegistry &registry = UTTypeRegistry::shared();
    for (const UTTypeRecord *record : declaredTypes()) {
        if (!record->mimeType.isEmpty() && record->mimeType == mimeType)
            return UTType(record);
    }
    const QMimeType mime = registry.database().mimeTypeForName(mimeType);
    if (!mime.isValid() || mime.isDefault())
        return std::nullopt;
    return UTType(registry.recordOf(mime));
}

std::optional<UTType> UTType::fromFile(const QString &path)
{
    if (!isRegularFile(path))
        return std::nullopt;
    if (const auto known = fromFilenameExtension(QFileInfo(path).suffix()))
        return known;
    const auto file = RegularFile::open(path);
    if (!file)
        return data;
    UTTypeRegistry &registry = UTTypeRegistry::shared();
    const QMimeType mime = registry.database().mimeTypeForData(file->head(sniffedBytes));
    return mime.isDefault() ? data : UTType(registry.recordOf(mime));
}

QString UTType::identifier() const
{
    return textOf(m_record->identifier);
}

std::optional<QString> UTType::preferredMIMEType() const
{
    if (m_record->mimeType.isEmpty())
        return std::nullopt;
    return textOf(m_record->mimeType);
}

bool UTType::conforms(UTType to) const
{
    return m_record->conforms(to.m_record);
}

} // namespace zelkam
