#pragma once

#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_document_picker_entry.h"

#include <QHash>
#include <QList>
#include <QObject>

namespace zelkam {

/// Looks into chosen documents whose names say nothing, each on a thread of its own, so that no
/// dead folder keeps the main thread. Main thread only; so are its signals.
class DocumentChecks : public QObject
{
    Q_OBJECT

public:
    explicit DocumentChecks(QList<UTType> allowedTypes, QObject *parent = nullptr);

    /// A document whose content does not come in two seconds is one that cannot be read.
    void start(const QString &path);
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
