#include "platform/decoding/heif/heif_coding.h"

#include "platform/decoding/heif/byte_reader.h"

#include <algorithm>
#include <optional>

namespace zelkam {

namespace {

/// The content of the first box of a type; empty when there is none.
QByteArrayView box(QByteArrayView boxes, QByteArrayView type)
{
    ByteReader reader(boxes);
    while (!reader.atEnd()) {
        quint64 size = reader.u32();
        const QByteArrayView found = reader.take(4);
        quint64 head = 8;
        if (size == 1) {
            size = reader.u64();
            head = 16;
        }
        const QByteArrayView content =
            size == 0 ? reader.rest() : reader.take(size - std::min(size, head));
        if (found == type)
            return content;
    }
    return {};
}

/// The type of the item that the file is about.
QByteArray primaryType(QByteArrayView meta)
{
    ByteReader primaryItem(box(meta, "pitm"));
    const bool isLongItem = primaryItem.u32() >> 24 != 0;
    const quint32 primary = isLongItem ? primaryItem.u32() : primaryItem.u16();
    ByteReader items(box(meta, "iinf"));
    const bool isLongCount = items.u32() >> 24 != 0;
    items.take(isLongCount ? 4 : 2);
    while (!items.atEnd()) {
        const quint32 size = items.u32();
        items.take(4);
        ByteReader entry(items.take(size - std::min<quint32>(size, 8)));
        const bool isLongNumber = entry.u32() >> 24 >= 3;
        const quint32 number = isLongNumber ? entry.u32() : entry.u16();
        entry.take(2);
        const QByteArrayView type = entry.take(4);
        if (number == primary && entry.isValid())
            return type.toByteArray();
    }
    return {};
}

/// The richest chroma of all pictures: that of an alpha plane is none.
int chromaFormat(QByteArrayView properties)
{
    constexpr HeifCoding usual;
    std::optional<int> richest;
    ByteReader reader(properties);
    while (!reader.atEnd()) {
        const quint32 size = reader.u32();
        const QByteArrayView type = reader.take(4);
        const QByteArrayView content = reader.take(size - std::min<quint32>(size, 8));
        constexpr qsizetype chromaAt = 16; // ISO/IEC 14496-15, 8.3.3.1.2
        if (type == "hvcC" && content.size() > chromaAt)
            richest = std::max(richest.value_or(0), content.at(chromaAt) & 3);
    }
    return richest.value_or(usual.chromaFormat);
}

} // namespace

HeifCoding heifCoding(QByteArrayView file)
{
    constexpr qsizetype versionAndFlags = 4;
    QByteArrayView meta = box(file, "meta");
    meta = meta.sliced(std::min(meta.size(), versionAndFlags));
    return {primaryType(meta) == "hvc1", chromaFormat(box(box(meta, "iprp"), "ipco"))};
}

} // namespace zelkam
