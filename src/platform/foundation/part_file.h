#pragma once

#include "platform/foundation/file_descriptor.h"

#include <QByteArray>
#include <QString>
#include <sys/types.h>
#include <system_error>

namespace zelkam {

/// A new file that gets its name when it is whole: whoever looks sees all of it or nothing.
///
/// Where the file system can (O_TMPFILE), it has no name until then, and the system removes it with
/// a process that dies. Elsewhere, and for the moment in which it takes another file's place, it
/// has a name of its own (".zelkam-" and 32 digits and ".part"), and is locked as long as this
/// process lives, so that removeStaleParts() can tell.
///
/// One thread at a time.
class PartFile
{
public:
    PartFile() = default;
    ~PartFile(); ///< removes the file, unless it was named or moved away
    Q_DISABLE_COPY_MOVE(PartFile)

    /// Makes the file in a folder on the file system where it is to have its name. From the first
    /// call on the signal that tells of a limit on the size of files (SIGXFSZ), which ends a
    /// program, is ignored unless somebody handles it: the write fails instead.
    /// @param permissions  less those that the process's mask takes away
    std::error_code open(int folder, mode_t permissions);
    /// The same in the folder of this path, for its owner only.
    std::error_code open(const QString &folder);
    int descriptor() const { return m_file.get(); }

    /// Ends the writing: tells of a write that failed late.
    /// @param flushes  whether all of it is brought to the disk now, see setFlushesFiles()
    std::error_code finish(bool flushes);

    /// Gives it its name in an open folder. What has that name already is never replaced: that is
    /// std::errc::file_exists.
    std::error_code giveName(int folder, const QByteArray &name);

    /// The same, in the place of a file or a link that has the name. A folder makes this fail.
    std::error_code takePlace(int folder, const QByteArray &name);

    /// Gives it the name of its own, for somebody else to move it away.
    std::error_code giveOwnName();
    const QByteArray &ownName() const { return m_name; } ///< in its folder; empty without one

private:
    std::error_code openNamed(mode_t permissions);

    FileDescriptor m_folder;
    FileDescriptor m_file;
    QByteArray m_name; ///< empty while it has none of its own
};

/// Removes what processes that are gone have left in a folder. The files of running ones, those of
/// other users and all others stay.
void removeStaleParts(const QString &folder);

/// Whether a name is one that a part may have.
bool isPartName(const QByteArray &name);

} // namespace zelkam
