// Files that appear whole or not at all.

#include "platform/foundation/file_copy.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/sandbox_path.h"

#include <QRandomGenerator>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

std::error_code FileManager::createFile(const QString &atPath, const QByteArray &contents)
{
    return createFile(atPath, Writer([&contents](int fd) {
                          return writeAll(fd, contents.constData(), contents.size());
                      }));
}

std::error_code FileManager::createFile(const QString &atPath, const RegularFile &contentsOf)
{
    return createFile(atPath,
                      Writer([&contentsOf](int fd) { return copyContents(contentsOf, fd); }));
}

std::error_code FileManager::createFile(const QString &atPath, const Writer &write)
{
    if (isOwnFolder(atPath))
        return std::make_error_code(std::errc::operation_not_permitted);
    std::error_code error;
    const auto item = resolveInContainer(atPath, error);
    if (!item)
        return error;
    if (atPath.endsWith(u'/'))
        return std::make_error_code(std::errc::is_a_directory);

    const int folder = item->folder.get();
    const QByteArray beside =
        ".zelkam-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + ".part";
    FileDescriptor file(::openat(folder, beside.constData(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                 S_IRUSR | S_IWUSR));
    if (!file.isOpen())
        return lastError();
    error = write(file.get());
    // Some file systems tell only here that a write has failed.
    if (::close(file.release()) != 0 && !error)
        error = lastError();
    // The target is not followed if it is a link, and a folder there makes this fail.
    if (!error && ::renameat(folder, beside.constData(), folder, item->name.constData()) != 0)
        error = lastError();
    if (error)
        ::unlinkat(folder, beside.constData(), 0);
    return error;
}

} // namespace zelkam
