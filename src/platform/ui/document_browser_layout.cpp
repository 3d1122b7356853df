// How the screen of folders is put together.

#include "platform/ui/document_browser.h"
#include "platform/ui/document_fields.h"
#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_controls.h"
#include "platform/ui/ui_document_picker_list.h"
#include "platform/ui/ui_document_picker_message.h"
#include "platform/ui/ui_document_picker_model.h"
#include "platform/ui/ui_document_picker_reader.h"
#include "platform/ui/ui_document_picker_rows.h"
#include "platform/ui/ui_navigation_bar.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace zelkam {

namespace {

constexpr int sidebarFrom = 700;
constexpr int sidebarWidth = 224;

/// A hairline.
class Separator : public QWidget
{
public:
    explicit Separator(Qt::Orientation orientation)
    {
        if (orientation == Qt::Horizontal)
            setFixedHeight(1);
        else
            setFixedWidth(1);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(rect(), separatorColor(palette()));
    }
};

} // namespace

DocumentBrowser::DocumentBrowser(const QString &title, const QList<UTType> &allowedTypes,
                                 DocumentSelection selection)
    : m_places(documentPlaces()),
      m_model(new DocumentPickerModel(selection, this)),
      m_reader(new DocumentFolderReader(allowedTypes, this)),
      m_bar(new UINavigationBar(QRect(0, 0, 100, metrics::tapTarget))),
      m_content(new QWidget(this)),
      m_sidebar(new DocumentPlacesList(m_places)),
      m_placesPage(new DocumentPlacesList(m_places)),
      m_placesButton(new PickerIconButton(QStringLiteral("bookmarks"), tr("Places"))),
      m_up(new PickerIconButton(QStringLiteral("go-up"), tr("Folder above"))),
      m_path(new PickerPathBar),
      m_search(new PickerSearchField),
      m_column(new QVBoxLayout),
      m_pages(new QStackedWidget),
      m_list(new DocumentListView),
      m_message(new DocumentPickerMessage),
      m_footer(new QWidget)
{
    buildLayout(title);
    connectParts();
}

void DocumentBrowser::buildLayout(const QString &title)
{
    auto item = std::make_shared<UINavigationItem>(title);
    item->leftBarButtonItem = std::make_shared<UIBarButtonItem>(
        UIBarButtonSystemItem::cancel, this, [this](QObject *) { emit cancelled(); });
    m_bar->setItems({item}, false);
    m_bar->setFixedHeight(metrics::tapTarget);

    m_list->setModel(m_model);
    m_list->setItemDelegate(new DocumentRowDelegate(*m_model, m_list));
    m_list->setAccessibleName(tr("Documents"));
    for (QWidget *page : {static_cast<QWidget *>(m_list), static_cast<QWidget *>(m_message),
                          static_cast<QWidget *>(m_placesPage)})
        m_pages->addWidget(page);

    auto *pathRow = new QHBoxLayout;
    pathRow->setContentsMargins(metrics::grid, 0, metrics::grid, 0);
    pathRow->setSpacing(0);
    pathRow->addWidget(m_placesButton);
    pathRow->addWidget(m_up);
    pathRow->addWidget(m_path, 1);

    auto *searchRow = new QHBoxLayout;
    searchRow->setContentsMargins(2 * metrics::grid, 4, 2 * metrics::grid, metrics::grid);
    searchRow->addWidget(m_search);

    m_column->setSpacing(0);
    m_column->addLayout(pathRow);
    m_column->addLayout(searchRow);
    m_column->addWidget(new Separator(Qt::Horizontal));
    m_column->addWidget(m_pages, 1);

    m_sidebar->setFixedWidth(sidebarWidth);
    auto *edge = new Separator(Qt::Vertical);
    edge->setObjectName(QStringLiteral("sidebarEdge"));
    auto *body = new QHBoxLayout;
    body->setSpacing(0);
    body->addWidget(m_sidebar);
    body->addWidget(edge);
    body->addLayout(m_column, 1);

    auto *whole = new QVBoxLayout(m_content);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(m_bar);
    whole->addWidget(new Separator(Qt::Horizontal));
    whole->addLayout(body, 1);
    whole->addWidget(new Separator(Qt::Horizontal));
    whole->addWidget(m_footer);
    pinToSafeArea(m_content);

    // The footer's controls come last, as they are made last.
    const QList<QWidget *> order{m_list, m_placesButton, m_up, m_search};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

void DocumentBrowser::putAbovePath(QWidget *widget)
{
    m_column->insertWidget(0, widget);
}

void DocumentBrowser::putAboveList(QWidget *widget)
{
    m_column->insertWidget(m_column->count() - 1, widget);
}

void DocumentBrowser::arrange()
{
    const bool hasSidebar = width() >= sidebarFrom;
    m_sidebar->setVisible(hasSidebar);
    m_content->findChild<QWidget *>(QStringLiteral("sidebarEdge"))->setVisible(hasSidebar);
    m_placesButton->setVisible(!hasSidebar);
    if (hasSidebar && m_pages->currentWidget() == m_placesPage)
        showPlaces(false);
}

} // namespace zelkam
