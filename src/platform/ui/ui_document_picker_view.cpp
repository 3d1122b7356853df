#include "platform/ui/ui_document_picker_view.h"

#include "platform/foundation/file_name.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_content.h"
#include "platform/ui/ui_document_picker_controls.h"
#include "platform/ui/ui_document_picker_list.h"
#include "platform/ui/ui_document_picker_model.h"

#include <QHBoxLayout>
#include <QLocale>

namespace zelkam {

DocumentPickerView::DocumentPickerView(const QList<UTType> &allowedTypes,
                                       bool allowsMultipleSelection)
    : DocumentBrowser(
          allowsMultipleSelection ? tr("Choose documents") : tr("Choose a document"), allowedTypes,
          allowsMultipleSelection ? DocumentSelection::several : DocumentSelection::one),
      m_multiple(allowsMultipleSelection),
      m_checks(new DocumentChecks(allowedTypes, this)),
      m_count(new PickerLine),
      m_clear(new PickerIconButton({}, tr("Clear"))),
      m_open(new PickerPrimaryButton(tr("Open")))
{
    buildFooter();
    connect(m_checks, &DocumentChecks::checked, &model(), &DocumentPickerModel::setChoice);
    connect(m_checks, &DocumentChecks::settled, this, &DocumentPickerView::checked);
    connect(&model(), &DocumentPickerModel::selectionChanged, this,
            &DocumentPickerView::updateSelection);
    connect(m_clear, &QAbstractButton::clicked, &model(), &DocumentPickerModel::clearSelection);
    connect(m_open, &QAbstractButton::clicked, this, &DocumentPickerView::accepted);
    setFocusProxy(&list());
    updateSelection();
}

DocumentPickerView::~DocumentPickerView() = default;

void DocumentPickerView::buildFooter()
{
    auto *row = new QHBoxLayout(footer());
    row->setContentsMargins(2 * metrics::grid, metrics::grid, 2 * metrics::grid, metrics::grid);
    row->setSpacing(metrics::grid);
    row->addWidget(m_count, 1);
    row->addWidget(m_clear);
    row->addWidget(m_open);
}

void DocumentPickerView::updateSelection()
{
    const QStringList selected = selection();
    const int count = int(selected.size());
    if (selected.isEmpty())
        m_count->setLine(m_multiple ? tr("Nothing selected") : tr("Choose one document"), {},
                         Qt::ElideRight);
    else if (m_multiple)
        m_count->setLine(tr("%Ln selected", nullptr, count), QLocale().toString(count),
                         Qt::ElideRight);
    else
        m_count->setLine(displayName(selected.first().section(u'/', -1)), {}, Qt::ElideMiddle);
    m_open->setEnabled(!selected.isEmpty() && !m_isOpening);
    m_clear->setVisible(m_multiple && !selected.isEmpty());
}

void DocumentPickerView::tapDocument(const QModelIndex &document)
{
    model().toggle(document);
    if (model().isSelected(document) && model().entry(document).choice == DocumentChoice::unknown)
        m_checks->start(model().pathOf(document));
}

void DocumentPickerView::openDocument(const QModelIndex &document)
{
    if (!model().isSelected(document))
        tapDocument(document);
    if (model().isSelected(document))
        emit accepted();
}

bool DocumentPickerView::isChecking() const
{
    return m_checks->isRunning();
}

bool DocumentPickerView::select(const QString &name)
{
    const QModelIndex index = model().find(name);
    if (!index.isValid())
        return false;
    list().setCurrentIndex(index);
    list().scrollTo(index);
    if (!model().isSelected(index))
        tapDocument(index);
    return model().isSelected(index);
}

QStringList DocumentPickerView::selection() const
{
    return model().selection();
}

void DocumentPickerView::showOpening(bool isOpening)
{
    m_isOpening = isOpening;
    setTakesInput(!isOpening);
    if (!isOpening) {
        updateSelection();
        return;
    }
    m_count->setLine(tr("Opening…"), {}, Qt::ElideRight);
    m_open->setEnabled(false);
    m_clear->hide();
    // Painted now: whoever gets the documents may keep this thread for a while.
    footer()->repaint();
}

} // namespace zelkam
