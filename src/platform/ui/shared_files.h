#pragma once

#include "platform/foundation/url.h"

#include <QList>
#include <QMimeData>
#include <QStringList>
#include <memory>
#include <optional>

namespace zelkam {

/// The local paths of the items; nothing when one is not a local regular file.
std::optional<QStringList> sharedFilePaths(const QList<URL> &items);

/// The clipboard's form of files: the standard list, and the one that GNOME's and MATE's file
/// managers paste from.
std::unique_ptr<QMimeData> fileMimeData(const QStringList &paths);

/// Copies a file so that the target appears whole or not at all; what was there before stays when
/// it fails. Returns a sentence for the user, or nothing when it is done. Any thread.
QString copyFile(const QString &from, const QString &to);

} // namespace zelkam
