#pragma once

#include "platform/foundation/regular_file.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <functional>
#include <mutex>
#include <system_error>

namespace zelkam {

/// The application's temporary directory, absolute, with a "/" at its end. It is the container:
/// the only place where FileManager changes anything.
QString NSTemporaryDirectory();

/// Chooses the temporary directory, made with its parents when it is not there. Fails with the
/// system's code, and then changes nothing. Call it at the start, before any file service is used:
/// what processes that died have left unfinished in it is removed. Without a call it is a folder of
/// the application's own in the system's temporary directory.
std::error_code setTemporaryDirectory(const QString &path);

/// Whether a file that is downloaded, or made from bytes, is brought to the disk before it gets its
/// name, so that a power cut leaves all of it or nothing. It is, unless a host chooses otherwise:
/// on an ext4 disk a file of 4 KiB takes some four milliseconds more, and a large one waits for the
/// disk. Without it, what was made in the last half minute may be there and empty after a power
/// cut. From any thread.
void setFlushesFiles(bool flushes);

/// The file service. It takes absolute paths, as the platform's does, and acts only inside the
/// application's container: a path outside it, one that holds "..", or one that passes through
/// a symbolic link is refused with std::errc::operation_not_permitted, whatever lies there.
/// Every step is taken relative to an open folder, so that a link put in place meanwhile
/// cannot lead an operation out either.
///
/// All operations may be called from any thread. They return an empty code when they succeeded.
class FileManager
{
public:
    static FileManager &defaultManager();

    /// Names a folder that the application itself lives by: it may hold items that are removed
    /// and replaced, but is itself never removed, replaced or moved. The temporary directory is
    /// such a folder from the start.
    void addOwnFolder(const QString &path);

    /// Whether an item exists at the path; a symbolic link counts as itself. False where the
    /// path is refused.
    bool fileExists(const QString &atPath) const;

    /// Makes one folder. Fails when something exists there or the folder above is missing.
    std::error_code createDirectory(const QString &atPath);

    /// Removes a file, a symbolic link (not what it points to), or a folder with all it holds.
    std::error_code removeItem(const QString &atPath);

    /// Moves an item by renaming it: it appears whole or not at all. Fails when something exists
    /// at the target; nothing is ever replaced.
    std::error_code moveItem(const QString &atPath, const QString &toPath);

    /// Makes a file with the contents, or replaces the file or the link that is there. It appears
    /// whole or not at all: on any failure, what was there stays as it was. A folder is never
    /// replaced, and where the application has a folder of its own no file is made.
    std::error_code createFile(const QString &atPath, const QByteArray &contents);

    /// The same with the contents of an open file from its start. The system copies them, so that
    /// memory does not grow with the file, shares what it can share and keeps holes. It is not
    /// brought to the disk, as the file that it is copied from is there.
    std::error_code createFile(const QString &atPath, const RegularFile &contentsOf);

private:
    using Writer = std::function<std::error_code(int fd)>;

    FileManager() = default;
    std::error_code createFile(const QString &atPath, const Writer &write, bool flushes);
    bool isOwnFolder(const QString &path) const;

    mutable std::mutex m_mutex;
    QSet<QString> m_ownFolders;
};

} // namespace zelkam
