#pragma once

#include "platform/ui/preview_file.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <memory>

namespace zelkam {

class PdfPages;

/// What a preview shows, read and decoded.
struct PreviewContent
{
    enum class Kind { image, animation, pdf, text, media, other };

    Kind kind = Kind::other;
    PreviewFile file;
    QString problem; ///< why the content is not shown, a sentence; empty for a plain `other`
    QImage image;
    QByteArray animation; ///< the file's bytes
    std::shared_ptr<PdfPages> pdf;
    QString text;
    bool textIsCut = false;
};

/// Reads a file for the preview. Not on the main thread: a large image or a hostile document
/// takes its time.
PreviewContent loadPreview(const std::optional<URL> &url);

} // namespace zelkam
