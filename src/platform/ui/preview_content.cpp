#include "platform/ui/preview_content.h"

#include "platform/images/image_decoding.h"
#include "platform/images/svg/svg_image.h"
#include "platform/ui/pdf_pages.h"
#include "platform/ui/ql_preview_controller.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>

namespace zelkam {

namespace {

constexpr qint64 longestImageFile = 128LL << 20;
constexpr qint64 longestVectorFile = 8LL << 20;
constexpr qint64 longestText = 2LL << 20;
/// Sharp enough for every screen at some zoom, and 64 MiB at most.
constexpr int longestEdge = 4096;
/// Each frame of an animation is decoded while it plays, on the main thread.
constexpr int longestFrameEdge = 2048;

QString stateProblem(PreviewFile::State state)
{
    switch (state) {
    case PreviewFile::State::readable:
        return {};
    case PreviewFile::State::missing:
        return QLPreviewController::tr("The file is not there any more.");
    case PreviewFile::State::denied:
        return QLPreviewController::tr("The file cannot be read.");
    case PreviewFile::State::notAFile:
        return QLPreviewController::tr("This is not a file that can be shown.");
    }
    return {};
}

bool isAnimated(const QByteArray &bytes, const QByteArray &format)
{
    if (format != "gif" && format != "webp")
        return false;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    return qMax(size.width(), size.height()) <= longestFrameEdge && reader.supportsAnimation() &&
           reader.imageCount() > 1;
}

void loadRaster(PreviewContent &content, const QByteArray &format)
{
    if (content.file.size > longestImageFile) {
        content.problem = QLPreviewController::tr("The image is too large to be shown.");
        return;
    }
    const QByteArray bytes = content.file.device->read(longestImageFile);
    // A JPEG is scaled while it is decoded, so that only its scaled size has to fit.
    auto image = decodeImage(bytes, longestEdge);
    if (!image) {
        const QSize size = imageSize(bytes);
        const bool large = 4 * qint64(size.width()) * size.height() > ImageLimits().heldBytes;
        content.problem = large ? QLPreviewController::tr("The image is too large to be shown.")
                                : QLPreviewController::tr(
                                      "The image is damaged or of a kind that cannot be shown.");
        return;
    }
    content.image = std::move(*image);
    content.kind = PreviewContent::Kind::image;
    if (isAnimated(bytes, format)) {
        content.kind = PreviewContent::Kind::animation;
        content.animation = bytes;
    }
}

/// Returns false when it is no vector image after all.
bool loadVector(PreviewContent &content)
{
    if (content.file.size > longestVectorFile)
        return false;
    const QByteArray svg = content.file.device->read(longestVectorFile);
    content.file.device->seek(0);
    double pixelsOfPoint = 1.0;
    const auto image = drawSvg(svg, [&pixelsOfPoint](QSize own) {
        constexpr int edge = 2048;
        const QSize target = own.scaled(edge, edge, Qt::KeepAspectRatio);
        pixelsOfPoint = qMax(1.0, double(target.width()) / own.width());
        return target;
    });
    if (!image)
        return false;
    content.image = *image;
    // It has no size of its own in pixels; it is shown at the size that it asks for.
    content.image.setDevicePixelRatio(pixelsOfPoint);
    content.kind = PreviewContent::Kind::image;
    return true;
}

void loadPdf(PreviewContent &content)
{
    PdfPages::Outcome outcome = PdfPages::Outcome::damaged;
    content.pdf = PdfPages::open(content.file.device, outcome);
    if (content.pdf)
        content.kind = PreviewContent::Kind::pdf;
    else if (outcome == PdfPages::Outcome::locked)
        content.problem = QLPreviewController::tr("The document is protected by a password.");
    else
        content.problem = QLPreviewController::tr("The document is damaged and cannot be shown.");
}

void loadText(PreviewContent &content)
{
    content.text = decodeText(content.file.device->read(longestText));
    content.textIsCut = content.file.size > longestText;
    content.kind = PreviewContent::Kind::text;
}

bool isMedia(const QMimeType &type)
{
    return type.name().startsWith(QLatin1String("audio/")) ||
           type.name().startsWith(QLatin1String("video/")) ||
           type.name() == QLatin1String("application/ogg");
}

void loadReadable(PreviewContent &content)
{
    const PreviewFile &file = content.file;
    const QByteArray format = rasterFormat(file.head);
    const bool isSvg = file.type.inherits(QStringLiteral("image/svg+xml"));
    if (!format.isEmpty()) {
        loadRaster(content, format);
    } else if (file.head.left(1024).contains("%PDF-")) {
        loadPdf(content);
    } else if (isSvg && loadVector(content)) {
        return;
    } else if (looksLikeText(file.head) && (isSvg || isMedia(file.type) || file.type.isDefault() ||
                                            file.type.inherits(QStringLiteral("text/plain")))) {
        // A play list is text as well: a player would follow the addresses in it.
        loadText(content);
    } else if (isMedia(file.type)) {
        content.kind = PreviewContent::Kind::media;
    } else if (file.type.name().startsWith(QLatin1String("image/"))) {
        content.problem =
            QLPreviewController::tr("The image is damaged or of a kind that cannot be shown.");
    } else if (file.type.inherits(QStringLiteral("application/pdf"))) {
        content.problem = QLPreviewController::tr("The document is damaged and cannot be shown.");
    }
}

} // namespace

PreviewContent loadPreview(const std::optional<URL> &url)
{
    PreviewContent content;
    content.file = openPreviewFile(url);
    content.problem = stateProblem(content.file.state);
    if (content.problem.isEmpty())
        loadReadable(content);
    if (content.kind != PreviewContent::Kind::pdf)
        content.file.device.reset();
    content.file.head.clear();
    return content;
}

} // namespace zelkam
