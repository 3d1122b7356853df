#include "platform/ui/shared_files.h"

#include "platform/foundation/file_reader.h"

#include <QFileInfo>
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

} // namespace zelkam
