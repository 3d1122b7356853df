#pragma once

#include "platform/foundation/url.h"

#include <QString>

namespace zelkam {

/// The last piece of an address, percent-encoded as it is there.
QString encodedFileName(const URL &url);

/// The name under which the copy of a picked file is kept: the encoded one, so that "My Report.pdf"
/// is "My%20Report.pdf". Each letter of most scripts takes six or nine bytes then. A name that
/// would become longer than the file system allows is therefore kept with only its percent signs
/// encoded; and where that is too long as well, its end makes room for a mark, the same for the
/// same name and another for another. All three decode to the name, or to its beginning.
///
/// @param maxSize  the most bytes that a name may have
QString nameOfCopy(const QString &encodedName, qsizetype maxSize);

} // namespace zelkam
