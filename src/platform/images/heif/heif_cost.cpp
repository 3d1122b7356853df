#include "platform/images/heif/byte_reader.h"
#include "platform/images/heif/heif_structure.h"

#include <cmath>

namespace zelkam {

namespace {

/// libheif decodes this many tiles of a grid at the same time.
constexpr int tilesAtOnce = 4;

qint64 area(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

double bytesPerPixel(const HevcPictureFormat &format)
{
    constexpr double planes[] = {1.0, 1.5, 2.0, 3.0};
    return planes[format.chromaFormat] * (format.bitDepth > 8 ? 2 : 1);
}

/// Checks the units of a coded image: its bytes may bring a parameter set of their own, which
/// the decoder would follow, or further pictures, which it would decode.
bool unitsAreWithin(QByteArrayView data, int lengthSize, QSize &largest)
{
    ByteReader reader(data);
    int pictures = 0;
    while (!reader.atEnd()) {
        quint64 length = 0;
        for (int i = 0; i < lengthSize; ++i)
            length = length << 8 | reader.u8();
        const auto unit = reader.take(length);
        if (!reader.isValid())
            return false;
        const HevcUnit kind = hevcUnitKind(unit);
        if (kind == HevcUnit::firstSliceOfPicture && ++pictures > 1)
            return false;
        if (kind != HevcUnit::sequenceParameterSet)
            continue;
        const auto format = readSequenceParameterSet(unit);
        if (!format)
            return false;
        largest = largest.expandedTo(format->size);
    }
    return pictures == 1;
}

} // namespace

std::optional<HeifStructure::Cost> HeifStructure::cost(quint32 item) const
{
    auto total = partCost(item, 0);
    if (!total)
        return std::nullopt;
    for (const quint32 auxiliary : m_items.value(item).auxiliaries) {
        // Others (depth, say) are not decoded: what they cost does not matter.
        if (!propertiesOf(m_items.value(auxiliary)).alpha)
            continue;
        const auto alpha = partCost(auxiliary, 0);
        if (!alpha)
            return std::nullopt;
        total->pixels += alpha->pixels;
        total->bytes += alpha->bytes;
    }
    return total;
}

std::optional<HeifStructure::Cost> HeifStructure::partCost(quint32 number, int depth) const
{
    const auto item = m_items.constFind(number);
    constexpr int deepest = 3;
    if (item == m_items.cend() || depth > deepest)
        return std::nullopt;
    if (item->type == "hvc1" || item->type == "hev1")
        return codedCost(*item);
    if (item->type == "grid")
        return gridCost(*item, depth);
    if (item->type == "iden" && item->parts.size() == 1)
        return partCost(item->parts.first(), depth + 1);
    return std::nullopt;
}

std::optional<HeifStructure::Cost> HeifStructure::codedCost(const Item &item) const
{
    const Property property = propertiesOf(item);
    const auto bytes = data(item);
    if (property.broken || !property.format || !bytes)
        return std::nullopt;
    QSize largest = property.format->size.expandedTo(property.extent);
    if (!unitsAreWithin(*bytes, property.lengthSize, largest))
        return std::nullopt;
    Cost cost;
    cost.chromaFormat = property.format->chromaFormat;
    cost.pixels = area(largest);
    // The decoder's picture with its bookkeeping, and libheif's copy of it.
    constexpr double bookkeeping = 1.5;
    const int copies = property.turn.isEmpty() ? 2 : 3;
    cost.bytes = std::llround(double(cost.pixels) *
                              (copies * bytesPerPixel(*property.format) + bookkeeping));
    return cost;
}

std::optional<HeifStructure::Cost> HeifStructure::gridCost(const Item &item, int depth) const
{
    const auto grid = gridSize(item);
    const Property property = propertiesOf(item);
    if (!grid || property.broken || item.parts.isEmpty())
        return std::nullopt;
    const qint64 canvas = area(grid->expandedTo(property.extent));
    Cost tiles;
    qint64 largestTile = 0;
    QHash<quint32, Cost> known; // a grid may name the same tile a thousand times
    for (const quint32 part : item.parts) {
        auto tile = known.constFind(part);
        if (tile == known.cend()) {
            const auto cost = partCost(part, depth + 1);
            if (!cost)
                return std::nullopt;
            tile = known.insert(part, *cost);
        }
        tiles.pixels += tile->pixels;
        tiles.chromaFormat = tile->chromaFormat;
        largestTile = qMax(largestTile, tile->bytes);
        // Tiles reach over the right and lower edges, by less than a tile each.
        constexpr qint64 overlap = 8 * 1024 * 1024;
        if (tiles.pixels > 2 * canvas + overlap)
            return std::nullopt;
    }
    // The canvas, and its copy while it is turned or mirrored.
    const int canvasBytes = property.turn.isEmpty() ? 3 : 2 * 3;
    tiles.isComposed = true;
    tiles.pixels += canvas;
    tiles.bytes = canvas * canvasBytes + tilesAtOnce * largestTile;
    return tiles;
}

std::optional<QSize> HeifStructure::gridSize(const Item &item) const
{
    const auto bytes = data(item);
    if (!bytes)
        return std::nullopt;
    ByteReader reader(*bytes);
    reader.u8(); // version
    const bool wide = (reader.u8() & 1) != 0;
    const int rows = reader.u8() + 1;
    const int columns = reader.u8() + 1;
    const quint32 width = wide ? reader.u32() : reader.u16();
    const quint32 height = wide ? reader.u32() : reader.u16();
    constexpr quint32 longestEdge = 1U << 20;
    if (!reader.isValid() || rows * columns != item.parts.size() || width > longestEdge ||
        height > longestEdge)
        return std::nullopt;
    return QSize(int(width), int(height));
}

HeifStructure::Property HeifStructure::propertiesOf(const Item &item) const
{
    Property all;
    QByteArrayList turns;
    for (const int number : item.properties) {
        if (number < 1 || number > m_properties.size())
            continue;
        const Property &one = m_properties.at(number - 1);
        all.broken = all.broken || one.broken || (one.format && all.format);
        all.extent = all.extent.expandedTo(one.extent);
        all.alpha = all.alpha || one.alpha;
        if (!one.turn.isEmpty()) {
            // Each is carried out on the whole image, and nobody needs two of a kind.
            all.broken = all.broken || turns.contains(one.turn);
            turns.append(one.turn);
            all.turn = one.turn;
        }
        if (one.format) {
            all.format = one.format;
            all.lengthSize = one.lengthSize;
        }
    }
    return all;
}

std::optional<QByteArray> HeifStructure::data(const Item &item) const
{
    const QByteArrayView source = item.inItemData ? m_itemData : m_file;
    const auto size = quint64(source.size());
    QByteArray bytes;
    for (const Extent &extent : item.extents) {
        if (extent.offset > size)
            return std::nullopt;
        const quint64 length = extent.length == 0 ? size - extent.offset : extent.length;
        // Extents that overlap could otherwise make gigabytes of a small file.
        if (length > size - extent.offset || quint64(bytes.size()) + length > size)
            return std::nullopt;
        bytes.append(source.sliced(qsizetype(extent.offset), qsizetype(length)));
    }
    return bytes;
}

} // namespace zelkam
