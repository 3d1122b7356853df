#include "platform/ui/ui_document_picker_content.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/ui/ui_document_picker_reader.h"

#include <QPointer>
#include <QTimer>
#include <chrono>

namespace zelkam {

namespace {

using namespace std::chrono_literals;

/// How long a person waits for what a document is.
constexpr auto patience = 2s;

} // namespace

DocumentChecks::DocumentChecks(QList<UTType> allowedTypes, QObject *parent)
    : QObject(parent), m_allowedTypes(std::move(allowedTypes))
{
}

void DocumentChecks::start(const QString &path)
{
    if (m_running.contains(path))
        return;
    const int check = ++m_last;
    m_running.insert(path, check);
    runInBackground([checks = QPointer(this), path, check, types = m_allowedTypes] {
        const DocumentChoice choice = DocumentFolderReader::choiceOf(path, types);
        DispatchQueue::main().async([checks, path, check, choice] {
            if (checks)
                checks->finish(path, check, choice);
        });
    });
    QTimer::singleShot(patience, this,
                       [this, path, check] { finish(path, check, DocumentChoice::unreadable); });
}

void DocumentChecks::finish(const QString &path, int check, DocumentChoice choice)
{
    const auto running = m_running.constFind(path);
    if (running == m_running.cend() || *running != check)
        return;
    m_running.erase(running);
    emit checked(path, choice);
    if (!isRunning())
        emit settled();
}

} // namespace zelkam
