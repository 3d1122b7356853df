// Files that appear whole or not at all.

#include "platform/foundation/file_creation.h"

#include "platform/foundation/file_copy.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_renaming.h"
#include "platform/foundation/sandbox_path.h"

#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

bool isFolder(int folder, const QByteArray &name)
{
    struct stat info = {};
    return ::fstatat(folder, name.constData(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(info.st_mode);
}

/// Puts a new file under its name. An older file or link there is replaced and not followed; a
/// folder there makes this fail.
///
/// The two change places before the older one goes: ext4 begins to write a file to the disk when it
/// is renamed over another, which takes longer than copying it. There is always one whole file.
std::error_code putInPlace(int folder, const QByteArray &from, const QByteArray &name)
{
    const auto rename = [&](unsigned flags) {
        return ::renameat2(folder, from.constData(), folder, name.constData(), flags) == 0;
    };
    if (rename(RENAME_NOREPLACE))
        return {};
    if (errno == EEXIST && !isFolder(folder, name) && rename(RENAME_EXCHANGE)) {
        if (::unlinkat(folder, from.constData(), 0) == 0)
            return {};
        rename(RENAME_EXCHANGE); // a folder has come in between
    }
    // Some file systems know neither way.
    return rename(0) ? std::error_code() : lastError();
}

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
                             OlderFile older, const std::function<std::error_code(int fd)> &write)
{
    // Looked at first, so that nothing large is written for nothing.
    std::error_code error = obstacle(folder, name, older);
    if (error)
        return error;
    const QByteArray beside =
        ".zelkam-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + ".part";
    FileDescriptor file(::openat(folder, beside.constData(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                 permissions));
    if (!file.isOpen())
        return lastError();
    error = write(file.get());
    // Some file systems tell only here that a write has failed.
    if (::close(file.release()) != 0 && !error)
        error = lastError();
    if (!error) {
        error = older == OlderFile::isReplaced
                    ? putInPlace(folder, beside, name)
                    : renameWithoutReplacing(folder, beside.constData(), folder, name.constData());
    }
    if (error)
        ::unlinkat(folder, beside.constData(), 0);
    return error;
}

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

    return createFileIn(item->folder.get(), item->name, S_IRUSR | S_IWUSR, OlderFile::isReplaced,
                        write);
}

} // namespace zelkam
