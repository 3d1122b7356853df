#pragma once

#include "platform/foundation/file_descriptor.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace zelkam {

/// Whether a path leads to a regular file, through links. Asks the file system, opens nothing.
bool isRegularFile(const QString &path);

/// A regular file that is open for reading. What could keep a reader waiting for ever is none: a
/// pipe or a device is not opened, and what others append after the opening does not belong to it.
class RegularFile
{
public:
    /// Nothing when there is no regular file at the path, or it may not be read.
    static std::optional<RegularFile> open(const QString &path);

    /// The bytes that there were when it was opened. A file that some system makes up as it is
    /// read (below /proc) has 0 and content nevertheless.
    qint64 size() const { return m_size; }

    /// How many bytes may be read from it in all.
    qint64 limit() const;

    /// Reads on from where the last read ended. Gives the count, 0 at the end, -1 on a failure.
    qint64 read(char *data, qint64 maxSize) const;

    /// Reads from a place in the file. The count, 0 at the end, -1 on a failure. Leaves the place
    /// of read() where it is; several threads may do this at once.
    qint64 readAt(qint64 offset, char *data, qint64 maxSize) const;

    /// Reads all that is left of it, up to the limit. Nothing when a read fails.
    std::optional<QByteArray> readAll() const;

    /// The first bytes. Leaves the place of reading where it is.
    QByteArray head(qsizetype maxSize) const;

    int descriptor() const { return m_file.get(); }

private:
    RegularFile(FileDescriptor file, qint64 size) : m_file(std::move(file)), m_size(size) {}

    FileDescriptor m_file;
    qint64 m_size;
};

} // namespace zelkam
