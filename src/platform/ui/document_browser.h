#pragma once

#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_document_picker_entry.h"
#include "platform/ui/ui_document_picker_places.h"

#include <QWidget>

class QStackedWidget;
class QVBoxLayout;

namespace zelkam {

class DocumentFolderReader;
class DocumentListView;
class DocumentPickerMessage;
class DocumentPickerModel;
class PickerIconButton;
class PickerPathBar;
class PickerSearchField;
class UINavigationBar;

/// A screen on which a person goes through the folders of the device: a bar with Cancel, places, a
/// path, a search field and the list of what a folder holds. What becomes of the documents there,
/// and what stands in the footer, is its subclass's.
class DocumentBrowser : public QWidget
{
    Q_OBJECT

public:
    ~DocumentBrowser() override;

    void openFolder(const QString &path);
    const QString &folder() const { return m_folder; }
    /// Whether the folder's items are on the screen, or the reason why they are not.
    bool isReady() const { return m_isReady; }

    /// The folder in which a screen begins: the one in which the last was accepted, at first that
    /// of the person's documents.
    static QString firstFolder();
    /// Makes the folder that is shown the one in which the next screen begins.
    void keepFolder() const;

signals:
    void ready();
    void accepted();
    void cancelled();

protected:
    DocumentBrowser(const QString &title, const QList<UTType> &allowedTypes,
                    DocumentSelection selection);

    /// A tap or the space bar, and Enter or a double click, on a document that is no folder.
    virtual void tapDocument(const QModelIndex &document) = 0;
    virtual void openDocument(const QModelIndex &document) = 0;

    DocumentPickerModel &model() const { return *m_model; }
    DocumentListView &list() const { return *m_list; }
    QWidget *footer() const { return m_footer; }
    void putAbovePath(QWidget *widget);
    void putAboveList(QWidget *widget);

    /// Shows, in the list's place, that work goes on, and takes no input but Cancel meanwhile; an
    /// empty text ends that.
    void showWork(const QString &title);
    void setTakesInput(bool takes) { m_takesInput = takes; }

    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void buildLayout(const QString &title);
    void connectParts();
    void show(const DocumentListing &listing);
    void showState();
    void updatePath();
    void tap(const QModelIndex &index);
    void open(const QModelIndex &index);
    void goUp();
    void showPlaces(bool show);
    void arrange();

    QString m_folder;
    QString m_cameFrom; ///< the folder that was shown before
    std::error_code m_problem;
    bool m_isReady = false;
    bool m_takesInput = true;
    QString m_work; ///< what goes on, for the person
    QList<DocumentPlace> m_places;

    DocumentPickerModel *m_model;
    DocumentFolderReader *m_reader;
    UINavigationBar *m_bar;
    QWidget *m_content;
    DocumentPlacesList *m_sidebar;
    DocumentPlacesList *m_placesPage;
    PickerIconButton *m_placesButton;
    PickerIconButton *m_up;
    PickerPathBar *m_path;
    PickerSearchField *m_search;
    QVBoxLayout *m_column; ///< from the path down to the list
    QStackedWidget *m_pages;
    DocumentListView *m_list;
    DocumentPickerMessage *m_message;
    QWidget *m_footer;
};

} // namespace zelkam
