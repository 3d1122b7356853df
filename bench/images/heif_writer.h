#pragma once

#include <QByteArray>
#include <QColorSpace>
#include <QImage>
#include <QSize>

namespace zelkam::bench {

struct HeicOptions
{
    int bits = 8; ///< 8 or 10
    int quality = 90;
    int orientation = 1; ///< as an Exif orientation counts
    int thumbnailEdge = 0;
    QColorSpace colorSpace = {}; ///< an invalid one writes no profile
};

/// An HEVC-coded picture of an image that holds its top left corner after the orientation is
/// undone: the same input gives the same upright output for orientation 1 only.
QByteArray heic(const QImage &image, const HeicOptions &options = {});

/// What a grid says of itself, true or not.
struct GridOptions
{
    int columns = 2;
    int rows = 2;
    QSize canvas = {};
    QSize declared = {}; ///< its spatial extents; empty: those of the canvas
};

/// A picture composed of one tile, many times. The tile is a file that heic() made.
QByteArray heicGrid(const QByteArray &tile, const GridOptions &options);

} // namespace zelkam::bench
