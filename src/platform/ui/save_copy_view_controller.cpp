#include "platform/ui/save_copy_view_controller.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/file_name.h"
#include "platform/ui/document_save_view.h"
#include "platform/ui/file_info_view.h"
#include "platform/ui/file_saving.h"
#include "platform/ui/share_sheet.h"

#include <QDir>
#include <QMimeDatabase>

namespace zelkam {

namespace {

/// Asks whether a file may go for another one; a no says nothing.
class ReplaceQuestion : public UIViewController
{
public:
    ReplaceQuestion(QString name, Completion replace)
        : m_name(std::move(name)), m_replace(std::move(replace))
    {
        modalPresentationStyle = UIModalPresentationStyle::popover;
    }

protected:
    QWidget *loadView() override
    {
        const QMimeType type =
            QMimeDatabase().mimeTypeForFile(m_name, QMimeDatabase::MatchExtension);
        auto *sheet = new ShareSheet(
            {kindIconNames(type), displayName(m_name),
             SaveCopyViewController::tr("Already in this folder")},
            {{SaveCopyViewController::tr("Replace"), QStringLiteral("document-replace")}});
        connect(sheet, &ShareSheet::cancelled, this, [this] { leave(true); });
        connect(sheet, &ShareSheet::chosen, this, [this] { leave(true, m_replace); });
        m_sheet = sheet;
        return sheet;
    }
    void layoutTransition(double shown) override { m_sheet->setShown(shown); }
    void viewDidLayoutSubviews() override { m_sheet->layoutPanel(); }

private:
    QString m_name;
    Completion m_replace;
    QPointer<ShareSheet> m_sheet;
};

} // namespace

SaveCopyViewController::SaveCopyViewController(RegularFile file, QString name, Ended ended)
    : m_file(std::make_shared<const RegularFile>(std::move(file))),
      m_name(std::move(name)),
      m_ended(std::move(ended))
{
}

SaveCopyViewController::~SaveCopyViewController() = default;

QWidget *SaveCopyViewController::loadView()
{
    m_screen = new DocumentSaveView(m_name);
    return m_screen;
}

void SaveCopyViewController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    connect(m_screen, &DocumentSaveView::accepted, this, [this] { save(OlderFile::stays); });
    connect(m_screen, &DocumentSaveView::newFolderAccepted, this,
            &SaveCopyViewController::makeNewFolder);
    connect(m_screen, &DocumentSaveView::cancelled, this, &SaveCopyViewController::cancel);
    m_screen->openFolder(DocumentBrowser::firstFolder());
}

void SaveCopyViewController::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    m_screen->editName();
}

void SaveCopyViewController::viewDidDisappear(bool animated)
{
    UIViewController::viewDidDisappear(animated);
    if (m_isCancelled)
        *m_isCancelled = true; // the window may have gone with the screen
    if (const auto ended = std::exchange(m_ended, nullptr))
        ended(m_savedTo);
}

void SaveCopyViewController::run(Work work, std::function<void(std::error_code)> answer)
{
    m_isCancelled = std::make_shared<std::atomic<bool>>(false);
    m_screen->showSaving(true);
    runInBackground([work = std::move(work), answer = std::move(answer),
                     isCancelled = m_isCancelled, self = QPointer(this)] {
        const std::error_code error = work(*isCancelled);
        DispatchQueue::main().async([self, isCancelled, answer, error] {
            if (*isCancelled || !self)
                return;
            self->m_isCancelled.reset();
            self->m_screen->showSaving(false);
            answer(error);
        });
    });
}

void SaveCopyViewController::save(OlderFile older)
{
    if (m_isCancelled || !m_savedTo.isEmpty())
        return;
    const QString name = m_screen->name();
    const QString folder = m_screen->folder();
    if (const QString problem = nameProblem(name); !problem.isEmpty()) {
        m_screen->showNameProblem(problem);
        return;
    }
    run([file = m_file, folder, name, older](
            const auto &isCancelled) { return saveCopy(*file, folder, name, older, isCancelled); },
        [this, folder](std::error_code error) {
            if (error == std::errc::file_exists) {
                askToReplace();
            } else if (error) {
                m_screen->showNameProblem(savingProblem(error));
            } else {
                m_savedTo = folder;
                m_screen->keepFolder();
                leave(true);
            }
        });
}

void SaveCopyViewController::askToReplace()
{
    m_screen->editName();
    present(std::make_shared<ReplaceQuestion>(m_screen->name(),
                                              [this] { save(OlderFile::isReplaced); }),
            true);
}

void SaveCopyViewController::makeNewFolder()
{
    if (m_isCancelled)
        return;
    const QString name = m_screen->newFolder().value_or(QString());
    const QString folder = m_screen->folder();
    if (const QString problem = nameProblem(name); !problem.isEmpty()) {
        m_screen->showNewFolderProblem(problem);
        return;
    }
    run([folder, name](const auto &) { return makeFolder(folder, name); },
        [this, folder, name](std::error_code error) {
            if (error) {
                m_screen->showNewFolderProblem(savingProblem(error));
                return;
            }
            m_screen->closeNewFolder();
            m_screen->openFolder(QDir(folder).filePath(name));
        });
}

void SaveCopyViewController::cancel()
{
    if (m_isCancelled)
        *m_isCancelled = true;
    leave(true);
}

bool SaveCopyViewController::cancelOperation()
{
    if (m_screen->newFolder() && !m_isCancelled)
        m_screen->closeNewFolder();
    else
        cancel();
    return true;
}

bool SaveCopyViewController::acceptOperation()
{
    if (m_screen->newFolder())
        makeNewFolder();
    else
        save(OlderFile::stays);
    return true;
}

} // namespace zelkam
