#pragma once

#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_document_picker_entry.h"

#include <QHash>
#include <optional>

namespace zelkam {

/// Tells what the items of one open folder are. Opens none of them, so that a pipe or a device
/// cannot hold it up. For one thread.
class DocumentEntryReader
{
public:
    /// @param folder  an open folder, the caller's
    DocumentEntryReader(int folder, QList<UTType> allowedTypes);

    /// The item of a name, as the system gives it; nothing for "." and "..".
    std::optional<DocumentEntry> read(const char *name);

private:
    DocumentChoice choiceByName(const QString &name);
    bool isAllowed(UTType type) const;

    int m_folder;
    QList<UTType> m_allowedTypes;
    QHash<QString, DocumentChoice> m_choices; ///< by extension
};

} // namespace zelkam
