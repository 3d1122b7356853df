// What a page gets for the files that were picked.

#include "plugin/zelkam_mobile_contents_plugin.h"

#include "download/download_folder.h"
#include "host/zlog.h"
#include "mime/mime_type.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "platform/foundation/percent_encoding.h"
#include "plugin/data_url.h"
#include "plugin/picked_file_name.h"

#include <QDir>
#include <QFile>
#include <climits>
#include <unistd.h>

namespace zelkam {

namespace {

/// The temporary directory without a slash at its end. Without one, nothing here can be done.
QString standardizedTemporaryDirectory()
{
    const QString directory = QDir::cleanPath(NSTemporaryDirectory());
    if (!QDir(directory).exists())
        qFatal("The temporary directory is unavailable.");
    return directory;
}

/// The most bytes that a name may have in a folder.
qsizetype maxNameSize(const QString &directory)
{
    const long size = ::pathconf(QFile::encodeName(directory).constData(), _PC_NAME_MAX);
    return size > 0 ? size : NAME_MAX;
}

} // namespace

std::optional<URL> ZelkamMobileContentsPlugin::copyPickedFile(const URL &url) const
{
    const QString directory = standardizedTemporaryDirectory();
    const QString path =
        directory + u'/' + nameOfCopy(encodedFileName(url), maxNameSize(directory));
    const auto file = openContentsOf(url);
    if (!file) {
        ZLog::debug(QStringLiteral("picked file cannot be read: ") + url.absoluteString());
        return std::nullopt;
    }
    downloadFolder(); // a file of that name must not take its place
    if (const auto error = FileManager::defaultManager().createFile(path, *file)) {
        ZLog::debug(QStringLiteral("picked file cannot be copied: ") +
                    QString::fromStdString(error.message()));
        return std::nullopt;
    }
    return URLTransformer(URL::fromBarePath(path));
}

std::optional<QString> ZelkamMobileContentsPlugin::localFilePath(const URL &url) const
{
    const auto address = copyPickedFile(url);
    return address ? std::optional(address->absoluteString()) : std::nullopt;
}

std::optional<QByteArray> ZelkamMobileContentsPlugin::localFileBase64String(const URL &url) const
{
    const auto address = copyPickedFile(url);
    // Read from the address and not from the picked file: the page gets what it could load there.
    const auto copy = address ? openContentsOf(*address) : std::nullopt;
    return copy ? dataUrl(mimeType(address->absoluteString()), *copy) : std::nullopt;
}

QVariantMap ZelkamMobileContentsPlugin::pickedFileRecord(const URL &url,
                                                         const std::optional<QByteArray> &data)
{
    QVariantMap record;
    if (data)
        record.insert(QStringLiteral("data"), *data);
    if (const auto name = removingPercentEncoding(encodedFileName(url)))
        record.insert(QStringLiteral("fileName"), *name);
    return record;
}

void ZelkamMobileContentsPlugin::documentPicker(UIDocumentPickerViewController *,
                                                const QList<URL> &didPickDocumentsAt)
{
    if (didPickDocumentsAt.isEmpty())
        qFatal("A document picker has picked nothing.");
    pickerAnswers();
    const bool asUrl = m_filePickerReturnType == FilePickerReturnType::url;
    if (didPickDocumentsAt.size() == 1) {
        const URL &url = didPickDocumentsAt.first();
        if (asUrl) {
            const auto address = localFilePath(url);
            replyPicked(address ? QVariant(QVariantMap{{QStringLiteral("fileUri"), *address}})
                                : QVariant());
        } else {
            const auto data = localFileBase64String(url);
            replyPicked(data ? QVariant(pickedFileRecord(url, data)) : QVariant());
        }
        return;
    }
    QVariantList results;
    for (const URL &url : didPickDocumentsAt) {
        // Of the addresses a failed one is left out; of the records only its content is.
        if (!asUrl)
            results.append(pickedFileRecord(url, localFileBase64String(url)));
        else if (const auto address = localFilePath(url))
            results.append(*address);
    }
    replyPicked(results.isEmpty() ? QVariant() : QVariant(results));
}

void ZelkamMobileContentsPlugin::replyPicked(const QVariant &data) const
{
    const auto call = currentCallBack();
    if (!call)
        return;
    if (data.isValid())
        call->success(data, false);
    else
        call->error(CommandStatus::FILE_NOT_FOUND, false);
}

void ZelkamMobileContentsPlugin::documentPickerWasCancelled(UIDocumentPickerViewController *)
{
    pickerAnswers();
    if (const auto call = currentCallBack())
        call->success(false);
}

} // namespace zelkam
