#pragma once

#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_document_picker_entry.h"

#include <QObject>
#include <atomic>
#include <memory>

namespace zelkam {

/// Reads folders on a thread of its own, so that no folder, however large, slow or dead, keeps
/// the main thread. Main thread only; so are its signals.
class DocumentFolderReader : public QObject
{
    Q_OBJECT

public:
    explicit DocumentFolderReader(QList<UTType> allowedTypes, QObject *parent = nullptr);
    ~DocumentFolderReader() override;

    /// Begins to read; what was being read is given up, and no signal of it follows.
    void read(const QString &path);

    /// Whether the document may be picked, by its name and its content. Reads from the disk. From
    /// any thread.
    static DocumentChoice choiceOf(const QString &path, const QList<UTType> &allowedTypes);

signals:
    /// While it reads, a few times a second.
    void counted(int entries);
    void finished(const zelkam::DocumentListing &listing);
    /// After `finished`: what the contents of some entries say, from one index on.
    void examined(int first, const QList<zelkam::DocumentChoice> &choices);

private:
    struct Job;
    template<typename Deliver>
    static void deliver(const std::shared_ptr<Job> &job, Deliver deliver);
    static void run(const std::shared_ptr<Job> &job);
    static void examine(const std::shared_ptr<Job> &job, const DocumentListing &listing);

    QList<UTType> m_allowedTypes;
    std::shared_ptr<Job> m_job;
};

} // namespace zelkam
