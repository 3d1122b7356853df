#include "platform/network/temporary_file.h"

#include "platform/foundation/file_copy.h"
#include "platform/foundation/file_manager.h"

#include <QFile>
#include <cerrno>

namespace zelkam {

bool TemporaryFile::open()
{
    m_folder = NSTemporaryDirectory();
    const auto error = m_file.open(m_folder);
    return !error || fail(URLError::Code::cannotCreateFile, error);
}

bool TemporaryFile::write(const char *data, std::size_t size)
{
    if (m_error)
        return false;
    const auto error = writeAll(m_file.descriptor(), data, static_cast<qint64>(size));
    return !error || fail(URLError::Code::cannotWriteToFile, error);
}

bool TemporaryFile::close()
{
    if (m_error)
        return false;
    auto error = m_file.finish(true);
    if (!error)
        error = m_file.giveOwnName();
    return !error || fail(URLError::Code::cannotWriteToFile, error);
}

QString TemporaryFile::path() const
{
    const QByteArray &name = m_file.ownName();
    return name.isEmpty() ? QString() : m_folder + QFile::decodeName(name);
}

bool TemporaryFile::fail(URLError::Code code, std::error_code error)
{
    if (error == std::errc::no_space_on_device || error.value() == EDQUOT)
        code = URLError::Code::diskFull;
    m_error = URLError(code, QString::fromStdString(error.message()));
    return false;
}

} // namespace zelkam
