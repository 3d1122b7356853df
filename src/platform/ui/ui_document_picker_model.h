#pragma once

#include "platform/ui/ui_document_picker_entry.h"

#include <QAbstractListModel>
#include <QSet>
#include <QStringList>
#include <vector>

namespace zelkam {

/// The items of one folder that a search leaves, and the documents that are picked in this and
/// in other folders.
class DocumentPickerModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit DocumentPickerModel(DocumentSelection selection, QObject *parent = nullptr);

    void setListing(const DocumentListing &listing);
    /// For entries of which the choice was not known; the others keep theirs.
    void setChoices(int first, const QList<DocumentChoice> &choices);
    /// For a document of this or another folder; one that is not allowed does not stay picked.
    void setChoice(const QString &path, DocumentChoice choice);
    const QString &path() const { return m_listing.path; }

    void setSearch(const QString &text);
    void setShowsHidden(bool shows);
    bool showsHidden() const { return m_showsHidden; }

    const DocumentEntry &entry(const QModelIndex &index) const;
    QString pathOf(const QModelIndex &index) const;
    /// The row of a name; invalid when it is not there or not shown.
    QModelIndex find(const QString &name) const;

    /// Picks a document that is allowed, as far as is known, or lets it go. Without multiple
    /// selection, it takes the place of the one before.
    void toggle(const QModelIndex &index);
    void clearSelection();
    /// Whether a row can be picked or has been.
    bool hasMark(const QModelIndex &index) const;
    bool isSelected(const QModelIndex &index) const;
    const QStringList &selection() const { return m_selection; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    void selectionChanged();

private:
    QString pathOf(const DocumentEntry &entry) const;
    void filter();
    void changed(int first, int last);

    DocumentListing m_listing;
    std::vector<int> m_shown; ///< indexes into the listing
    QString m_search;
    bool m_showsHidden = false;
    DocumentSelection m_mode;
    QStringList m_selection;
    QSet<QString> m_selected; ///< the same, to look up
};

/// A size and a date as a row shows them.
QString documentSize(const DocumentEntry &entry);
QString documentDate(const DocumentEntry &entry);
/// Why an item cannot be picked; empty when it can.
QString documentProblem(const DocumentEntry &entry);

} // namespace zelkam
