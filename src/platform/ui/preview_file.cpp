#include "platform/ui/preview_file.h"

#include "platform/foundation/file_name.h"
#include "platform/foundation/file_reader.h"
#include "platform/ui/ql_preview_controller.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <cerrno>
#include <sys/stat.h>

namespace zelkam {

namespace {

constexpr qint64 headSize = 16 * 1024;

/// Why a path does not lead to a file that can be read.
QString problemOf(const QString &path)
{
    struct stat status = {};
    const int error = ::stat(encodeFileName(path).constData(), &status) == 0 ? 0 : errno;
    if (error == 0 && !S_ISREG(status.st_mode))
        return QLPreviewController::tr("This is not a file that can be shown.");
    return error == 0 || error == EACCES
               ? QLPreviewController::tr("The file cannot be read.")
               : QLPreviewController::tr("The file is not there any more.");
}

} // namespace

PreviewFile openPreviewFile(const std::optional<URL> &url, QString &problem)
{
    PreviewFile file;
    file.path = url ? localPath(*url).value_or(QString()) : QString();
    file.name = QFileInfo(file.path).fileName();
    auto content = RegularFile::open(file.path);
    if (!content) {
        problem = problemOf(file.path);
        return file;
    }
    file.size = content->size();
    file.head = content->head(headSize);
    if (file.head.isEmpty() && file.size > 0) {
        problem = QLPreviewController::tr("The file cannot be read.");
        return file;
    }
    file.type = QMimeDatabase().mimeTypeForFileNameAndData(file.name, file.head);
    file.content = std::make_shared<const RegularFile>(std::move(*content));
    return file;
}

} // namespace zelkam
