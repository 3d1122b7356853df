#pragma once

#include <QStringView>
#include <span>

namespace zelkam {

/// One row of the table: a lower-case extension without the dot, and its MIME type.
struct MimeTypesRow
{
    QStringView extension;
    QStringView mimeType;
};

/// The fixed table of extensions, in the order in which it was written. No extension comes twice.
/// From any thread.
std::span<const MimeTypesRow> mimeTypes();

/// The table's MIME type of an extension in any case; empty when the table does not have it. The
/// text lives as long as the program. From any thread.
///
/// The table is laid out by the compiler as a perfect hash: a lookup is two multiplications and
/// the comparison of one slot.
QStringView mimeTypesValue(QStringView extension);

} // namespace zelkam
