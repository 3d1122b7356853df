#include "download/download_folder.h"

#include "platform/foundation/file_manager.h"

namespace zelkam {

QString downloadFolder()
{
    QString folder = NSTemporaryDirectory() + QStringLiteral("Download");
    FileManager::defaultManager().addOwnFolder(folder);
    return folder;
}

} // namespace zelkam
