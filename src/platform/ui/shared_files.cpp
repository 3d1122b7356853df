#include "platform/ui/shared_files.h"

#include "platform/foundation/file_reader.h"
#include "platform/ui/preview_file.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

namespace zelkam {

std::optional<QStringList> sharedFilePaths(const QList<URL> &items)
{
    QStringList paths;
    for (const URL &item : items) {
        const auto path = localPath(item);
        if (!path || !QFileInfo(*path).isFile())
            return std::nullopt;
        paths.append(*path);
    }
    if (paths.isEmpty())
        return std::nullopt;
    return paths;
}

std::unique_ptr<QMimeData> fileMimeData(const QStringList &paths)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> addresses;
    QByteArray gnome = "copy";
    for (const QString &path : paths) {
        addresses.append(QUrl::fromLocalFile(path));
        gnome += '\n' + addresses.last().toEncoded();
    }
    data->setUrls(addresses);
    data->setText(paths.join(u'\n'));
    data->setData(QStringLiteral("x-special/gnome-copied-files"), gnome);
    return data;
}

QString copyFile(const QString &from, const QString &to)
{
    const PreviewFile source = openPreviewFile(URL::fromFilePath(from));
    if (!source.device)
        return QCoreApplication::translate("UIActivityViewController", "The file cannot be read.");
    QSaveFile target(to);
    const auto failure = [&target] {
        return QCoreApplication::translate("UIActivityViewController",
                                           "The copy could not be saved: %1")
            .arg(target.errorString());
    };
    if (!target.open(QIODevice::WriteOnly))
        return failure();
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    while (true) {
        const qint64 count = source.device->read(buffer.data(), buffer.size());
        if (count < 0)
            return QCoreApplication::translate("UIActivityViewController",
                                               "The file cannot be read.");
        if (count == 0)
            break;
        if (target.write(buffer.constData(), count) != count)
            return failure();
    }
    return target.commit() ? QString() : failure();
}

} // namespace zelkam
