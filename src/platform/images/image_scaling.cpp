#include "platform/images/image_scaling.h"

namespace zelkam {

QImage stretchedImage(QImage image, QSize size)
{
    // Qt scales an image with a palette into one with a palette: the colours between are missing,
    // and of two colours nothing is left but black. In one of 16 bits a channel it applies the
    // alpha twice.
    const bool isDeepAndTransparent = image.depth() > 32 && image.hasAlphaChannel();
    if (image.pixelFormat().colorModel() == QPixelFormat::Indexed || image.depth() == 1 ||
        isDeepAndTransparent)
        image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                : QImage::Format_RGB32);
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QSize storedThumbnailSize(QSize picture, int coveringEdge)
{
    QSize scaled = picture;
    for (const int edge : thumbnailEdges) {
        if (qMax(picture.width(), picture.height()) <= edge)
            return picture;
        scaled = picture.scaled(edge, edge, Qt::KeepAspectRatio).expandedTo({1, 1});
        if (qMin(scaled.width(), scaled.height()) >= coveringEdge)
            break;
    }
    return scaled;
}

} // namespace zelkam
