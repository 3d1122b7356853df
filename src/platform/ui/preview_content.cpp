#include "platform/ui/preview_content.h"

#include "platform/foundation/text_encoding.h"
#include "platform/images/picture_kind.h"
#include "platform/ui/pdf_pages.h"
#include "platform/ui/ql_preview_controller.h"

#include <QCoreApplication>

namespace zelkam {

namespace {

constexpr qint64 longestFile = 128LL << 20;
constexpr qint64 longestVectorFile = 8LL << 20;
/// Sharp enough for every screen at some zoom, and 64 MiB at most.
constexpr int longestEdge = 4096;
constexpr int edgeOfDrawing = 2048;

QString imageProblem(DecodeReply::Outcome outcome)
{
    return outcome == DecodeReply::Outcome::tooLarge
               ? QLPreviewController::tr("The image is too large to be shown.")
               : QLPreviewController::tr("The image is damaged or of a kind that cannot be shown.");
}

void loadRaster(PreviewContent &content, const DecodeCancel &cancel)
{
    if (content.file.size > longestFile) {
        content.problem = imageProblem(DecodeReply::Outcome::tooLarge);
        return;
    }
    DecodeWish wish;
    wish.size = DecodeWish::Size::within;
    wish.width = longestEdge;
    wish.countsFrames = 1;
    const Decoded decoded = decode(wish, *content.file.content, DecodeUrgency::waitedFor, cancel);
    if (!decoded.isDone()) {
        content.problem = imageProblem(decoded.reply.outcome);
        return;
    }
    content.image = decoded.image;
    content.frames = int(decoded.reply.value);
    content.kind =
        content.frames > 1 ? PreviewContent::Kind::animation : PreviewContent::Kind::image;
}

QString documentProblem()
{
    return QLPreviewController::tr("The document is damaged and cannot be shown.");
}

/// Returns false when it is no vector image after all.
bool loadVector(PreviewContent &content, const DecodeCancel &cancel)
{
    if (content.file.size > longestVectorFile)
        return false;
    DecodeWish wish;
    wish.size = DecodeWish::Size::filling;
    wish.width = edgeOfDrawing;
    const Decoded decoded = decode(wish, *content.file.content, DecodeUrgency::waitedFor, cancel);
    if (!decoded.isDone())
        return false;
    content.image = decoded.image;
    // It has no size of its own in pixels; it is shown at the size that it asks for.
    content.image.setDevicePixelRatio(
        qMax(1.0, double(content.image.width()) / qMax(1, decoded.reply.ownWidth)));
    content.kind = PreviewContent::Kind::image;
    return true;
}

void loadPdf(PreviewContent &content, const DecodeCancel &cancel)
{
    auto outcome = DecodeReply::Outcome::damaged;
    content.pdf = PdfPages::open(content.file.content, cancel, outcome);
    if (content.pdf)
        content.kind = PreviewContent::Kind::pdf;
    else if (outcome == DecodeReply::Outcome::locked)
        content.problem = QLPreviewController::tr("The document is protected by a password.");
    else
        content.problem = documentProblem();
}

void loadText(PreviewContent &content, const DecodeCancel &cancel)
{
    DecodeWish wish;
    wish.task = DecodeWish::Task::text;
    const Decoded decoded = decode(wish, *content.file.content, DecodeUrgency::waitedFor, cancel);
    if (!decoded.isDone()) {
        content.problem = QLPreviewController::tr("The file cannot be read.");
        return;
    }
    content.text = QString(reinterpret_cast<const QChar *>(decoded.bytes.constData()),
                           decoded.bytes.size() / qsizetype(sizeof(QChar)));
    content.textIsCut = decoded.reply.value != 0;
    content.kind = PreviewContent::Kind::text;
}

bool isMedia(const QMimeType &type)
{
    return type.name().startsWith(QLatin1String("audio/")) ||
           type.name().startsWith(QLatin1String("video/")) ||
           type.name() == QLatin1String("application/ogg");
}

void loadReadable(PreviewContent &content, const DecodeCancel &cancel)
{
    const PreviewFile &file = content.file;
    const bool isSvg = file.type.inherits(QStringLiteral("image/svg+xml"));
    if (!rasterFormat(file.head).isEmpty()) {
        loadRaster(content, cancel);
    } else if (file.head.left(1024).contains("%PDF-")) {
        loadPdf(content, cancel);
    } else if (isSvg && loadVector(content, cancel)) {
        return;
    } else if (looksLikeText(file.head) && (isSvg || isMedia(file.type) || file.type.isDefault() ||
                                            file.type.inherits(QStringLiteral("text/plain")))) {
        // A play list is text as well: a player would follow the addresses in it.
        loadText(content, cancel);
    } else if (isMedia(file.type)) {
        content.kind = PreviewContent::Kind::media;
    } else if (file.type.name().startsWith(QLatin1String("image/"))) {
        content.problem = imageProblem(DecodeReply::Outcome::damaged);
    } else if (file.type.inherits(QStringLiteral("application/pdf"))) {
        content.problem = documentProblem();
    }
}

} // namespace

PreviewContent loadPreview(const std::optional<URL> &url, const DecodeCancel &cancel)
{
    PreviewContent content;
    content.file = openPreviewFile(url, content.problem);
    if (content.file.content)
        loadReadable(content, cancel);
    content.file.head.clear();
    return content;
}

} // namespace zelkam
