#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

namespace zelkam {

/// Reads a PNG of a kind of which Qt loses something: a transparent colour of 16 bits a channel,
/// and a colour profile that Qt does not follow itself. Nothing for other kinds; null when it is
/// broken. It is not turned.
std::optional<QImage> readUnusualPng(const QByteArray &file);

} // namespace zelkam
