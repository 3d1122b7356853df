#include "platform/ui/ui_document_picker_view.h"

#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_content.h"
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
#include <QLocale>
#include <QPainter>
#include <QStackedWidget>

namespace zelkam {

DocumentPickerView::~DocumentPickerView() = default;

void DocumentPickerView::connectParts()
{
    connect(m_reader, &DocumentFolderReader::finished, this, &DocumentPickerView::show);
    connect(m_reader, &DocumentFolderReader::examined, m_model, &DocumentPickerModel::setChoices);
    connect(m_reader, &DocumentFolderReader::counted, this, [this](int entries) {
        m_message->setDetail(tr("%Ln item(s) so far", nullptr, entries));
    });
    connect(m_checks, &DocumentChecks::checked, m_model, &DocumentPickerModel::setChoice);
    connect(m_checks, &DocumentChecks::settled, this, &DocumentPickerView::checked);
    connect(m_model, &DocumentPickerModel::selectionChanged, this,
            &DocumentPickerView::updateSelection);
    for (DocumentPlacesList *places : {m_sidebar, m_placesPage})
        connect(places, &DocumentPlacesList::chosen, this, &DocumentPickerView::openFolder);
    connect(m_placesButton, &QAbstractButton::clicked, this,
            [this] { showPlaces(m_pages->currentWidget() != m_placesPage); });
    connect(m_up, &QAbstractButton::clicked, this, &DocumentPickerView::goUp);
    connect(m_path, &PickerPathBar::chosen, this, &DocumentPickerView::openFolder);
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
    connect(m_list, &DocumentListView::tapped, this, &DocumentPickerView::tap);
    connect(m_list, &DocumentListView::openRequested, this, &DocumentPickerView::open);
    connect(m_list, &DocumentListView::upRequested, this, &DocumentPickerView::goUp);
    connect(m_list, &DocumentListView::leftUpwards, this,
            [this] { m_search->setFocus(Qt::BacktabFocusReason); });
    connect(m_list, &DocumentListView::typed, this, [this](const QString &text) {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->insert(text);
    });
    connect(m_clear, &QAbstractButton::clicked, m_model, &DocumentPickerModel::clearSelection);
    connect(m_open, &QAbstractButton::clicked, this, &DocumentPickerView::accepted);
}

void DocumentPickerView::openFolder(const QString &path)
{
    m_cameFrom = m_folder;
    m_folder = QDir::cleanPath(path);
    m_isReady = false;
    m_problem.clear();
    m_search->clear();
    m_model->setListing({m_folder, {}, {}});
    updatePath();
    m_message->showLoading();
    m_pages->setCurrentWidget(m_message);
    m_reader->read(m_folder);
}

void DocumentPickerView::show(const DocumentListing &listing)
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
    if (focused && isAncestorOf(focused) && focused != m_search)
        m_list->setFocus(Qt::OtherFocusReason);
    emit ready();
}

void DocumentPickerView::showState()
{
    if (!m_isReady)
        return;
    if (m_problem) {
        const bool isMissing = m_problem == std::errc::no_such_file_or_directory;
        m_message->showText(QStringLiteral("folder-locked"), tr("This folder cannot be opened"),
                            isMissing ? tr("It is no longer there.")
                            : m_problem == std::errc::permission_denied
                                ? tr("You do not have the permission.")
                                : QString::fromStdString(m_problem.message()));
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

void DocumentPickerView::updatePath()
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
        steps.append({name, path});
    }
    m_path->setSteps(steps);
    m_up->setEnabled(m_folder != u"/");
    m_sidebar->setCurrent(m_folder);
    m_placesPage->setCurrent(m_folder);
}

void DocumentPickerView::updateSelection()
{
    const QStringList &selection = m_model->selection();
    const int count = int(selection.size());
    if (selection.isEmpty())
        m_count->setLine(m_multiple ? tr("Nothing selected") : tr("Choose one document"), {},
                         Qt::ElideRight);
    else if (m_multiple)
        m_count->setLine(tr("%Ln selected", nullptr, count), QLocale().toString(count),
                         Qt::ElideRight);
    else
        m_count->setLine(selection.first().section(u'/', -1), {}, Qt::ElideMiddle);
    m_open->setEnabled(!selection.isEmpty() && !m_isOpening);
    m_clear->setVisible(m_multiple && !selection.isEmpty());
}

void DocumentPickerView::tap(const QModelIndex &index)
{
    if (m_isOpening || !index.isValid())
        return;
    const DocumentEntry &entry = m_model->entry(index);
    if (entry.isFolder) {
        if (entry.choice == DocumentChoice::allowed)
            openFolder(m_model->pathOf(index));
        return;
    }
    toggle(index);
}

void DocumentPickerView::toggle(const QModelIndex &index)
{
    m_model->toggle(index);
    if (m_model->isSelected(index))
        m_checks->start(m_model->pathOf(index), m_model->entry(index).choice);
}

bool DocumentPickerView::isChecking() const
{
    return m_checks->isRunning();
}

void DocumentPickerView::open(const QModelIndex &index)
{
    if (m_isOpening || !index.isValid())
        return;
    if (m_model->entry(index).isFolder) {
        tap(index);
        return;
    }
    if (!m_model->isSelected(index))
        toggle(index);
    if (m_model->isSelected(index))
        emit accepted();
}

void DocumentPickerView::goUp()
{
    if (m_folder != u"/")
        openFolder(QFileInfo(m_folder).path());
}

void DocumentPickerView::showPlaces(bool show)
{
    if (show)
        m_pages->setCurrentWidget(m_placesPage);
    else if (m_isReady)
        showState();
    else
        m_pages->setCurrentWidget(m_message);
}

bool DocumentPickerView::select(const QString &name)
{
    const QModelIndex index = m_model->find(name);
    if (!index.isValid())
        return false;
    m_list->setCurrentIndex(index);
    m_list->scrollTo(index);
    if (!m_model->isSelected(index))
        toggle(index);
    return m_model->isSelected(index);
}

QStringList DocumentPickerView::selection() const
{
    return m_model->selection();
}

void DocumentPickerView::showOpening(bool isOpening)
{
    m_isOpening = isOpening;
    if (!isOpening) {
        updateSelection();
        return;
    }
    m_count->setLine(tr("Opening…"), {}, Qt::ElideRight);
    m_open->setEnabled(false);
    m_clear->hide();
    // Painted now: whoever gets the documents may keep this thread for a while.
    m_footer->repaint();
}

void DocumentPickerView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void DocumentPickerView::keyPressEvent(QKeyEvent *event)
{
    const bool isControl = event->modifiers() == Qt::ControlModifier;
    if (isControl && event->key() == Qt::Key_F) {
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

void DocumentPickerView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
}

} // namespace zelkam
