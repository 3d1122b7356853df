#pragma once

#include <QString>
#include <optional>

namespace zelkam {

/// The file name that a Content-Disposition field gives, as the server wrote it: not fit to be
/// used as a path. The field is text as headerText() makes it.
///
/// Grammar of RFC 6266, read leniently as servers break it. "filename*" (RFC 8187, in UTF-8 or
/// ISO-8859-1) goes before "filename"; one that is malformed is passed over. The bytes of
/// "filename" are read as UTF-8, else as ISO-8859-1. Absent when the field gives no name.
std::optional<QString> dispositionFilename(const QString &field);

} // namespace zelkam
