#include "platform/images/svg_guard.h"

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace zelkam {

namespace {

constexpr qint64 mostElements = 100'000;
constexpr int deepest = 256;

QStringView reference(const QXmlStreamAttributes &attributes)
{
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.name() == u"href")
            return attribute.value();
    }
    return {};
}

/// How many elements a document draws when its references are followed.
class DrawingCost
{
public:
    void open(const QString &id)
    {
        m_open.append(id);
        count(1);
    }
    void close() { m_open.removeLast(); }
    void use(const QString &id)
    {
        for (const QString &holder : std::as_const(m_open)) {
            if (!holder.isEmpty())
                m_parts[holder].uses.append(id);
        }
        m_document.uses.append(id);
    }
    /// The total, or nothing when a part draws itself or the total passes the limit.
    std::optional<qint64> total() { return sum(m_document); }
    int depth() const { return int(m_open.size()); }

private:
    struct Part
    {
        qint64 own = 0;
        QStringList uses;
        std::optional<qint64> total;
        bool visiting = false;
    };

    void count(qint64 elements)
    {
        for (const QString &holder : std::as_const(m_open)) {
            if (!holder.isEmpty())
                m_parts[holder].own += elements;
        }
        m_document.own += elements;
    }

    std::optional<qint64> sum(Part &part)
    {
        if (part.total)
            return part.total;
        if (part.visiting)
            return std::nullopt;
        part.visiting = true;
        qint64 result = part.own;
        for (const QString &id : std::as_const(part.uses)) {
            const auto used = m_parts.find(id);
            if (used == m_parts.end())
                continue;
            const auto more = sum(*used);
            if (!more || (result += *more) > mostElements)
                return std::nullopt;
        }
        part.visiting = false;
        part.total = result;
        return result;
    }

    QStringList m_open;
    QHash<QString, Part> m_parts;
    Part m_document;
};

bool isDropped(const QXmlStreamReader &reader)
{
    const QStringView name = reader.name();
    if (name == u"script" || name == u"foreignObject")
        return true;
    return (name == u"image" || name == u"feImage") &&
           !reference(reader.attributes()).startsWith(u"data:");
}

} // namespace

std::optional<QByteArray> harmlessSvg(const QByteArray &svg)
{
    QByteArray result;
    QXmlStreamReader reader(svg);
    QXmlStreamWriter writer(&result);
    DrawingCost cost;
    bool isSvg = false;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            if (cost.depth() == 0 && reader.name() != u"svg")
                return std::nullopt;
            isSvg = true;
            if (isDropped(reader)) {
                reader.skipCurrentElement();
                break;
            }
            cost.open(reader.attributes().value(QLatin1String("id")).toString());
            const QStringView target = reference(reader.attributes());
            if (reader.name() == u"use" && target.startsWith(u'#'))
                cost.use(target.mid(1).toString());
            if (cost.depth() > deepest)
                return std::nullopt;
            writer.writeCurrentToken(reader);
            break;
        }
        case QXmlStreamReader::EndElement:
            cost.close();
            writer.writeCurrentToken(reader);
            break;
        case QXmlStreamReader::Characters:
            writer.writeCharacters(reader.text().toString());
            break;
        default: // document type, comments and processing instructions draw nothing
            break;
        }
    }
    const auto total = cost.total();
    if (reader.hasError() || !isSvg || !total || *total > mostElements)
        return std::nullopt;
    return result;
}

} // namespace zelkam
