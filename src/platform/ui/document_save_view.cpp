#include "platform/ui/document_save_view.h"

#include "platform/foundation/file_name.h"
#include "platform/ui/document_fields.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_controls.h"
#include "platform/ui/ui_document_picker_list.h"
#include "platform/ui/ui_document_picker_model.h"

#include <QHBoxLayout>

namespace zelkam {

DocumentSaveView::DocumentSaveView(const QString &name)
    : DocumentBrowser(tr("Save a Copy"), {UTType::item}, DocumentSelection::none),
      m_name(new NameField(tr("Name"))),
      m_newFolder(new NewFolderRow),
      m_save(new PickerPrimaryButton(tr("Save")))
{
    m_name->setName(visibleName(name));
    m_name->setContentsMargins(2 * metrics::grid, metrics::grid, 2 * metrics::grid, 0);
    putAbovePath(m_name);
    putAboveList(m_newFolder);
    auto *row = new QHBoxLayout(footer());
    row->setContentsMargins(2 * metrics::grid, metrics::grid, 2 * metrics::grid, metrics::grid);
    row->addWidget(m_save, 0, Qt::AlignRight);
    connect(m_save, &QAbstractButton::clicked, this, &DocumentSaveView::accepted);
    connect(m_newFolder, &NewFolderRow::accepted, this, &DocumentSaveView::newFolderAccepted);
    setFocusProxy(m_name);
}

DocumentSaveView::~DocumentSaveView() = default;

QString DocumentSaveView::name() const
{
    return m_name->name();
}

void DocumentSaveView::editName()
{
    m_name->edit();
}

void DocumentSaveView::showNameProblem(const QString &problem)
{
    m_name->showProblem(problem);
    m_name->edit();
}

std::optional<QString> DocumentSaveView::newFolder() const
{
    return m_newFolder->isOpen() ? std::optional(m_newFolder->field().name()) : std::nullopt;
}

void DocumentSaveView::showNewFolderProblem(const QString &problem)
{
    m_newFolder->field().showProblem(problem);
    m_newFolder->field().edit();
}

void DocumentSaveView::closeNewFolder()
{
    m_newFolder->setOpen(false);
    list().setFocus(Qt::OtherFocusReason);
}

void DocumentSaveView::showSaving(bool isSaving)
{
    showWork(isSaving ? tr("Saving…") : QString());
}

void DocumentSaveView::tapDocument(const QModelIndex &document)
{
    m_name->setName(visibleName(model().entry(document).name));
}

void DocumentSaveView::openDocument(const QModelIndex &document)
{
    tapDocument(document);
    emit accepted();
}

} // namespace zelkam
