#pragma once

#include <QByteArray>
#include <QStringConverter>
#include <optional>

namespace zelkam {

/// The Unicode encoding that bytes are in: by their byte order mark, or UTF-16 where every other
/// byte is zero, as in mostly Latin text. Nothing where neither tells; that may be UTF-8.
std::optional<QStringConverter::Encoding> unicodeEncoding(const QByteArray &bytes);

/// Whether bytes read like text in some encoding: no zero bytes but those of UTF-16, hardly
/// any control characters.
bool looksLikeText(const QByteArray &head);

} // namespace zelkam
