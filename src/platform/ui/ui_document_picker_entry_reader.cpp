#include "platform/ui/ui_document_picker_entry_reader.h"

#include "platform/foundation/file_name.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

DocumentEntryReader::DocumentEntryReader(int folder, QList<UTType> allowedTypes)
    : m_folder(folder), m_allowedTypes(std::move(allowedTypes))
{
}

std::optional<DocumentEntry> DocumentEntryReader::read(const char *name)
{
    if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0)
        return std::nullopt;
    DocumentEntry entry;
    entry.name = decodeFileName(name);
    entry.shown = displayName(entry.name);
    entry.folded = foldedForSearch(visibleName(entry.name));
    entry.isHidden = name[0] == '.';
    struct stat info = {};
    if (::fstatat(m_folder, name, &info, 0) != 0) {
        entry.choice = DocumentChoice::notAFile;
        return entry;
    }
    entry.size = info.st_size;
    entry.modified = info.st_mtim.tv_sec;
    entry.isFolder = S_ISDIR(info.st_mode);
    const int need = entry.isFolder ? R_OK | X_OK : R_OK;
    if (!entry.isFolder && !S_ISREG(info.st_mode))
        entry.choice = DocumentChoice::notAFile;
    else if (::faccessat(m_folder, name, need, AT_EACCESS) != 0)
        entry.choice = DocumentChoice::unreadable;
    else
        entry.choice = entry.isFolder ? DocumentChoice::allowed : choiceByName(entry.name);
    return entry;
}

DocumentChoice DocumentEntryReader::choiceByName(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString extension = dot < 0 ? QString() : name.mid(dot + 1);
    const auto known = m_choices.constFind(extension);
    if (known != m_choices.cend())
        return *known;
    const auto type = UTType::fromFilenameExtension(extension);
    DocumentChoice choice = DocumentChoice::unknown;
    // Whatever the content says, it is data.
    if (isAllowed(type.value_or(UTType::data)))
        choice = DocumentChoice::allowed;
    else if (type)
        choice = DocumentChoice::wrongType;
    return *m_choices.insert(extension, choice);
}

bool DocumentEntryReader::isAllowed(UTType type) const
{
    return std::any_of(m_allowedTypes.cbegin(), m_allowedTypes.cend(),
                       [type](UTType allowed) { return type.conforms(allowed); });
}

QString foldedForSearch(const QString &text)
{
    const bool isPlain =
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
    if (isPlain)
        return text.toLower();
    QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    folded.removeIf([](QChar c) { return c.isMark(); });
    return folded;
}

} // namespace zelkam
