#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace zelkam {

class RegularFile;

// "data:", the MIME type, ";base64," and the base64 text in one stretch (RFC 2397). The result is
// ASCII text in a QByteArray, which a reply carries to the page without another copy.

/// The whole of an open file. It is read in pieces and encoded in place, a large one by two
/// threads: for a file of n bytes, at most 4/3 n bytes and a quarter of a MiB are held at any time.
/// Nothing when a read fails, or when there is no memory for the text.
std::optional<QByteArray> dataUrl(const QString &mimeType, const RegularFile &contentsOf);

/// Of bytes in memory; the result alone is 4/3 of them.
QByteArray dataUrl(const QString &mimeType, const QByteArray &bytes);

} // namespace zelkam
