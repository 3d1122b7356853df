#pragma once

#include "platform/images/heif/hevc_parameter_set.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QList>
#include <optional>

namespace zelkam {

class ByteReader;

/// What the boxes of a HEIF file (ISO/IEC 23008-12) say about its images, read without a decoder:
/// enough to know what decoding one will cost. A few kilobytes of such a file can declare
/// hundreds of megabytes of picture, in the coded picture, in a grid, or in both.
///
/// Only what phones and cameras write is known: HEVC-coded images, grids of them, and identity
/// derivations. For every other kind of image there is no cost, which means: do not decode it.
class HeifStructure
{
public:
    /// What decoding an image takes.
    struct Cost
    {
        qint64 pixels = 0;       ///< that are decoded or composed
        qint64 bytes = 0;        ///< held by the decoder at the same time, without the result
        bool isComposed = false; ///< of tiles, which libheif makes red, green and blue
        int chromaFormat = 1;    ///< how the colours are stored, as HevcPictureFormat has it
    };

    /// Reads the boxes. The bytes must outlive the object. Nothing when they are no HEIF file, or
    /// are cut short where they describe it.
    static std::optional<HeifStructure> read(QByteArrayView file);

    quint32 primaryItem() const { return m_primary; }

    /// The cost of an image with its alpha; nothing when it is of an unknown kind, contradicts
    /// itself, or consists of far more than it shows.
    std::optional<Cost> cost(quint32 item) const;

private:
    struct Extent
    {
        quint64 offset = 0;
        quint64 length = 0;
    };
    struct Property
    {
        QSize extent;                            ///< of an image's spatial extents
        std::optional<HevcPictureFormat> format; ///< of a decoder configuration
        int lengthSize = 0;                      ///< likewise: bytes of a unit's length
        bool alpha = false;                      ///< of an auxiliary image: it is an alpha plane
        QByteArray turn;                         ///< the type of a transformation; else empty
        bool broken = false;
    };
    struct Item
    {
        QByteArray type;
        QList<quint32> parts; ///< what a derived image is made of
        QList<quint32> auxiliaries;
        QList<int> properties; ///< numbers from 1
        QList<Extent> extents;
        bool inItemData = false; ///< the extents lie in the item data box
    };

    explicit HeifStructure(QByteArrayView file) : m_file(file) {}

    bool readMeta(ByteReader reader);
    void readPrimary(ByteReader reader);
    void readItems(ByteReader reader);
    void readItem(ByteReader reader);
    void readReferences(ByteReader reader);
    void readProperties(ByteReader reader);
    void readAssociations(ByteReader reader);
    bool readLocations(ByteReader reader);
    static Property readConfiguration(ByteReader reader);

    std::optional<Cost> partCost(quint32 item, int depth) const;
    std::optional<Cost> codedCost(const Item &item) const;
    std::optional<Cost> gridCost(const Item &item, int depth) const;
    std::optional<QSize> gridSize(const Item &item) const;
    Property propertiesOf(const Item &item) const;
    std::optional<QByteArray> data(const Item &item) const;

    QByteArrayView m_file;
    QByteArrayView m_itemData;
    quint32 m_primary = 0;
    QHash<quint32, Item> m_items;
    QList<Property> m_properties;
};

} // namespace zelkam
