#include "platform/network/temporary_file.h"

#include "platform/foundation/file_manager.h"

#include <QFile>
#include <QRandomGenerator>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace zelkam {

namespace {

QString unforeseenName()
{
    quint64 words[2];
    QRandomGenerator::system()->fillRange(words);
    return QStringLiteral("transfer-%1%2.tmp")
        .arg(words[0], 16, 16, QLatin1Char('0'))
        .arg(words[1], 16, 16, QLatin1Char('0'));
}

} // namespace

TemporaryFile::~TemporaryFile()
{
    if (!m_path.isEmpty())
        ::unlink(QFile::encodeName(m_path).constData());
}

bool TemporaryFile::open()
{
    const QString path = NSTemporaryDirectory() + unforeseenName();
    const int fd = ::open(QFile::encodeName(path).constData(),
                          O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0)
        return fail(URLError::Code::cannotCreateFile);
    m_file = FileDescriptor(fd);
    m_path = path;
    return true;
}

bool TemporaryFile::write(const char *data, std::size_t size)
{
    while (size > 0 && !m_error) {
        const ssize_t written = ::write(m_file.get(), data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return fail(URLError::Code::cannotWriteToFile);
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return !m_error;
}

bool TemporaryFile::close()
{
    if (m_file.isOpen() && ::close(m_file.release()) != 0 && errno != EINTR)
        return fail(URLError::Code::cannotWriteToFile);
    return !m_error;
}

bool TemporaryFile::fail(URLError::Code code)
{
    if (errno == ENOSPC || errno == EDQUOT)
        code = URLError::Code::diskFull;
    if (!m_error)
        m_error = URLError(code, QString::fromStdString(lastError().message()));
    return false;
}

} // namespace zelkam
