#include "platform/ui/file_saving.h"

#include "platform/foundation/file_copy.h"
#include "platform/foundation/file_name.h"

#include <QCoreApplication>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelkam {

namespace {

class Sentences
{
    Q_DECLARE_TR_FUNCTIONS(FileSaving)
};

std::error_code outcome(int result)
{
    return result < 0 ? std::error_code(errno, std::generic_category()) : std::error_code();
}

} // namespace

std::error_code saveCopy(const RegularFile &file, const QString &folder, const QString &name,
                         OlderFile older, const std::atomic<bool> &isCancelled)
{
    const FileDescriptor opened(
        ::open(encodeFileName(folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen())
        return outcome(-1);
    constexpr mode_t forEverybody = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    return createFileIn(opened.get(), encodeFileName(name), forEverybody, older, [&](int fd) {
        const auto error = copyContents(file, fd, &isCancelled);
        // A drive may be full, or be pulled out, after the last byte was taken.
        return error ? error : outcome(::fsync(fd));
    });
}

std::error_code makeFolder(const QString &in, const QString &name)
{
    return outcome(::mkdir(encodeFileName(in + u'/' + name).constData(), ACCESSPERMS));
}

QString nameProblem(const QString &name)
{
    if (name.trimmed().isEmpty())
        return Sentences::tr("Enter a name.");
    if (name.contains(u'/'))
        return Sentences::tr("A name cannot contain a slash.");
    if (name == u"." || name == u"..")
        return Sentences::tr("This name is not possible here.");
    return {};
}

QString savingProblem(std::error_code error)
{
    switch (error.value()) {
    case ENAMETOOLONG:
        return Sentences::tr("This name is too long.");
    case EINVAL: // what a drive's file system does not take, such as a colon
    case EILSEQ:
        return Sentences::tr("This name is not possible here.");
    case EEXIST:
    case EISDIR:
        return Sentences::tr("This name is taken already.");
    case EACCES:
    case EPERM:
    case EROFS:
        return Sentences::tr("You may not save in this folder.");
    case ENOENT:
    case ENOTDIR:
        return Sentences::tr("This folder is no longer there.");
    case ENOSPC:
    case EDQUOT:
        return Sentences::tr("There is not enough room left.");
    case EFBIG:
        return Sentences::tr("The file is too large for this drive.");
    default:
        return Sentences::tr("It could not be saved.");
    }
}

} // namespace zelkam
