#pragma once

#include <QImage>

namespace zelkam {

/// An image stretched to a size, smoothly, whatever the form of its pixels. Any thread.
QImage stretchedImage(QImage image, QSize size);

} // namespace zelkam
