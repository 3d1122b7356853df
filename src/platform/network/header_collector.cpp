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
    const QByteArrayView whole(data, static_cast<qsizetype>(size));
    const QByteArrayView line = whole.trimmed();
    if (m_complete)
        return true; // a trailer
    // A folded line goes on with the field before it (RFC 9112, 5.2).
    if (whole.startsWith(' ') || whole.startsWith('\t')) {
        if (m_last >= 0)
            m_fields[m_last].value.append(' ').append(line);
        return true;
    }
    if (line.startsWith("HTTP/")) {
        const qsizetype blank = line.indexOf(' ');
        m_status = blank < 0 ? 0
                             : line.sliced(blank + 1)
                                   .first(qMin(line.size() - blank - 1, 3))
                                   .toByteArray()
                                   .toInt();
        m_fields.clear();
        m_last = -1;
    } else if (line.isEmpty()) {
        m_complete = m_status >= 200;
    } else if (const qsizetype colon = line.indexOf(':'); colon > 0) {
        const QByteArray name = line.first(colon).trimmed().toByteArray();
        const QByteArray value = line.sliced(colon + 1).trimmed().toByteArray();
        for (m_last = 0; m_last < m_fields.size(); ++m_last) {
            Field &field = m_fields[m_last];
            if (field.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            // A list of addresses is none: browsers take the first.
            if (name.compare("Location", Qt::CaseInsensitive) == 0)
                return true;
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
