#pragma once

#include <QString>
#include <optional>

namespace zelkam {

/// Replaces every %XX by the byte it stands for and reads the whole as UTF-8.
/// Fails when a "%" is not followed by two hexadecimal digits or the bytes are not valid UTF-8.
std::optional<QString> removingPercentEncoding(const QString &text);

/// Percent-encodes the UTF-8 bytes of every character that RFC 3986 does not allow in a query:
/// letters, digits and -._~!$&'()*+,;=:@/? stay. "%" and "#" are encoded.
/// Fails when the text is not valid UTF-16 (an unpaired surrogate has no UTF-8 form).
std::optional<QString> addingPercentEncodingForUrlQuery(const QString &text);

} // namespace zelkam
