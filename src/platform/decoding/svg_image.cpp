#include "platform/decoding/svg_image.h"

#include <QBuffer>
#include <QColorSpace>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace zelkam {

namespace {

/// The image of a data URL as one of a PNG without surprises; empty when it is none. A renderer
/// looks at the bytes and not at the type that the URL names: another SVG may lie in them.
///
/// @param pixelsLeft  what all images of a drawing share
QString harmlessImage(QStringView reference, qint64 &pixelsLeft)
{
    constexpr QLatin1String marker("base64,");
    const qsizetype start = reference.indexOf(marker);
    if (!reference.startsWith(u"data:", Qt::CaseInsensitive) || start < 0)
        return {};
    const auto image =
        decodeImage(QByteArray::fromBase64(reference.mid(start + marker.size()).toLatin1()),
                    [&pixelsLeft](QSize size) {
                        pixelsLeft -= qint64(size.width()) * size.height();
                        return pixelsLeft >= 0 ? size : QSize();
                    });
    QBuffer png;
    constexpr int fast = 89; // Qt's word for the first of zlib's levels
    if (!image || !image->save(&png, "png", fast))
        return {};
    return QLatin1String("data:image/png;base64,") + QLatin1String(png.data().toBase64());
}

bool isReference(const QXmlStreamAttribute &attribute)
{
    return attribute.qualifiedName() == u"href" || attribute.qualifiedName().endsWith(u":href");
}

/// What an element refers to, by whatever prefix; of several the usual one of old, which is what
/// renderers of this age read.
QString reference(const QXmlStreamAttributes &attributes)
{
    QStringView found;
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (isReference(attribute) &&
            (found.isEmpty() || attribute.qualifiedName() == u"xlink:href"))
            found = attribute.value();
    }
    return found.trimmed().toString();
}

bool isNeverDrawn(QStringView name)
{
    return name == u"script" || name == u"foreignObject" || name == u"feImage";
}

/// An SVG that is safe to hand to a renderer, which would open what it refers to: without document
/// type (its entities), scripts, and references that lead out of the file. Raster images that it
/// holds are decoded here, up to 16 million pixels in all, and are put back as PNG; what cannot be
/// decoded so is left out.
///
/// Nothing when it is no SVG or is not well-formed. How much there is to draw is not looked at.
std::optional<QByteArray> harmlessSvg(const QByteArray &svg)
{
    QByteArray result;
    QXmlStreamReader reader(svg);
    reader.setNamespaceProcessing(false); // as the renderer reads it
    QXmlStreamWriter writer(&result);
    qint64 pixelsLeft = 16LL << 20;
    bool isSvg = false;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::Characters || token == QXmlStreamReader::EndElement)
            writer.writeCurrentToken(reader);
        // Document type, comments and processing instructions draw nothing.
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QStringView name = reader.qualifiedName();
        if (!isSvg && name != u"svg")
            return std::nullopt;
        isSvg = true;
        const QXmlStreamAttributes attributes = reader.attributes();
        QString target = reference(attributes);
        const bool isImage = name == u"image";
        if (isImage)
            target = harmlessImage(target, pixelsLeft);
        else if (!target.startsWith(u'#'))
            target.clear();
        if (isNeverDrawn(name) || (isImage && target.isEmpty())) {
            reader.skipCurrentElement();
            continue;
        }
        writer.writeStartElement(name.toString());
        for (const QXmlStreamAttribute &attribute : attributes) {
            if (!isReference(attribute))
                writer.writeAttribute(attribute);
        }
        if (!target.isEmpty())
            writer.writeAttribute(QStringLiteral("xlink:href"), target);
    }
    if (reader.hasError() || !isSvg)
        return std::nullopt;
    return result;
}

} // namespace

std::optional<QImage> drawSvg(const QByteArray &data, const ImageTarget &target)
{
    const auto svg = harmlessSvg(data);
    QSvgRenderer renderer;
    if (!svg || !renderer.load(*svg))
        return std::nullopt;
    const QSize unsized(512, 512);
    const QSize own = renderer.defaultSize().isEmpty() ? unsized : renderer.defaultSize();
    const QSize chosen = target(own);
    if (!chosen.isValid())
        return std::nullopt;
    const QSize size = chosen.expandedTo({1, 1});
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return std::nullopt;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    painter.end();
    image.setColorSpace(QColorSpace(QColorSpace::SRgb));
    return image;
}

} // namespace zelkam
