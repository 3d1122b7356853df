#pragma once

#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_document_picker_entry.h"

#include <QHash>
#include <QList>
#include <QObject>

namespace zelkam {

/// Whether the first bytes of a file say for certain that it is of none of these types, nor of
/// anything that one of them could be a kind of: a JPEG where a PDF is wanted. Most bytes say
/// nothing for certain: text, XML, zip files and other hulls of many formats. Then it is false, as
/// it is better to let a wrong document through than to refuse a right one.
bool isOfAnotherType(const QByteArray &head, const QList<UTType> &allowedTypes);

/// Looks into documents that were chosen for their names, each on a thread of its own, so that no
/// dead folder keeps the main thread. Main thread only; so are its signals.
class DocumentChecks : public QObject
{
    Q_OBJECT

public:
    explicit DocumentChecks(QList<UTType> allowedTypes, QObject *parent = nullptr);

    /// @param byName  what holds when the content does not come in two seconds
    void start(const QString &path, DocumentChoice byName);
    bool isRunning() const { return !m_running.isEmpty(); }

signals:
    void checked(const QString &path, zelkam::DocumentChoice choice);
    /// After the last `checked`, when none is running any more.
    void settled();

private:
    void finish(const QString &path, int check, DocumentChoice choice);

    QList<UTType> m_allowedTypes;
    QHash<QString, int> m_running; ///< the number of the check, by path
    int m_last = 0;
};

} // namespace zelkam
