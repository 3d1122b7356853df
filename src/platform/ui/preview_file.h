#pragma once

#include "platform/foundation/regular_file.h"
#include "platform/foundation/url.h"

#include <QByteArray>
#include <QMimeType>
#include <QString>
#include <memory>
#include <optional>

namespace zelkam {

/// What is known of a file that is to be shown, without reading more than its beginning.
struct PreviewFile
{
    QString path;
    QString name;
    qint64 size = 0;
    QMimeType type;                             ///< by name and content together
    QByteArray head;                            ///< the first bytes, at most 16 KiB
    std::shared_ptr<const RegularFile> content; ///< null when it cannot be read
};

/// Opens a local file. Folders, pipes and devices are refused without waiting for them; a URL that
/// names no local file counts as missing. Any thread.
///
/// @param problem  gets the sentence that says why it cannot be read
PreviewFile openPreviewFile(const std::optional<URL> &url, QString &problem);

} // namespace zelkam
