// From the temporary file to the file in the Download folder. On the session's queue.

#include "download/download_folder.h"
#include "download/zelkam_mobile_file_download_util.h"

#include "host/zlog.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/images/decoder.h"
#include "platform/images/picture.h"
#include "platform/images/picture_kind.h"
#include "platform/images/ui_image.h"
#include "platform/network/url_response.h"
#include "platform/photos/saved_photos_album.h"

#include <QLocale>
#include <chrono>

namespace zelkam {

namespace {

/// The time in milliseconds since 1970, with a fraction in any case: a name for what has none.
QString timeStamp()
{
    const std::chrono::duration<double> seconds =
        std::chrono::system_clock::now().time_since_epoch();
    QString text = QString::number(seconds.count() * 1000.0, 'f', QLocale::FloatingPointShortest);
    if (!text.contains(u'.'))
        text += QStringLiteral(".0");
    return text;
}

QString lastPathComponent(const QString &path)
{
    return path.section(u'/', -1, -1, QString::SectionSkipEmpty);
}

/// The server chose how long the file is: only what begins as an image and has the size of one
/// is read into memory.
std::optional<UIImage> imageAt(const URL &url)
{
    const auto file = openContentsOf(url);
    if (!file || file->size() > largestPictureFile || rasterFormat(file->head(64)).isEmpty())
        return std::nullopt;
    return UIImage::fromQImage(decode(DecodeWish(), *file).image);
}

} // namespace

void ZelkamMobileFileDownloadUtil::saveFile(const URL &url,
                                            const std::shared_ptr<const URLResponse> &response)
{
    ZLog::debug(QStringLiteral("saveFile(url:_:)"));
    FileManager &files = FileManager::defaultManager();
    const QString folder = downloadFolder();
    // Two downloads may find the folder missing at once; the one that comes second has it too.
    if (!files.fileExists(folder) && files.createDirectory(folder) && !files.fileExists(folder)) {
        replyGetFailure();
        return;
    }
    const QString target = targetPath(folder, *response);
    // An earlier file of that name goes first, even if the answer then turns out to be no file.
    if (files.fileExists(target) && files.removeItem(target)) {
        replyGetFailure();
        return;
    }
    if (!checkResponse(*response))
        return;
    saveResponseCookies(url, *response);
    ZLog::debug(QStringLiteral("saveFile(url:_:) - saved file: ") + target);
    if (files.moveItem(url.path(), target)) {
        replyGetFailure();
        return;
    }
    if (!saveToAlbum(target)) {
        // The second of two replies: the album has told its own failure already.
        replyError(CommandStatus::INVALID_PARAM);
        return;
    }
    hideActivityIndicator();
    DispatchQueue::main().async([self = shared_from_this(), target] {
        const QString name = self->m_fileName.value_or(lastPathComponent(target));
        self->showNotify(name);
        self->showPreViewFile(name, target);
    });
}

QString ZelkamMobileFileDownloadUtil::targetPath(const QString &folder,
                                                 const URLResponse &response) const
{
    QString name;
    if (m_fileName)
        name = *m_fileName;
    else
        name = response.suggestedFilename().value_or(timeStamp());
    // A name that cannot be decoded makes the empty path, which the file service refuses.
    const auto decoded = removingPercentEncoding(name);
    return decoded ? folder + u'/' + *decoded : QString();
}

bool ZelkamMobileFileDownloadUtil::saveToAlbum(const QString &path) const
{
    if (!m_saveAlbum)
        return true;
    // The bare path is the URL, with no scheme put before it; the file reader takes it so.
    const auto url = URL::fromString(path);
    const auto image = url ? imageAt(*url) : std::nullopt;
    if (!image) {
        replyError(CommandStatus::INVALID_PARAM);
        return false;
    }
    UIImageWriteToSavedPhotosAlbum(*image);
    return true;
}

} // namespace zelkam
