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

} // namespace zelkam
