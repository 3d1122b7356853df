#include "platform/ui/preview_file.h"

#include "platform/foundation/file_name.h"
#include "platform/foundation/file_reader.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <cerrno>
#include <sys/stat.h>

namespace zelkam {

namespace {

constexpr qint64 headSize = 16 * 1024;

/// Why a path does not lead to a file that can be read.
PreviewFile::State stateOf(const QString &path)
{
    struct stat status = {};
    if (::stat(encodeFileName(path).constData(), &status) == 0)
        return S_ISREG(status.st_mode) ? PreviewFile::State::denied : PreviewFile::State::notAFile;
    return errno == EACCES ? PreviewFile::State::denied : PreviewFile::State::missing;
}

} // namespace

PreviewFile openPreviewFile(const std::optional<URL> &url)
{
    PreviewFile file;
    const auto path = url ? localPath(*url) : std::nullopt;
    if (!path)
        return file;
    file.path = *path;
    file.name = QFileInfo(*path).fileName();
    auto content = RegularFile::open(*path);
    if (!content) {
        file.state = stateOf(*path);
        return file;
    }
    file.size = content->size();
    file.head = content->head(headSize);
    if (file.head.isEmpty() && file.size > 0) {
        file.state = PreviewFile::State::denied;
        return file;
    }
    file.type = QMimeDatabase().mimeTypeForFileNameAndData(file.name, file.head);
    file.content = std::make_shared<const RegularFile>(std::move(*content));
    file.state = PreviewFile::State::readable;
    return file;
}

} // namespace zelkam
