#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <system_error>

namespace zelkam {

/// An open file descriptor, closed when its owner goes.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    FileDescriptor(FileDescriptor &&other) noexcept : m_fd(other.release()) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    ~FileDescriptor();

    int get() const { return m_fd; }
    bool isOpen() const { return m_fd >= 0; }
    int release();

private:
    int m_fd = -1;
};

/// A path of the container, taken apart: the open folder that holds the item, and its name there.
struct SandboxPath
{
    FileDescriptor folder;
    QByteArray name; ///< one component; empty for the container itself
};

/// Walks from the container down to the folder of the item, through real folders only.
/// Sets the error and returns nothing when the path leaves the container, holds "..", passes
/// through a symbolic link, or a folder on the way is missing.
std::optional<SandboxPath> resolveInContainer(const QString &path, std::error_code &error);

/// The last system error as a code.
std::error_code lastError();

} // namespace zelkam
