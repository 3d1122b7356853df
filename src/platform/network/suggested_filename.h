#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace zelkam {

/// The first of the names that a file can have, made one harmless path component and completed
/// with the extension of the MIME type when it has none. Absent when none is left.
///
/// What goes: everything up to the last separator ("/" or "\"), control and direction-changing
/// characters, blanks at both ends, dots at the end, and with it "." and "..". A name that is
/// percent-encoded is decoded, once. An underscore then takes the place of each "%", "?", "#",
/// "[" and "]", so that the name stays what it is when it is decoded again or becomes a part of
/// a URL. Beyond 255 bytes of UTF-8 the part before the extension is cut on a character border.
std::optional<QString> harmlessFilename(const QStringList &names, const QString &mimeType);

} // namespace zelkam
