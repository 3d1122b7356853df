#pragma once

#include <QByteArray>
#include <QSize>
#include <optional>

namespace zelkam {

/// What the markers of a JPEG tell without decoding it.
struct JpegStructure
{
    QSize size;
    int scans = 0;
    /// What a decoder keeps until the last scan, in bytes: the coefficients of all components when
    /// not every one is whole after the first scan; 0 otherwise.
    qint64 coefficientBytes = 0;
};

/// Walks the markers of a JPEG (ITU-T T.81, annex B). Nothing when they are broken or the file
/// ends before its end marker: a decoder would fill the missing part with grey and call it done.
std::optional<JpegStructure> readJpegStructure(const QByteArray &data);

} // namespace zelkam
