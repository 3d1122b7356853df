#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

namespace zelkam::test {

/// A picture whose four corners have colours of their own, so that every turn and mirroring of it
/// shows: red, green, blue, and yellow clockwise from the top left.
inline QImage corners(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    QPainter painter(&image);
    const int w = size.width() / 2;
    const int h = size.height() / 2;
    painter.fillRect(0, 0, w, h, Qt::red);
    painter.fillRect(w, 0, size.width() - w, h, Qt::green);
    painter.fillRect(w, h, size.width() - w, size.height() - h, Qt::blue);
    painter.fillRect(0, h, w, size.height() - h, Qt::yellow);
    return image;
}

/// The largest difference of a channel between two images of one size; 256 where sizes differ.
/// Edges that a lossy coding smears are left out by comparing the inner part of each corner.
inline int difference(const QImage &a, const QImage &b)
{
    if (a.size() != b.size() || a.isNull())
        return 256;
    int largest = 0;
    for (const double x : {0.125, 0.25, 0.375, 0.625, 0.75, 0.875}) {
        for (const double y : {0.125, 0.25, 0.375, 0.625, 0.75, 0.875}) {
            const QPoint at(int(x * a.width()), int(y * a.height()));
            const QColor p = a.pixelColor(at);
            const QColor q = b.pixelColor(at);
            largest =
                std::max({largest, std::abs(p.red() - q.red()), std::abs(p.green() - q.green()),
                          std::abs(p.blue() - q.blue()), std::abs(p.alpha() - q.alpha())});
        }
    }
    return largest;
}

} // namespace zelkam::test
