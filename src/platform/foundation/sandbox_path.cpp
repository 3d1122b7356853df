#include "platform/foundation/sandbox_path.h"

#include "platform/foundation/file_manager.h"

#include <QFile>
#include <QStringList>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace zelkam {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

std::optional<SandboxPath> resolveInContainer(const QString &path, std::error_code &error)
{
    const QString container = NSTemporaryDirectory();
    // The container itself may be named without its last slash.
    const QString full = path + u'/' == container ? container : path;
    if (!full.startsWith(container)) {
        error = std::make_error_code(std::errc::operation_not_permitted);
        return std::nullopt;
    }
    return resolveBelow(container, full.mid(container.size()), error);
}

std::optional<SandboxPath> resolveBelow(const QString &folder, const QString &relativePath,
                                        std::error_code &error)
{
    const auto refuse = [&error]() -> std::optional<SandboxPath> {
        error = std::make_error_code(std::errc::operation_not_permitted);
        return std::nullopt;
    };
    QStringList components = relativePath.split(u'/', Qt::SkipEmptyParts);
    components.removeAll(QStringLiteral("."));
    if (components.contains(QStringLiteral("..")) || relativePath.contains(QChar(u'\0')))
        return refuse();

    SandboxPath result;
    if (!components.isEmpty())
        result.name = QFile::encodeName(components.takeLast());
    result.folder = FileDescriptor(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
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

std::unique_ptr<QFile> openRegularFile(const SandboxPath &place)
{
    // Without O_NONBLOCK, opening a pipe would wait for somebody to write to it.
    FileDescriptor descriptor(::openat(place.folder.get(), place.name.constData(),
                                       O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat info = {};
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &info) != 0 || !S_ISREG(info.st_mode))
        return nullptr;
    auto file = std::make_unique<QFile>();
    if (!file->open(descriptor.get(), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return nullptr;
    descriptor.release();
    return file;
}

} // namespace zelkam
