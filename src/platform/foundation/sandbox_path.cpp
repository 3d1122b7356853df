#include "platform/foundation/sandbox_path.h"

#include "platform/foundation/file_manager.h"

#include <QFile>
#include <QStringList>
#include <cerrno>
#include <fcntl.h>

namespace zelkam {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

std::optional<SandboxPath> resolveInContainer(const QString &path, std::error_code &error)
{
    const auto refuse = [&error]() -> std::optional<SandboxPath> {
        error = std::make_error_code(std::errc::operation_not_permitted);
        return std::nullopt;
    };
    const QString container = NSTemporaryDirectory();
    // The container itself may be named without its last slash.
    const QString full = path + u'/' == container ? container : path;
    if (!full.startsWith(container) || full.contains(QChar(u'\0')))
        return refuse();

    QStringList components = full.mid(container.size()).split(u'/', Qt::SkipEmptyParts);
    components.removeAll(QStringLiteral("."));
    if (components.contains(QStringLiteral("..")))
        return refuse();

    SandboxPath result;
    if (!components.isEmpty())
        result.name = QFile::encodeName(components.takeLast());
    result.folder = FileDescriptor(
        ::open(QFile::encodeName(container).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (const QString &component : std::as_const(components)) {
        if (!result.folder.isOpen())
            break;
        result.folder =
            FileDescriptor(::openat(result.folder.get(), QFile::encodeName(component).constData(),
                                    O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    }
    if (!result.folder.isOpen()) {
        if (errno == ELOOP || errno == ENOTDIR)
            return refuse();
        error = lastError();
        return std::nullopt;
    }
    error.clear();
    return result;
}

} // namespace zelkam
