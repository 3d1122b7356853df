#pragma once

#include <QString>
#include <QStringView>

class QUrl;

namespace zelkam {

class URL;

// The MIME type that a file's name, path or URL stands for, by its extension alone: nothing is
// read from a disk. Never empty; what has no extension, or one that nobody knows, is
// "application/octet-stream".
//
// The text is a path, never a bare extension: "pdf" has no extension and "a.pdf" has one. The
// extension is what follows the last dot of the last component; a trailing slash does not count,
// and neither does a dot at the start or the end of the component. Of a URL only the decoded path
// counts, not its query.
//
// From system version 14.0 on the type registry answers, before that the table of mime_types.h.
// The table knows extensions in any case. The registry gets the extension as it is written and
// matches by its own rules, which know a few extensions in one case only ("C" beside "c").
//
// All of these may be called from any thread.

QString mimeType(const QString &path);
QString mimeType(QStringView path);
QString mimeType(const URL &url);
QString mimeType(const QUrl &url);

/// The extension of a path as mimeType() takes it, without the dot; empty where there is none.
QStringView pathExtension(QStringView path);

} // namespace zelkam
