// Files that appear whole or not at all.

#include "platform/foundation/file_creation.h"

#include "platform/foundation/file_copy.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/part_file.h"
#include "platform/foundation/sandbox_path.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace zelkam {

namespace {

/// Why no new file can have a name; empty when it can.
std::error_code obstacle(int folder, const QByteArray &name, OlderFile older)
{
    struct stat info = {};
    if (::fstatat(folder, name.constData(), &info, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? std::error_code() : lastError();
    if (S_ISDIR(info.st_mode))
        return std::make_error_code(std::errc::is_a_directory);
    return older == OlderFile::isReplaced ? std::error_code()
                                          : std::make_error_code(std::errc::file_exists);
}

} // namespace

std::error_code createFileIn(int folder, const QByteArray &name, mode_t permissions,
                             OlderFile older, const std::function<std::error_code(int fd)> &write,
                             bool flushes)
{
    // Looked at first, so that nothing large is written for nothing.
    if (const auto error = obstacle(folder, name, older))
        return error;
    PartFile file;
    auto error = file.open(folder, permissions);
    if (!error)
        error = write(file.descriptor());
    if (!error)
        error = file.finish(flushes);
    if (error)
        return error;
    return older == OlderFile::isReplaced ? file.takePlace(folder, name)
                                          : file.giveName(folder, name);
}

std::error_code FileManager::createFile(const QString &atPath, const QByteArray &contents)
{
    return createFile(atPath, Writer([&contents](int fd) {
                          return writeAll(fd, contents.constData(), contents.size());
                      }),
                      true);
}

std::error_code FileManager::createFile(const QString &atPath, const RegularFile &contentsOf)
{
    return createFile(
        atPath, Writer([&contentsOf](int fd) { return copyContents(contentsOf, fd); }), false);
}

std::error_code FileManager::createFile(const QString &atPath, const Writer &write, bool flushes)
{
    if (isOwnFolder(atPath))
        return std::make_error_code(std::errc::operation_not_permitted);
    std::error_code error;
    const auto item = resolveInContainer(atPath, error);
    if (!item)
        return error;
    if (atPath.endsWith(u'/'))
        return std::make_error_code(std::errc::is_a_directory);
    if (isPartName(item->name))
        return std::make_error_code(std::errc::operation_not_permitted);

    return createFileIn(item->folder.get(), item->name, S_IRUSR | S_IWUSR, OlderFile::isReplaced,
                        write, flushes);
}

} // namespace zelkam
