#include "platform/images/picture.h"

#include "platform/images/decoder.h"

namespace zelkam {

namespace {

DecodeWish wishFor(DecodeWish::Form form, std::optional<QSize> stretchedTo)
{
    DecodeWish wish;
    wish.form = form;
    if (stretchedTo) {
        wish.size = DecodeWish::Size::stretched;
        wish.width = stretchedTo->width();
        wish.height = stretchedTo->height();
    }
    return wish;
}

} // namespace

std::optional<UIImage> decodePicture(const QByteArray &data, std::optional<QSize> stretchedTo)
{
    return UIImage::fromQImage(decode(wishFor(DecodeWish::Form::pixels, stretchedTo), data).image);
}

std::optional<QByteArray> encodedPicture(const QByteArray &data, std::optional<QSize> stretchedTo,
                                         std::optional<double> jpegQuality)
{
    DecodeWish wish =
        wishFor(jpegQuality ? DecodeWish::Form::jpeg : DecodeWish::Form::png, stretchedTo);
    wish.quality = jpegQuality.value_or(1.0);
    const Decoded decoded = decode(wish, data);
    return decoded.isDone() ? std::optional(decoded.bytes) : std::nullopt;
}

std::optional<PictureThumbnail> thumbnailOfPicture(const QString &path, int coveringEdge)
{
    const auto file = RegularFile::open(path);
    if (!file || file->size() > largestPictureFile)
        return std::nullopt;
    DecodeWish wish;
    wish.size = DecodeWish::Size::stored;
    wish.width = coveringEdge;
    const Decoded decoded = decode(wish, *file, DecodeUrgency::background);
    if (!decoded.isDone())
        return std::nullopt;
    const QSize own(decoded.reply.ownWidth, decoded.reply.ownHeight);
    return PictureThumbnail{decoded.image, decoded.image.size() != own};
}

std::optional<QByteArray> readPictureFile(const QString &path)
{
    const auto file = RegularFile::open(path);
    return file && file->size() <= largestPictureFile ? file->readAll() : std::nullopt;
}

} // namespace zelkam
