#pragma once

#include "platform/images/decoder.h"
#include "platform/ui/preview_file.h"

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
    QImage image;    ///< of an animation its first frame
    int frames = 0;
    std::shared_ptr<PdfPages> pdf;
    QString text;
    bool textIsCut = false;
};

/// Reads a file for the preview, until it is there or no longer wanted. Not on the main thread: a
/// large image or a hostile document takes its time.
PreviewContent loadPreview(const std::optional<URL> &url, const DecodeCancel &cancel);

} // namespace zelkam
