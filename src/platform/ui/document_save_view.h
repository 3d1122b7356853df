#pragma once

#include "platform/ui/document_browser.h"

#include <optional>

namespace zelkam {

class NameField;
class NewFolderRow;
class PickerPrimaryButton;

/// The screen on which a person says where a copy goes and what it is called. A tap on a file there
/// takes its name. What becomes of that is its controller's.
class DocumentSaveView : public DocumentBrowser
{
    Q_OBJECT

public:
    explicit DocumentSaveView(const QString &name);
    ~DocumentSaveView() override;

    QString name() const;
    void editName();
    void showNameProblem(const QString &problem);

    /// The name of a folder that is to be made; nothing while nobody types one.
    std::optional<QString> newFolder() const;
    void showNewFolderProblem(const QString &problem);
    void closeNewFolder();

    /// Shows that the copy is on its way, and takes no more input but Cancel; or no longer so.
    void showSaving(bool isSaving);

signals:
    void newFolderAccepted();

protected:
    void tapDocument(const QModelIndex &document) override;
    void openDocument(const QModelIndex &document) override;

private:
    NameField *m_name;
    NewFolderRow *m_newFolder;
    PickerPrimaryButton *m_save;
};

} // namespace zelkam
