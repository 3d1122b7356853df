#include "platform/ui/ui_document_picker_model.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

namespace zelkam {

DocumentPickerModel::DocumentPickerModel(DocumentSelection selection, QObject *parent)
    : QAbstractListModel(parent), m_mode(selection)
{
}

void DocumentPickerModel::setListing(const DocumentListing &listing)
{
    beginResetModel();
    m_listing = listing;
    filter();
    endResetModel();
}

void DocumentPickerModel::setChoices(int first, const QList<DocumentChoice> &choices)
{
    for (int i = 0; i < choices.size(); ++i) {
        DocumentChoice &choice = m_listing.entries[first + i].choice;
        if (choice == DocumentChoice::unknown)
            choice = choices.at(i);
    }
    changed(0, rowCount() - 1);
}

void DocumentPickerModel::setChoice(const QString &path, DocumentChoice choice)
{
    for (DocumentEntry &entry : m_listing.entries) {
        if (path.endsWith(entry.name) && path == pathOf(entry))
            entry.choice = choice;
    }
    if (choice != DocumentChoice::allowed && m_selected.remove(path)) {
        m_selection.removeAll(path);
        emit selectionChanged();
    }
    changed(0, rowCount() - 1);
}

void DocumentPickerModel::setSearch(const QString &text)
{
    const QString folded = foldedForSearch(text.trimmed());
    if (folded == m_search)
        return;
    beginResetModel();
    m_search = folded;
    filter();
    endResetModel();
}

void DocumentPickerModel::setShowsHidden(bool shows)
{
    beginResetModel();
    m_showsHidden = shows;
    filter();
    endResetModel();
}

void DocumentPickerModel::filter()
{
    m_shown.clear();
    for (int i = 0; i < m_listing.entries.size(); ++i) {
        const DocumentEntry &entry = m_listing.entries.at(i);
        if ((m_showsHidden || !entry.isHidden) &&
            (m_search.isEmpty() || entry.folded.contains(m_search)))
            m_shown.push_back(i);
    }
}

void DocumentPickerModel::changed(int first, int last)
{
    if (first <= last)
        emit dataChanged(index(first), index(last));
}

const DocumentEntry &DocumentPickerModel::entry(const QModelIndex &index) const
{
    return m_listing.entries.at(m_shown.at(size_t(index.row())));
}

QString DocumentPickerModel::pathOf(const QModelIndex &index) const
{
    return pathOf(entry(index));
}

QString DocumentPickerModel::pathOf(const DocumentEntry &entry) const
{
    const QString &path = m_listing.path;
    return (path.endsWith(u'/') ? path : path + u'/') + entry.name;
}

QModelIndex DocumentPickerModel::find(const QString &name) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (entry(index(row)).name == name)
            return index(row);
    }
    return {};
}

void DocumentPickerModel::toggle(const QModelIndex &index)
{
    if (!hasMark(index))
        return;
    const QString path = pathOf(index);
    const bool wasSelected = m_selected.contains(path);
    if (m_mode == DocumentSelection::one) {
        m_selection.clear();
        m_selected.clear();
    }
    if (!wasSelected) {
        m_selection.append(path);
        m_selected.insert(path);
    } else {
        m_selection.removeAll(path);
        m_selected.remove(path);
    }
    changed(0, rowCount() - 1);
    emit selectionChanged();
}

void DocumentPickerModel::clearSelection()
{
    m_selection.clear();
    m_selected.clear();
    changed(0, rowCount() - 1);
    emit selectionChanged();
}

bool DocumentPickerModel::hasMark(const QModelIndex &index) const
{
    return m_mode != DocumentSelection::none && !entry(index).isFolder &&
           flags(index).testFlag(Qt::ItemIsSelectable);
}

bool DocumentPickerModel::isSelected(const QModelIndex &index) const
{
    return !m_selected.isEmpty() && m_selected.contains(pathOf(index));
}

int DocumentPickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

QVariant DocumentPickerModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const DocumentEntry &item = entry(index);
    switch (role) {
    case Qt::DisplayRole:
        return item.shown;
    case Qt::AccessibleDescriptionRole: {
        QStringList parts{documentSize(item), documentDate(item), documentProblem(item)};
        if (isSelected(index))
            parts.append(QCoreApplication::translate("DocumentPicker", "Selected"));
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
    case Qt::ToolTipRole:
        return item.shown.toHtmlEscaped();
    default:
        return {};
    }
}

Qt::ItemFlags DocumentPickerModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const DocumentChoice choice = entry(index).choice;
    const bool usable = choice == DocumentChoice::allowed || choice == DocumentChoice::unknown;
    return usable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                  : Qt::ItemNeverHasChildren;
}

QString documentSize(const DocumentEntry &entry)
{
    if (entry.isFolder || entry.choice == DocumentChoice::notAFile)
        return {};
    return QLocale().formattedDataSize(entry.size, 1, QLocale::DataSizeSIFormat);
}

QString documentDate(const DocumentEntry &entry)
{
    if (entry.choice == DocumentChoice::notAFile)
        return {};
    const QDateTime when = QDateTime::fromSecsSinceEpoch(entry.modified);
    if (when.date() == QDate::currentDate())
        return QLocale().toString(when.time(), QLocale::ShortFormat);
    return QLocale().toString(when.date(), QLocale::ShortFormat);
}

QString documentProblem(const DocumentEntry &entry)
{
    switch (entry.choice) {
    case DocumentChoice::wrongType:
        return QCoreApplication::translate("DocumentPicker", "This kind cannot be chosen here");
    case DocumentChoice::unreadable:
        return QCoreApplication::translate("DocumentPicker", "You may not open this");
    case DocumentChoice::notAFile:
        return QCoreApplication::translate("DocumentPicker", "Not a document");
    case DocumentChoice::unknown:
    case DocumentChoice::allowed:
        break;
    }
    return {};
}

} // namespace zelkam
