#pragma once

#include "platform/foundation/url.h"
#include "platform/foundation/ut_type.h"
#include "platform/ui/ui_view_controller.h"

#include <QList>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <memory>

namespace zelkam {

class DocumentPickerView;
class UIDocumentPickerViewController;

/// What becomes of a picked document on systems before 14.0. The values are the platform's.
enum class UIDocumentPickerMode { import = 0, open = 1 };

/// Hears what a document picker led to. One of the two operations is called, once, on the main
/// thread, while the screen is still in place; it leaves when the operation has returned.
class UIDocumentPickerDelegate
{
public:
    virtual ~UIDocumentPickerDelegate() = default;

    /// @param didPickDocumentsAt  file URLs in the order in which they were picked, never empty
    virtual void documentPicker(UIDocumentPickerViewController *controller,
                                const QList<URL> &didPickDocumentsAt) = 0;
    virtual void documentPickerWasCancelled(UIDocumentPickerViewController *controller) = 0;
};

/// A screen on which a person picks documents of the device: places, folders, a search field.
///
/// What may be picked are regular files that may be read and whose type conforms to one of the
/// allowed types; everything else is dimmed. The type is that of UTType::fromFile(); and whatever
/// the name says, what its first bytes show to be something else (a JPEG that is called "a.pdf") is
/// dimmed and let go as soon as it is selected. Links count as what they lead to. Selected
/// documents stay selected while the person looks into other folders. Folders are read on a thread
/// of their own: a large, slow or dead one holds up nothing.
///
/// The URLs are those of the person's own files, whatever is asked for: an application that keeps
/// a document makes its copy. Between the pick and that copy a file may change or vanish.
///
/// The folder in which the next picker begins is the one in which the last one was accepted, for
/// as long as the program runs; the first begins in the person's documents.
class UIDocumentPickerViewController : public UIViewController
{
    Q_OBJECT

public:
    /// For system version 14.0 and later. An empty list allows nothing.
    UIDocumentPickerViewController(const QList<UTType> &forOpeningContentTypes, bool asCopy);
    /// For systems before 14.0. Identifiers that nobody knows allow nothing.
    UIDocumentPickerViewController(const QStringList &documentTypes, UIDocumentPickerMode in);
    ~UIDocumentPickerViewController() override;

    /// Whether the program can have pickers at all: it cannot without widgets (a program with a
    /// QCoreApplication), and making one then ends the program.
    static bool isAvailable();

    /// The picker does not keep its delegate alive; without one nobody hears.
    void setDelegate(std::weak_ptr<UIDocumentPickerDelegate> delegate);

    /// Set it before the view is loaded.
    bool allowsMultipleSelection = false;

    const QList<UTType> &contentTypes() const { return m_contentTypes; }

    /// Where the screen begins, or goes to.
    void setDirectory(const QString &path);

    /// Does what a person would: goes to the folders of the files and selects each as soon as it
    /// is on the screen. Then `selectionShown` is sent. What cannot be picked stays unselected.
    /// Call it once the screen has appeared.
    void showSelection(const QStringList &paths);
    /// The selected files in the order in which they were picked.
    QStringList selection() const;

    /// As the buttons of these names. Without a selection, `accept` does nothing. While contents
    /// are being looked at it waits for that, and then for another call if that let any go.
    void accept();
    void cancel();

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    bool cancelOperation() override;
    bool acceptOperation() override;

signals:
    void selectionShown();

protected:
    QWidget *loadView() override;

private:
    void showNextOf(QStringList paths);
    void afterChecks(std::function<void()> then);
    void answer(const QStringList &paths);

    QList<UTType> m_contentTypes;
    std::weak_ptr<UIDocumentPickerDelegate> m_delegate;
    QString m_directory;
    QPointer<DocumentPickerView> m_screen;
    bool m_isAccepting = false;
    bool m_answered = false;
};

} // namespace zelkam
