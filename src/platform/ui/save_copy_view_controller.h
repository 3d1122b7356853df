#pragma once

#include "platform/foundation/file_creation.h"
#include "platform/foundation/regular_file.h"
#include "platform/ui/ui_view_controller.h"

#include <atomic>
#include <functional>
#include <memory>
#include <system_error>

namespace zelkam {

class DocumentSaveView;

/// A screen on which a person saves a copy of a file: a name, the folders of the device, a row that
/// makes a new one. Nothing is replaced before the person has said so. The copy appears whole or
/// not at all; when it cannot be made a sentence on the screen says why, and the person can go
/// elsewhere. It is written on a thread of its own, and Cancel ends that.
class SaveCopyViewController : public UIViewController
{
    Q_OBJECT

public:
    /// Runs once, when the screen has gone: with the folder of the copy, or with an empty text when
    /// none was made.
    using Ended = std::function<void(const QString &folder)>;

    /// @param name  what the copy is called as long as the person says nothing else; only what can
    /// be seen of it
    SaveCopyViewController(RegularFile file, QString name, Ended ended);
    ~SaveCopyViewController() override;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    bool cancelOperation() override;
    bool acceptOperation() override;

protected:
    QWidget *loadView() override;

private:
    /// Runs on a thread of its own; the answer is dropped when the work was cancelled by then.
    using Work = std::function<std::error_code(const std::atomic<bool> &isCancelled)>;
    void run(Work work, std::function<void(std::error_code)> answer);
    void save(OlderFile older);
    void askToReplace();
    void makeNewFolder();
    void cancel();

    std::shared_ptr<const RegularFile> m_file;
    QString m_name;
    QString m_savedTo;
    Ended m_ended;
    QPointer<DocumentSaveView> m_screen;
    std::shared_ptr<std::atomic<bool>> m_isCancelled; ///< of the work that runs
};

} // namespace zelkam
