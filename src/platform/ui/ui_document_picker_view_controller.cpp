#include "platform/ui/ui_document_picker_view_controller.h"

#include "platform/ui/ui_document_picker_view.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

namespace zelkam {

namespace {

QList<UTType> typesOf(const QStringList &identifiers)
{
    QList<UTType> types;
    for (const QString &identifier : identifiers) {
        if (const auto type = UTType::fromIdentifier(identifier))
            types.append(*type);
    }
    return types;
}

} // namespace

UIDocumentPickerViewController::UIDocumentPickerViewController(
    const QList<UTType> &forOpeningContentTypes, bool)
    : m_contentTypes(forOpeningContentTypes)
{
}

UIDocumentPickerViewController::UIDocumentPickerViewController(const QStringList &documentTypes,
                                                               UIDocumentPickerMode)
    : m_contentTypes(typesOf(documentTypes))
{
}

UIDocumentPickerViewController::~UIDocumentPickerViewController() = default;

bool UIDocumentPickerViewController::isAvailable()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr;
}

void UIDocumentPickerViewController::setDelegate(std::weak_ptr<UIDocumentPickerDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

QWidget *UIDocumentPickerViewController::loadView()
{
    m_screen = new DocumentPickerView(m_contentTypes, allowsMultipleSelection);
    return m_screen;
}

void UIDocumentPickerViewController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    connect(m_screen, &DocumentPickerView::accepted, this, &UIDocumentPickerViewController::accept);
    connect(m_screen, &DocumentPickerView::cancelled, this,
            &UIDocumentPickerViewController::cancel);
    m_screen->openFolder(m_directory.isEmpty() ? DocumentBrowser::firstFolder() : m_directory);
}

void UIDocumentPickerViewController::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    m_screen->setFocus(Qt::OtherFocusReason);
}

void UIDocumentPickerViewController::setDirectory(const QString &path)
{
    m_directory = path;
    if (m_screen)
        m_screen->openFolder(path);
}

QStringList UIDocumentPickerViewController::selection() const
{
    return m_screen ? m_screen->selection() : QStringList();
}

void UIDocumentPickerViewController::showSelection(const QStringList &paths)
{
    view();
    showNextOf(paths);
}

void UIDocumentPickerViewController::showNextOf(QStringList paths)
{
    while (!paths.isEmpty()) {
        const QFileInfo file(paths.first());
        const QString folder = QDir::cleanPath(file.absolutePath());
        if (m_screen->folder() != folder || !m_screen->isReady()) {
            connect(
                m_screen, &DocumentPickerView::ready, this, [this, paths] { showNextOf(paths); },
                Qt::SingleShotConnection);
            if (m_screen->folder() != folder)
                m_screen->openFolder(folder);
            return;
        }
        if (!m_screen->select(file.fileName()))
            qWarning("The document picker cannot pick %s", qUtf8Printable(paths.first()));
        paths.removeFirst();
    }
    const QStringList shown = selection();
    afterChecks([this, shown] {
        for (const QString &path : shown) {
            if (!selection().contains(path))
                qWarning("The document picker cannot pick %s", qUtf8Printable(path));
        }
        emit selectionShown();
    });
}

void UIDocumentPickerViewController::afterChecks(std::function<void()> then)
{
    if (m_screen->isChecking())
        connect(m_screen, &DocumentPickerView::checked, this, std::move(then),
                Qt::SingleShotConnection);
    else
        then();
}

void UIDocumentPickerViewController::accept()
{
    const QStringList paths = selection();
    if (m_answered || m_isAccepting || paths.isEmpty())
        return;
    m_isAccepting = true;
    m_screen->showOpening();
    afterChecks([this, paths] {
        m_isAccepting = false;
        // The person has to see what is no longer among the selected.
        if (selection() == paths)
            answer(paths);
        else
            m_screen->showOpening(false);
    });
}

void UIDocumentPickerViewController::answer(const QStringList &paths)
{
    if (std::exchange(m_answered, true))
        return;
    m_screen->keepFolder();
    QList<URL> urls;
    for (const QString &path : paths)
        urls.append(URL::fromFilePath(path));
    if (const auto delegate = m_delegate.lock())
        delegate->documentPicker(this, urls);
    leave(true);
}

void UIDocumentPickerViewController::cancel()
{
    if (m_answered)
        return;
    m_answered = true;
    if (const auto delegate = m_delegate.lock())
        delegate->documentPickerWasCancelled(this);
    leave(true);
}

bool UIDocumentPickerViewController::cancelOperation()
{
    cancel();
    return true;
}

bool UIDocumentPickerViewController::acceptOperation()
{
    accept();
    return true;
}

} // namespace zelkam
