#pragma once

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

} // namespace zelkam
