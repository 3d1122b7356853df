#pragma once

#include "platform/ui/ui_activity.h"

#include <QMimeData>
#include <memory>

namespace zelkam {

/// What a Linux device can do with a file: open it in another application, save a copy, copy the
/// file to the clipboard, send it by e-mail, show it in its folder. In this order.
QList<std::shared_ptr<UIActivity>> systemActivities();

/// The local paths of the items; nothing when one is not a local regular file.
std::optional<QStringList> sharedFilePaths(const QList<URL> &items);

/// The clipboard's form of files: the standard list, and the one that GNOME's and MATE's file
/// managers paste from.
std::unique_ptr<QMimeData> fileMimeData(const QStringList &paths);

/// Copies a file so that the target appears whole or not at all; what was there before stays when
/// it fails. Returns a sentence for the user, or nothing when it is done. Any thread.
QString copyFile(const QString &from, const QString &to);

} // namespace zelkam
