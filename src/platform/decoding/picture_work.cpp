#include "platform/decoding/decode_work.h"
#include "platform/decoding/image_decoding.h"
#include "platform/decoding/svg_image.h"
#include "platform/images/image_representation.h"
#include "platform/images/image_scaling.h"
#include "platform/images/picture_kind.h"

namespace zelkam {

namespace {

using Outcome = DecodeReply::Outcome;

QSize wantedSize(const DecodeWish &wish, QSize own)
{
    switch (wish.size) {
    case DecodeWish::Size::own:
        break;
    case DecodeWish::Size::stretched:
        return {wish.width, wish.height};
    case DecodeWish::Size::within:
        if (qMax(own.width(), own.height()) <= wish.width)
            break;
        [[fallthrough]];
    case DecodeWish::Size::filling:
        return own.scaled(wish.width, wish.width, Qt::KeepAspectRatio);
    case DecodeWish::Size::stored:
        return storedThumbnailSize(own, wish.width);
    }
    return own;
}

std::optional<QByteArray> encoded(const DecodeWish &wish, const QImage &pixels)
{
    const auto image = UIImage::fromQImage(pixels);
    if (!image)
        return std::nullopt;
    return wish.form == DecodeWish::Form::png ? UIImagePNGRepresentation(*image)
                                              : UIImageJPEGRepresentation(*image, wish.quality);
}

} // namespace

DecodeOutcome decodePictureWish(const DecodeWish &wish, const QByteArray &file,
                                const DecodeProgress &progress)
{
    DecodeOutcome outcome;
    DecodeReply &reply = outcome.reply;
    bool isTooLarge = false;
    const ImageTarget target = [&](QSize own) {
        const QSize wanted = wantedSize(wish, own);
        reply.ownWidth = own.width();
        reply.ownHeight = own.height();
        reply.width = wanted.width();
        reply.height = wanted.height();
        reply.outcome = Outcome::working;
        progress(reply);
        // What the application holds has a bound; what is encoded here has that of this process.
        constexpr qint64 mostPixels = 128LL << 20;
        const bool isHandedOver = wish.form == DecodeWish::Form::pixels;
        isTooLarge = isHandedOver && qint64(wanted.width()) * wanted.height() > mostPixels;
        return isTooLarge ? QSize() : wanted;
    };
    const bool isRaster = !rasterFormat(file).isEmpty();
    const bool isSaidToBeDrawing = wish.size == DecodeWish::Size::filling;
    if (!isRaster && !isSaidToBeDrawing && !looksLikeSvg(file)) {
        reply.outcome = Outcome::unknown;
        return outcome;
    }
    const auto pixels = isRaster ? decodeImage(file, target, wish.size == DecodeWish::Size::stored)
                                 : drawSvg(file, target);
    // What a whole file's decoder has no memory for looks like damage to it.
    constexpr qint64 mayBeTooLarge = 64LL << 20;
    isTooLarge = isTooLarge || qint64(reply.ownWidth) * reply.ownHeight > mayBeTooLarge;
    reply.outcome = pixels ? Outcome::done : isTooLarge ? Outcome::tooLarge : Outcome::damaged;
    if (!pixels)
        return outcome;
    reply.width = pixels->width();
    reply.height = pixels->height();
    if (wish.countsFrames)
        reply.value = playableFrames(file);
    if (wish.form == DecodeWish::Form::pixels) {
        outcome.pixels = *pixels;
        return outcome;
    }
    const auto bytes = encoded(wish, *pixels);
    reply.outcome = bytes ? Outcome::done : Outcome::tooLarge;
    outcome.bytes = bytes.value_or(QByteArray());
    return outcome;
}

} // namespace zelkam
