#include "platform/ui/ui_activity_view_controller.h"

#include "platform/foundation/file_name.h"
#include "platform/foundation/file_reader.h"
#include "platform/ui/file_info_view.h"
#include "platform/ui/share_sheet.h"
#include "platform/ui/system_activities.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_window.h"

#include <QFileInfo>
#include <QMimeDatabase>

namespace zelkam {

namespace {

ShareSheet::Head headFor(const QList<URL> &items)
{
    if (items.size() != 1)
        return {{QStringLiteral("document-multiple")},
                UIActivityViewController::tr("%n file(s)", nullptr, int(items.size())),
                {}};
    PreviewFile file;
    const auto path = localPath(items.first());
    const QFileInfo info(path.value_or(QString()));
    file.name = items.first().lastPathComponent();
    if (info.isFile()) {
        file.size = info.size();
        file.type = QMimeDatabase().mimeTypeForFile(info);
    }
    return {kindIconNames(file.type), displayName(file.name), kindAndSize(file)};
}

} // namespace

UIActivityViewController::UIActivityViewController(
    const QList<URL> &activityItems, QList<std::shared_ptr<UIActivity>> applicationActivities)
    : m_items(activityItems), m_activities(std::move(applicationActivities))
{
    modalPresentationStyle = UIModalPresentationStyle::popover;
    m_activities.append(systemActivities());
}

UIActivityViewController::~UIActivityViewController() = default;

UIPopoverPresentationController *UIActivityViewController::popoverPresentationController()
{
    return UIDevice::current().userInterfaceIdiom() == UIUserInterfaceIdiom::pad ? &m_popover
                                                                                 : nullptr;
}

QWidget *UIActivityViewController::loadView()
{
    QList<ShareRow> rows;
    for (const auto &activity : std::as_const(m_activities)) {
        rows.append({activity->activityTitle(), activity->activityIconName(),
                     activity->canPerform(m_items)});
    }
    m_sheet = new ShareSheet(headFor(m_items), rows);
    connect(m_sheet, &ShareSheet::cancelled, this, [this] { dismiss(true); });
    connect(m_sheet, &ShareSheet::chosen, this, [this](int row) { run(m_activities.at(row)); });
    return m_sheet;
}

void UIActivityViewController::viewDidLayoutSubviews()
{
    const UIBarButtonItem *item = m_popover.sourceItem();
    const QWidget *source = item ? item->view() : nullptr;
    if (!popoverPresentationController() || !source || !source->isVisible() ||
        source->window() != m_sheet->window()) {
        m_sheet->setAnchor(std::nullopt);
        return;
    }
    const QPoint corner = m_sheet->mapFromGlobal(source->mapToGlobal(QPoint()));
    m_sheet->setAnchor(QRect(corner, source->size()));
}

void UIActivityViewController::layoutTransition(double shown)
{
    m_sheet->setShown(shown);
}

void UIActivityViewController::viewWillAppear(bool animated)
{
    UIViewController::viewWillAppear(animated);
    viewDidLayoutSubviews();
}

void UIActivityViewController::viewDidDisappear(bool animated)
{
    UIViewController::viewDidDisappear(animated);
    if (!m_chosen && completionWithItemsHandler)
        completionWithItemsHandler({}, false);
}

void UIActivityViewController::run(const std::shared_ptr<UIActivity> &activity)
{
    if (m_chosen)
        return;
    m_chosen = true;
    // The sheet goes first; what the activity shows lies on the window then.
    dismiss(true, [activity, items = m_items, handler = completionWithItemsHandler,
                   parent = QPointer<QWidget>(window())] {
        activity->perform(items, parent, [activity, handler](bool completed) {
            if (handler)
                handler(activity->activityType(), completed);
        });
    });
}

} // namespace zelkam
