#include "platform/decoding/svg/svg_guard.h"

#include "platform/decoding/image_decoding.h"

#include <QBuffer>
#include <QImageWriter>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace zelkam {

namespace {

const QLatin1String referenceNamespace("http://www.w3.org/1999/xlink");

/// Images within an SVG, which share one allowance.
class EmbeddedImages
{
public:
    /// The image of a data URL as one of a PNG without surprises; empty when it is none. A renderer
    /// looks at the bytes and not at the type that the URL names: another SVG may lie in them.
    QString harmless(QStringView reference)
    {
        constexpr QLatin1String marker("base64,");
        const qsizetype start = reference.indexOf(marker);
        if (!reference.startsWith(u"data:", Qt::CaseInsensitive) || start < 0)
            return {};
        const QByteArray data =
            QByteArray::fromBase64(reference.mid(start + marker.size()).toLatin1());
        const auto image = decodeImage(data, [this](QSize size) {
            const qint64 pixels = qint64(size.width()) * size.height();
            m_pixelsLeft -= pixels;
            return m_pixelsLeft >= 0 ? size : QSize();
        });
        if (!image || m_pixelsLeft < 0)
            return {};
        QBuffer png;
        QImageWriter writer(&png, "png");
        constexpr int fast = 89; // Qt's word for the first of zlib's levels
        writer.setQuality(fast);
        if (!writer.write(*image))
            return {};
        return QLatin1String("data:image/png;base64,") + QLatin1String(png.data().toBase64());
    }

private:
    qint64 m_pixelsLeft = 16LL << 20;
};

/// What an element refers to, by whatever prefix; of several the one in the namespace of old, which
/// renderers of this age read.
QStringView reference(const QXmlStreamAttributes &attributes)
{
    QStringView found;
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.name() == u"href" &&
            (found.isEmpty() || attribute.namespaceUri() == referenceNamespace))
            found = attribute.value();
    }
    return found;
}

/// Writes the start of an element with one reference, or none if it is empty.
void writeStart(QXmlStreamWriter &writer, const QXmlStreamReader &reader, bool isRoot,
                const QString &reference)
{
    constexpr QLatin1String prefix("xlink");
    writer.writeStartElement(reader.qualifiedName().toString());
    if (isRoot)
        writer.writeAttribute(QStringLiteral("xmlns:xlink"), referenceNamespace);
    const auto declarations = reader.namespaceDeclarations();
    for (const QXmlStreamNamespaceDeclaration &declaration : declarations) {
        const QString name = declaration.prefix().toString();
        if (name != prefix)
            writer.writeAttribute(name.isEmpty() ? QStringLiteral("xmlns")
                                                 : QLatin1String("xmlns:") + name,
                                  declaration.namespaceUri().toString());
    }
    const auto attributes = reader.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.name() != u"href" && attribute.prefix() != prefix)
            writer.writeAttribute(attribute.qualifiedName().toString(),
                                  attribute.value().toString());
    }
    if (!reference.isEmpty())
        writer.writeAttribute(QStringLiteral("xlink:href"), reference);
}

bool isNeverDrawn(QStringView name)
{
    return name == u"script" || name == u"foreignObject" || name == u"feImage";
}

} // namespace

std::optional<QByteArray> harmlessSvg(const QByteArray &svg)
{
    QByteArray result;
    QXmlStreamReader reader(svg);
    QXmlStreamWriter writer(&result);
    EmbeddedImages images;
    bool isSvg = false;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            const bool isRoot = !isSvg;
            if (isRoot && reader.name() != u"svg")
                return std::nullopt;
            isSvg = true;
            const bool isImage = reader.name() == u"image";
            const QXmlStreamAttributes attributes = reader.attributes();
            QString target = reference(attributes).trimmed().toString();
            if (isImage)
                target = images.harmless(target);
            else if (!target.startsWith(u'#'))
                target.clear();
            if (isNeverDrawn(reader.name()) || (isImage && target.isEmpty()))
                reader.skipCurrentElement();
            else
                writeStart(writer, reader, isRoot, target);
            break;
        }
        case QXmlStreamReader::EndElement:
            writer.writeEndElement();
            break;
        case QXmlStreamReader::Characters:
            writer.writeCharacters(reader.text().toString());
            break;
        default: // document type, comments and processing instructions draw nothing
            break;
        }
    }
    if (reader.hasError() || !isSvg)
        return std::nullopt;
    return result;
}

} // namespace zelkam
