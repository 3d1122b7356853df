#pragma once

#include <QtGlobal>

namespace zelkam {

/// Encodes as many whole groups of 3 bytes as whole vectors hold, from the start. Gives the count
/// of bytes that are done, a multiple of 3; the rest is the caller's.
qint64 base64EncodeVectors(const unsigned char *bytes, qint64 size, char *text);

} // namespace zelkam
