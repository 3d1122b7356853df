#include "platform/foundation/file_renaming.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

std::error_code renameWithoutReplacing(int fromFolder, const char *from, int toFolder,
                                       const char *to)
{
    const auto outcome = [](int result) {
        return result == 0 ? std::error_code() : std::error_code(errno, std::generic_category());
    };
    const auto renamed = outcome(::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE));
    // Network file systems mostly do not know the flag; a link replaces nothing there either.
    if (renamed != std::errc::invalid_argument && renamed != std::errc::function_not_supported)
        return renamed;
    const auto linked = outcome(::linkat(fromFolder, from, toFolder, to, 0));
    if (!linked)
        return outcome(::unlinkat(fromFolder, from, 0));
    if (linked == std::errc::file_exists)
        return linked;
    struct stat info = {};
    if (::fstatat(toFolder, to, &info, AT_SYMLINK_NOFOLLOW) == 0)
        return std::make_error_code(std::errc::file_exists);
    return outcome(::renameat(fromFolder, from, toFolder, to));
}

} // namespace zelkam
