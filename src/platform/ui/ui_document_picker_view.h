#pragma once

#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_document_picker_entry.h"
#include "platform/ui/ui_document_picker_places.h"

#include <QWidget>

class QBoxLayout;
class QStackedWidget;

namespace zelkam {

class DocumentChecks;
class DocumentFolderReader;
class DocumentListView;
class DocumentPickerMessage;
class DocumentPickerModel;
class PickerIconButton;
class PickerLine;
class PickerPathBar;
class PickerPrimaryButton;
class PickerSearchField;
class UINavigationBar;

/// The document picker's screen. It knows folders and what is selected; what becomes of that is
/// its controller's.
class DocumentPickerView : public QWidget
{
    Q_OBJECT

public:
    DocumentPickerView(const QList<UTType> &allowedTypes, bool allowsMultipleSelection);
    ~DocumentPickerView() override;

    void openFolder(const QString &path);
    const QString &folder() const { return m_folder; }
    /// Whether the folder's items are on the screen, or the reason why they are not.
    bool isReady() const { return m_isReady; }

    /// Selects a document of the folder that is shown, as a tap does; false when it cannot be.
    bool select(const QString &name);
    QStringList selection() const;

    /// Whether the contents of selected documents are being looked at, after which some may not
    /// stay selected.
    bool isChecking() const;

    /// Shows that the selection is on its way, and takes no more input; or no longer so.
    void showOpening(bool isOpening = true);

signals:
    void ready();
    /// The contents of what is selected have been looked at.
    void checked();
    void accepted();
    void cancelled();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void buildLayout();
    void connectParts();
    void show(const DocumentListing &listing);
    void showState();
    void updateSelection();
    void updatePath();
    void tap(const QModelIndex &index);
    void open(const QModelIndex &index);
    /// Selects a document, of which the content is looked at then, or lets it go.
    void toggle(const QModelIndex &index);
    void goUp();
    void showPlaces(bool show);
    void arrange();

    QString m_folder;
    QString m_cameFrom; ///< the folder that was shown before
    std::error_code m_problem;
    bool m_isReady = false;
    bool m_multiple;
    bool m_isOpening = false;
    QList<DocumentPlace> m_places;

    DocumentPickerModel *m_model;
    DocumentFolderReader *m_reader;
    DocumentChecks *m_checks;
    UINavigationBar *m_bar;
    QWidget *m_content;
    DocumentPlacesList *m_sidebar;
    DocumentPlacesList *m_placesPage;
    PickerIconButton *m_placesButton;
    PickerIconButton *m_up;
    PickerPathBar *m_path;
    PickerSearchField *m_search;
    QStackedWidget *m_pages;
    DocumentListView *m_list;
    DocumentPickerMessage *m_message;
    QWidget *m_footer;
    PickerLine *m_count;
    PickerIconButton *m_clear;
    PickerPrimaryButton *m_open;
};

} // namespace zelkam
