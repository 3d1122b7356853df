#pragma once

#include <QByteArray>

namespace zelkam {

/// Whether a file holds all pixels that its header announces, for the formats whose decoders fill
/// what is missing and call it done. Nothing else is checked.
bool bmpIsWhole(const QByteArray &data);
/// Of an animation only the first image counts.
bool gifIsWhole(const QByteArray &data);

} // namespace zelkam
