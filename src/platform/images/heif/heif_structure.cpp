#include "platform/images/heif/heif_structure.h"

#include "platform/images/heif/byte_reader.h"

namespace zelkam {

namespace {

constexpr int mostItems = 20000;

struct Box
{
    QByteArrayView type;
    QByteArrayView content;
};

/// Takes the next box; nothing when there is none or it does not fit.
std::optional<Box> takeBox(ByteReader &reader)
{
    if (reader.remaining() < 8)
        return std::nullopt;
    quint64 size = reader.u32();
    Box box;
    box.type = reader.take(4);
    quint64 header = 8;
    if (size == 1) {
        size = reader.u64();
        header = 16;
    }
    if (size == 0) { // to the end of the file
        box.content = reader.rest();
        return box;
    }
    if (size < header)
        return std::nullopt;
    box.content = reader.take(size - header);
    return reader.isValid() ? std::optional(box) : std::nullopt;
}

bool isAlphaType(QByteArrayView auxiliaryType)
{
    // ISO/IEC 23008-12 has two names for it: one of HEVC's own, one for every coding.
    const auto name = auxiliaryType.sliced(qMin<qsizetype>(4, auxiliaryType.size()));
    return name.startsWith("urn:mpeg:hevc:2015:auxid:1") ||
           name.startsWith("urn:mpeg:mpegB:cicp:systems:auxiliary:alpha");
}

quint8 takeVersion(ByteReader &reader)
{
    return quint8(reader.u32() >> 24);
}

} // namespace

std::optional<HeifStructure> HeifStructure::read(QByteArrayView file)
{
    HeifStructure structure(file);
    ByteReader reader(file);
    while (const auto box = takeBox(reader)) {
        if (box->type == "meta")
            return structure.readMeta(ByteReader(box->content)) ? std::optional(structure)
                                                                : std::nullopt;
    }
    return std::nullopt;
}

bool HeifStructure::readMeta(ByteReader reader)
{
    takeVersion(reader);
    bool located = false;
    while (const auto box = takeBox(reader)) {
        const ByteReader content(box->content);
        if (box->type == "pitm")
            readPrimary(content);
        else if (box->type == "iinf")
            readItems(content);
        else if (box->type == "iref")
            readReferences(content);
        else if (box->type == "iprp")
            readProperties(content);
        else if (box->type == "iloc")
            located = readLocations(content);
        else if (box->type == "idat")
            m_itemData = box->content;
    }
    return located && m_items.contains(m_primary) && m_items.size() <= mostItems;
}

void HeifStructure::readPrimary(ByteReader reader)
{
    m_primary = takeVersion(reader) == 0 ? reader.u16() : reader.u32();
}

void HeifStructure::readItems(ByteReader reader)
{
    if (takeVersion(reader) == 0)
        reader.u16();
    else
        reader.u32();
    while (const auto box = takeBox(reader)) {
        if (box->type == "infe" && m_items.size() <= mostItems)
            readItem(ByteReader(box->content));
    }
}

void HeifStructure::readItem(ByteReader reader)
{
    const int version = takeVersion(reader);
    const quint32 item = version >= 3 ? reader.u32() : reader.u16();
    reader.u16(); // protection
    m_items[item].type = reader.take(4).toByteArray();
}

void HeifStructure::readReferences(ByteReader reader)
{
    const bool wide = takeVersion(reader) != 0;
    while (const auto box = takeBox(reader)) {
        ByteReader content(box->content);
        const auto number = [&content, wide] { return wide ? content.u32() : content.u16(); };
        const quint32 from = number();
        const int count = content.u16();
        for (int i = 0; i < count && content.isValid(); ++i) {
            const quint32 to = number();
            if (box->type == "dimg")
                m_items[from].parts.append(to);
            else if (box->type == "auxl")
                m_items[to].auxiliaries.append(from);
        }
    }
}

void HeifStructure::readProperties(ByteReader reader)
{
    while (const auto box = takeBox(reader)) {
        if (box->type == "ipma") {
            readAssociations(ByteReader(box->content));
            continue;
        }
        if (box->type != "ipco")
            continue;
        ByteReader container(box->content);
        while (const auto child = takeBox(container)) {
            ByteReader content(child->content);
            Property property;
            if (child->type == "ispe") {
                takeVersion(content);
                const quint32 width = content.u32();
                const quint32 height = content.u32();
                constexpr quint32 longestEdge = 1U << 20;
                property.broken = width > longestEdge || height > longestEdge;
                if (!property.broken)
                    property.extent = QSize(int(width), int(height));
            } else if (child->type == "hvcC") {
                property = readConfiguration(content);
            } else if (child->type == "auxC") {
                property.alpha = isAlphaType(child->content);
            } else if (child->type == "irot" || child->type == "imir" || child->type == "clap") {
                property.turn = child->type.toByteArray();
            }
            m_properties.append(property);
        }
    }
}

HeifStructure::Property HeifStructure::readConfiguration(ByteReader reader)
{
    // HEVCDecoderConfigurationRecord, ISO/IEC 14496-15, 8.3.3.1
    Property property;
    reader.take(21);
    property.lengthSize = (reader.u8() & 3) + 1;
    const int arrays = reader.u8();
    for (int array = 0; array < arrays && reader.isValid(); ++array) {
        reader.u8();
        const int units = reader.u16();
        for (int unit = 0; unit < units && reader.isValid(); ++unit) {
            const auto bytes = reader.take(reader.u16());
            if (hevcUnitKind(bytes) != HevcUnit::sequenceParameterSet)
                continue;
            // A second set would let the picture choose; nobody writes one.
            if (property.format || !(property.format = readSequenceParameterSet(bytes)))
                property.broken = true;
        }
    }
    property.broken = property.broken || !reader.isValid() || !property.format;
    return property;
}

void HeifStructure::readAssociations(ByteReader reader)
{
    const quint32 versionAndFlags = reader.u32();
    const bool wideItems = versionAndFlags >> 24 != 0;
    const bool wideNumbers = (versionAndFlags & 1) != 0;
    const quint32 count = reader.u32();
    for (quint32 i = 0; i < count && reader.isValid(); ++i) {
        const quint32 item = wideItems ? reader.u32() : reader.u16();
        const int associations = reader.u8();
        for (int a = 0; a < associations && reader.isValid(); ++a) {
            // The highest bit says that the property is essential.
            const int number = wideNumbers ? reader.u16() & 0x7fff : reader.u8() & 0x7f;
            m_items[item].properties.append(number);
        }
    }
}

bool HeifStructure::readLocations(ByteReader reader)
{
    const int version = takeVersion(reader);
    const int sizes = reader.u16();
    const int offsetSize = sizes >> 12;
    const int lengthSize = sizes >> 8 & 15;
    const int baseSize = sizes >> 4 & 15;
    const int indexSize = version == 0 ? 0 : sizes & 15;
    const quint32 count = version < 2 ? reader.u16() : reader.u32();
    for (quint32 i = 0; i < count && reader.isValid(); ++i) {
        Item &item = m_items[version < 2 ? reader.u16() : reader.u32()];
        const int method = version == 0 ? 0 : reader.u16() & 15;
        item.inItemData = method == 1;
        if (method > 1)
            item.type.clear(); // an item built of other items' bytes
        reader.u16();          // another file's number
        const quint64 base = reader.sized(baseSize);
        const int extents = reader.u16();
        for (int e = 0; e < extents && reader.isValid(); ++e) {
            reader.sized(indexSize);
            const quint64 offset = base + reader.sized(offsetSize);
            item.extents.append({offset, reader.sized(lengthSize)});
        }
        if (m_items.size() > mostItems)
            return false;
    }
    return reader.isValid();
}

} // namespace zelkam
