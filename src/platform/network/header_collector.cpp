#include "platform/network/header_collector.h"

#include "platform/network/header_text.h"

namespace zelkam {

namespace {

constexpr std::size_t maxBytes = 256 * 1024;
constexpr int maxFields = 1000;

} // namespace

bool HeaderCollector::addLine(const char *data, std::size_t size)
{
    m_bytes += size;
    if (m_bytes > maxBytes || ++m_count > maxFields)
        return false;
    const QByteArrayView line = QByteArrayView(data, static_cast<qsizetype>(size)).trimmed();
    if (m_complete)
        return true; // a trailer
    if (line.startsWith("HTTP/")) {
        const qsizetype blank = line.indexOf(' ');
        m_status = blank < 0 ? 0
                             : line.sliced(blank + 1)
                                   .first(qMin(line.size() - blank - 1, 3))
                                   .toByteArray()
                                   .toInt();
        m_fields.clear();
    } else if (line.isEmpty()) {
        m_complete = m_status >= 200;
    } else if (const qsizetype colon = line.indexOf(':'); colon > 0) {
        const QByteArray name = line.first(colon).trimmed().toByteArray();
        const QByteArray value = line.sliced(colon + 1).trimmed().toByteArray();
        for (Field &field : m_fields) {
            if (field.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            field.value += name.compare("Set-Cookie", Qt::CaseInsensitive) == 0 ? "\n" : ", ";
            field.value += value;
            return true;
        }
        m_fields.append({name, value});
    }
    return true;
}

QMap<QString, QString> HeaderCollector::fields() const
{
    QMap<QString, QString> fields;
    for (const Field &field : m_fields)
        fields.insert(headerText(field.name), headerText(field.value));
    return fields;
}

QByteArray HeaderCollector::value(const char *name) const
{
    for (const Field &field : m_fields) {
        if (field.name.compare(name, Qt::CaseInsensitive) == 0)
            return field.value;
    }
    return {};
}

} // namespace zelkam
