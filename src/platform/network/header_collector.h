#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <cstddef>

namespace zelkam {

/// Gathers the header fields of one answer from the lines that curl hands over: those of the
/// last block only, as 1xx blocks come before the real one. Fields after the body are ignored:
/// they could contradict what was decided on.
class HeaderCollector
{
public:
    /// Takes one line with its line break. False when the server has sent more than any honest
    /// one does: 256 KiB or 1000 fields, in all blocks together.
    bool addLine(const char *data, std::size_t size);

    /// Whether the fields of the real answer have all come.
    bool isComplete() const { return m_complete; }

    /// The status of the block; 0 while there is none.
    int status() const { return m_status; }

    /// Several fields of one name are joined as HTTPURLResponse::allHeaderFields() documents it.
    QMap<QString, QString> fields() const;

    /// The value of a field, its name compared without case; empty when it is not there.
    QByteArray value(const char *name) const;

private:
    struct Field
    {
        QByteArray name;
        QByteArray value;
    };

    QList<Field> m_fields;
    qsizetype m_last = -1; ///< the field that the last line belonged to
    std::size_t m_bytes = 0;
    int m_count = 0;
    int m_status = 0;
    bool m_complete = false;
};

} // namespace zelkam
