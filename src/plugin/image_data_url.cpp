#include "plugin/zelkam_mobile_contents_plugin.h"

#include "host/argument_values.h"
#include "platform/images/image_representation.h"
#include "platform/images/picture.h"
#include "plugin/data_url.h"

namespace zelkam {

namespace {

/// The size that a page asks for; nothing when it asks for none.
std::optional<QSizeF> askedSize(const QVariantMap &options)
{
    const auto width = numberArgument(options, QStringLiteral("resizeWidth"));
    const auto height = numberArgument(options, QStringLiteral("resizeHeight"));
    if (!width || !height || !(*width > 0.0) || !(*height > 0.0))
        return std::nullopt;
    return QSizeF(*width, *height);
}

double jpegQuality(const QVariantMap &options)
{
    const double quality = numberArgument(options, QStringLiteral("resizeQuality")).value_or(1.0);
    // Out of range is a mistake, and gets the middle; it is not meant as the best.
    return quality > 1.0 ? 0.5 : quality;
}

} // namespace

std::optional<QByteArray>
ZelkamMobileContentsPlugin::getImgStr(const std::optional<QByteArray> &data,
                                      const std::optional<QString> &uti,
                                      const std::optional<QVariantMap> &options)
{
    if (!data || !uti)
        return std::nullopt;
    const QVariantMap asked = options.value_or(QVariantMap());
    const auto size = askedSize(asked);
    const auto context =
        size ? drawingContextSize(size->width(), size->height()) : std::optional<QSize>();
    if (size && !context)
        return std::nullopt;
    // It is drawn as large as asked, and stretched, where it is decoded.
    const bool isPng = uti->mid(uti->lastIndexOf(u'.') + 1) == u"png";
    const auto quality = isPng ? std::nullopt : std::optional(jpegQuality(asked));
    const auto encoded = encodedPicture(*data, context, quality);
    if (!encoded)
        return std::nullopt;
    return dataUrl(isPng ? QStringLiteral("image/png") : QStringLiteral("image/jpeg"), *encoded);
}

} // namespace zelkam
