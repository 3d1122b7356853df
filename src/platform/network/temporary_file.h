#pragma once

#include "platform/foundation/part_file.h"
#include "platform/network/url_error.h"

#include <QString>
#include <cstddef>
#include <optional>
#include <system_error>

namespace zelkam {

/// A new file in the temporary directory, readable by its owner only. It gets a name, which nobody
/// can foresee, when it is whole. It is removed with its owner, unless it has been moved away by
/// then.
///
/// The first error sticks: whatever is written later, close() still reports it.
class TemporaryFile
{
public:
    /// Makes the file. False when it failed; error() says why.
    bool open();

    /// Appends all the bytes. False when not all of them were taken.
    bool write(const char *data, std::size_t size);

    /// Ends the writing and gives the file its name. A failed write may be told only here.
    bool close();

    const std::optional<URLError> &error() const { return m_error; }
    /// Empty before the end of the writing.
    QString path() const;

private:
    bool fail(URLError::Code code, std::error_code error);

    QString m_folder;
    PartFile m_file;
    std::optional<URLError> m_error;
};

} // namespace zelkam
