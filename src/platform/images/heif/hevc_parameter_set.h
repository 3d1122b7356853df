#pragma once

#include <QByteArrayView>
#include <QSize>
#include <optional>

namespace zelkam {

/// What a decoder of a coded picture will allocate, as its sequence parameter set declares it.
struct HevcPictureFormat
{
    QSize size;
    int chromaFormat = 1; ///< 0 grey, 1 4:2:0, 2 4:2:2, 3 4:4:4
    int bitDepth = 8;     ///< the larger one of luma and chroma
};

/// The kind of a network abstraction layer unit (ITU-T H.265, table 7-1).
enum class HevcUnit { sequenceParameterSet, firstSliceOfPicture, other };

/// The kind of a unit, from its first three bytes.
HevcUnit hevcUnitKind(QByteArrayView unit);

/// Reads a sequence parameter set (H.265, 7.3.2.2) up to its bit depths. The unit comes with its
/// two header bytes and with its emulation prevention bytes. Nothing when it is cut short or
/// declares what no decoder takes.
std::optional<HevcPictureFormat> readSequenceParameterSet(QByteArrayView unit);

} // namespace zelkam
