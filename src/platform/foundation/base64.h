#pragma once

#include <QtGlobal>

namespace zelkam {

// Base64 by RFC 4648, section 4: the standard alphabet, "=" at the end, no line breaks. The code
// for the processor's widest vectors is chosen as the program runs. From any thread.

/// The length of the text for a count of bytes.
constexpr qint64 base64Length(qint64 bytes)
{
    return (bytes + 2) / 3 * 4;
}

/// Encodes bytes. A stream may be encoded in pieces: every piece but the last is then a multiple
/// of 3 bytes long.
///
/// @param text  takes base64Length(size) characters; must not overlap the bytes
void base64Encode(const char *bytes, qint64 size, char *text);

} // namespace zelkam
