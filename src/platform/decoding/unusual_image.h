#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

namespace zelkam {

/// Reads an image of a kind that Qt's own reader of the format gets wrong. Nothing for all others;
/// null when it is broken. It is not turned, and may be scaled already where it is to become
/// smaller.
///
/// @param format  as rasterFormat() names it
std::optional<QImage> readUnusualImage(const QByteArray &file, const QByteArray &format,
                                       QSize atLeast);

} // namespace zelkam
