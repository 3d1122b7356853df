#pragma once

#include <QByteArray>
#include <QDateTime>
#include <optional>

namespace zelkam {

/// The time that the Expires attribute of a cookie names, by RFC 6265, 5.1.1: in any order and
/// notation, and always in universal time, whatever zone is written behind it. Absent when the text
/// names no time. From any thread.
std::optional<QDateTime> readCookieDate(const QByteArray &text);

} // namespace zelkam
