#pragma once

#include "platform/foundation/file_descriptor.h"

#include <QByteArrayView>
#include <memory>
#include <optional>

namespace zelkam {

/// A new file in memory, without a name, that holds these bytes and can never be changed again
/// (memfd_create(2), sealed). Not open where there is no memory for it. Any thread.
FileDescriptor sealedMemoryFile(QByteArrayView bytes);

/// The bytes of an open file, as the kernel reads them in when they are looked at. Nothing when
/// the file cannot be mapped; an empty file has no bytes and a mapping nevertheless.
///
/// Who looks at what has been cut off meanwhile gets a SIGBUS: for files of others only in a
/// process that may end, elsewhere for sealed files only.
///
/// @param size  in bytes
class FileMapping
{
public:
    static std::optional<FileMapping> map(int descriptor, qint64 size);

    QByteArrayView bytes() const { return {m_bytes.get(), m_size}; }
    /// Keeps the bytes where they are.
    std::shared_ptr<const char> owner() const { return m_bytes; }

private:
    FileMapping(std::shared_ptr<const char> bytes, qint64 size)
        : m_bytes(std::move(bytes)), m_size(size)
    {
    }
    std::shared_ptr<const char> m_bytes;
    qint64 m_size;
};

/// Whether nobody can change or cut a file any more, and it has this size.
bool isSealed(int descriptor, qint64 size);

} // namespace zelkam
