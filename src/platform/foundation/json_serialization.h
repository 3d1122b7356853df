#pragma once

#include <QByteArray>
#include <QVariant>
#include <optional>

namespace zelkam {

/// Writes a value as compact JSON (RFC 8259) in UTF-8. A value that is neither a dictionary nor a
/// list is written as a fragment.
///
/// Fails, rather than write something else, for what JSON cannot hold: a number that is not
/// finite, text that is not valid UTF-16, or a type without a counterpart. The keys come in the
/// dictionary's order. From any thread.
std::optional<QByteArray> jsonData(const QVariant &withJSONObject);

} // namespace zelkam
