#pragma once

#include <QByteArray>
#include <QSize>
#include <optional>

namespace zelkam {

/// What the markers of a JPEG tell without decoding it.
struct JpegStructure
{
    QSize size;
    bool progressive = false;
    int scans = 0;
};

/// Walks the markers of a JPEG (ITU-T T.81, annex B). Nothing when they are broken or the file
/// ends before its end marker: a decoder would fill the missing part with grey and call it done.
std::optional<JpegStructure> readJpegStructure(const QByteArray &data);

} // namespace zelkam
