#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

namespace zelkam {

// Images of kinds that Qt's own readers get wrong. Nothing for all others; null for what is broken
// or cut short. They are not turned.

/// A JPEG of cyan, magenta, yellow and black with a profile, which Qt does not follow.
///
/// @param atLeast  the image may be scaled while it is decoded, and is not smaller than this
std::optional<QImage> readCmykJpeg(const QByteArray &file, QSize atLeast);

/// A PNG with a transparent colour of 16 bits a channel, or a colour profile that Qt does not
/// follow itself.
std::optional<QImage> readUnusualPng(const QByteArray &file);

/// The first image of a TIFF: grey with transparency, 16 bits in planes of their own, inks with a
/// profile, or a tile that is larger than the image.
std::optional<QImage> readUnusualTiff(const QByteArray &file);

} // namespace zelkam
