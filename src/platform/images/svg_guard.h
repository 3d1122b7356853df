#pragma once

#include <QByteArray>
#include <optional>

namespace zelkam {

/// An SVG that is safe to hand to a renderer: without document type (its entities), scripts,
/// and images or references that lead out of the file, which a renderer would open.
/// Nothing when it is no SVG, is not well-formed, or would draw too many elements: nested
/// references multiply, ten lines of them can make millions.
std::optional<QByteArray> harmlessSvg(const QByteArray &svg);

} // namespace zelkam
