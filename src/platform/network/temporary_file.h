#pragma once

#include "platform/foundation/sandbox_path.h"
#include "platform/network/url_error.h"

#include <QString>
#include <cstddef>
#include <optional>

namespace zelkam {

/// A new file in the temporary directory, readable by its owner only, under a name that nobody
/// can foresee. It is removed with its owner, unless it has been moved away by then.
///
/// The first error sticks: whatever is written later, close() still reports it.
class TemporaryFile
{
public:
    TemporaryFile() = default;
    ~TemporaryFile();
    Q_DISABLE_COPY_MOVE(TemporaryFile)

    /// Makes the file. False when it failed; error() says why.
    bool open();
    bool isOpen() const { return m_file.isOpen(); }

    /// Appends all the bytes. False when not all of them were taken.
    bool write(const char *data, std::size_t size);

    /// Ends the writing. Some file systems tell a failed write only here.
    bool close();

    const std::optional<URLError> &error() const { return m_error; }
    const QString &path() const { return m_path; }

private:
    bool fail(URLError::Code code);

    FileDescriptor m_file;
    QString m_path;
    std::optional<URLError> m_error;
};

} // namespace zelkam
