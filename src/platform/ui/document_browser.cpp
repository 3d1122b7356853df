#include "platform/ui/document_browser.h"

#include "platform/foundation/file_name.h"
#include "platform/ui/document_fields.h"
#include "platform/ui/ui_document_picker_controls.h"
#include "platform/ui/ui_document_picker_list.h"
#include "platform/ui/ui_document_picker_message.h"
#include "platform/ui/ui_document_picker_model.h"
#include "platform/ui/ui_document_picker_reader.h"
#include "platform/ui/ui_navigation_bar.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPainter>
#include <QStackedWidget>
#include <QStandardPaths>
#include <filesystem>

namespace zelkam {

namespace {

QString &lastFolder()
{
    static QString folder;
    return folder;
}

} // namespace

QString DocumentBrowser::firstFolder()
{
    std::error_code isUnknown;
    if (std::filesystem::is_directory(encodeFileName(lastFolder()).toStdString(), isUnknown))
        return lastFolder();
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

void DocumentBrowser::keepFolder() const
{
    lastFolder() = m_folder;
}

DocumentBrowser::~DocumentBrowser() = default;

void DocumentBrowser::connectParts()
{
    connect(m_reader, &DocumentFolderReader::finished, this, &DocumentBrowser::show);
    connect(m_reader, &DocumentFolderReader::examined, m_model, &DocumentPickerModel::setChoices);
    connect(m_reader, &DocumentFolderReader::counted, this, [this](int entries) {
        m_message->setDetail(tr("%Ln item(s) so far", nullptr, entries));
    });
    for (DocumentPlacesList *places : {m_sidebar, m_placesPage})
        connect(places, &DocumentPlacesList::chosen, this, &DocumentBrowser::openFolder);
    connect(m_placesButton, &QAbstractButton::clicked, this,
            [this] { showPlaces(m_pages->currentWidget() != m_placesPage); });
    connect(m_up, &QAbstractButton::clicked, this, &DocumentBrowser::goUp);
    connect(m_path, &PickerPathBar::chosen, this, &DocumentBrowser::openFolder);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model->setSearch(text);
        m_list->scrollToTop();
        showState();
    });
    connect(m_search, &PickerSearchField::leftDownwards, this, [this] {
        m_list->setFocus(Qt::TabFocusReason);
        if (!m_list->currentIndex().isValid())
            m_list->setCurrentIndex(m_model->index(0));
    });
    connect(m_list, &DocumentListView::tapped, this, &DocumentBrowser::tap);
    connect(m_list, &DocumentListView::openRequested, this, &DocumentBrowser::open);
    connect(m_list, &DocumentListView::upRequested, this, &DocumentBrowser::goUp);
    connect(m_list, &DocumentListView::leftUpwards, this,
            [this] { m_search->setFocus(Qt::BacktabFocusReason); });
    connect(m_list, &DocumentListView::typed, this, [this](const QString &text) {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->insert(text);
    });
}

void DocumentBrowser::openFolder(const QString &path)
{
    m_cameFrom = m_folder;
    m_folder = QDir::cleanPath(path);
    m_isReady = false;
    m_problem.clear();
    m_search->clear();
    m_model->setListing({m_folder, {}, {}});
    updatePath();
    m_message->showLoading(tr("Reading the folder…"));
    m_pages->setCurrentWidget(m_message);
    m_reader->read(m_folder);
}

void DocumentBrowser::show(const DocumentListing &listing)
{
    m_problem = listing.error;
    m_model->setListing(listing);
    m_isReady = true;
    // Going up, the person finds the folder that was left.
    const QString left = m_cameFrom.section(u'/', -1);
    const bool cameFromBelow = !left.isEmpty() && QDir(m_folder).filePath(left) == m_cameFrom;
    const QModelIndex current = cameFromBelow ? m_model->find(left) : m_model->index(0);
    m_list->setCurrentIndex(current);
    m_list->scrollTo(current, QAbstractItemView::PositionAtCenter);
    showState();
    // While the folder was read there was no list to have the focus. While the screen slides in,
    // focus is not ours to take.
    const QWidget *focused = QApplication::focusWidget();
    if (focused && isAncestorOf(focused) && !qobject_cast<const QLineEdit *>(focused))
        m_list->setFocus(Qt::OtherFocusReason);
    emit ready();
}

void DocumentBrowser::showWork(const QString &title)
{
    m_work = title;
    m_takesInput = title.isEmpty();
    const auto parts = m_content->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *part : parts) {
        if (part != m_bar && part != m_pages)
            part->setEnabled(m_takesInput);
    }
    m_up->setEnabled(m_takesInput && m_folder != u"/");
    m_message->showLoading(m_takesInput ? tr("Reading the folder…") : title);
    showState();
}

void DocumentBrowser::showState()
{
    if (!m_isReady || !m_work.isEmpty()) {
        m_pages->setCurrentWidget(m_message);
        return;
    }
    if (m_problem) {
        const bool isMissing = m_problem == std::errc::no_such_file_or_directory;
        m_message->showText(QStringLiteral("folder-locked"), tr("This folder cannot be opened"),
                            isMissing ? tr("It is no longer there.")
                            : m_problem == std::errc::permission_denied
                                ? tr("You do not have the permission.")
                                : QString());
    } else if (m_model->rowCount() > 0) {
        m_pages->setCurrentWidget(m_list);
        return;
    } else if (!m_search->text().trimmed().isEmpty()) {
        m_message->showText(
            QStringLiteral("search"), tr("Nothing found"),
            tr("No name in this folder contains “%1”.").arg(m_search->text().trimmed()));
    } else {
        m_message->showText(QStringLiteral("folder-symbolic"), tr("This folder is empty"));
    }
    m_pages->setCurrentWidget(m_message);
}

void DocumentBrowser::updatePath()
{
    // The path begins at the place that lies nearest.
    const DocumentPlace *nearest = &m_places.last();
    for (const DocumentPlace &place : std::as_const(m_places)) {
        const bool holds = m_folder == place.path || m_folder.startsWith(place.path + u'/');
        if (holds && place.path.size() > nearest->path.size())
            nearest = &place;
    }
    QList<PickerPathBar::Step> steps{{nearest->name, nearest->path}};
    QString path = nearest->path == u"/" ? QString() : nearest->path;
    const QStringList below = m_folder.mid(path.size()).split(u'/', Qt::SkipEmptyParts);
    for (const QString &name : below) {
        path += u'/' + name;
        steps.append({displayName(name), path});
    }
    m_path->setSteps(steps);
    m_up->setEnabled(m_folder != u"/");
    m_sidebar->setCurrent(m_folder);
    m_placesPage->setCurrent(m_folder);
}

void DocumentBrowser::tap(const QModelIndex &index)
{
    if (!m_takesInput || !index.isValid())
        return;
    const DocumentEntry &entry = m_model->entry(index);
    if (!entry.isFolder)
        tapDocument(index);
    else if (entry.choice == DocumentChoice::allowed)
        openFolder(m_model->pathOf(index));
}

void DocumentBrowser::open(const QModelIndex &index)
{
    if (!m_takesInput || !index.isValid())
        return;
    if (m_model->entry(index).isFolder)
        tap(index);
    else
        openDocument(index);
}

void DocumentBrowser::goUp()
{
    if (m_folder != u"/")
        openFolder(QFileInfo(m_folder).path());
}

void DocumentBrowser::showPlaces(bool show)
{
    if (show) {
        m_pages->setCurrentWidget(m_placesPage);
        m_placesPage->setFocus(Qt::OtherFocusReason);
    } else {
        showState();
    }
}

void DocumentBrowser::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void DocumentBrowser::keyPressEvent(QKeyEvent *event)
{
    const bool isControl = event->modifiers() == Qt::ControlModifier;
    if (!m_takesInput) {
        QWidget::keyPressEvent(event);
    } else if (isControl && event->key() == Qt::Key_F) {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    } else if (isControl && event->key() == Qt::Key_H) {
        m_model->setShowsHidden(!m_model->showsHidden());
        showState();
    } else if (event->key() == Qt::Key_F5) {
        openFolder(m_folder);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void DocumentBrowser::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
}

} // namespace zelkam
