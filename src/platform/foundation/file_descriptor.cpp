#include "platform/foundation/file_descriptor.h"

#include <unistd.h>
#include <utility>

namespace zelkam {

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    if (this != &other) {
        if (isOpen())
            ::close(m_fd);
        m_fd = other.release();
    }
    return *this;
}

FileDescriptor::~FileDescriptor()
{
    if (isOpen())
        ::close(m_fd);
}

int FileDescriptor::release()
{
    return std::exchange(m_fd, -1);
}

} // namespace zelkam
