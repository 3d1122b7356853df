#pragma once

#include "platform/ui/share_sheet.h"
#include "platform/ui/ui_activity.h"
#include "platform/ui/ui_bar_button_item.h"
#include "platform/ui/ui_view_controller.h"

namespace zelkam {

/// Where a popover points to. On a window without room for it, or without an anchor, the sheet
/// comes up at the bottom instead.
class UIPopoverPresentationController
{
public:
    void setSourceItem(UIBarButtonItem *item) { m_anchor = item; }
    void setBarButtonItem(UIBarButtonItem *item) { m_anchor = item; }
    UIBarButtonItem *sourceItem() const { return m_anchor; }
    UIBarButtonItem *barButtonItem() const { return sourceItem(); }

private:
    QPointer<UIBarButtonItem> m_anchor;
};

/// The share sheet: what can be done with local files on this machine. A sheet at the bottom on
/// a phone, a popover at its anchor on a tablet. Esc, Cancel or a tap beside it close it.
class UIActivityViewController : public UIViewController
{
    Q_OBJECT

public:
    using CompletionHandler = std::function<void(const QString &activityType, bool completed)>;

    /// @param activityItems  the files; nothing can be done with items that are no local files
    /// @param applicationActivities  offered before the system's own
    UIActivityViewController(const QList<URL> &activityItems,
                             QList<std::shared_ptr<UIActivity>> applicationActivities = {});
    ~UIActivityViewController() override;

    /// Runs once, when the sheet has gone: with the activity, or with an empty type when the user
    /// closed the sheet.
    CompletionHandler completionWithItemsHandler;

    /// On a tablet only; nothing on a phone.
    UIPopoverPresentationController *popoverPresentationController();

    /// What the sheet lists; what this machine cannot do with the items is shown greyed out.
    const QList<std::shared_ptr<UIActivity>> &activities() const { return m_activities; }

    void viewWillAppear(bool animated) override;
    void viewDidLayoutSubviews() override;
    void viewDidDisappear(bool animated) override;

protected:
    QWidget *loadView() override;
    void layoutTransition(double shown) override;

private:
    void run(const std::shared_ptr<UIActivity> &activity);

    QList<URL> m_items;
    QList<std::shared_ptr<UIActivity>> m_activities;
    UIPopoverPresentationController m_popover;
    QPointer<ShareSheet> m_sheet;
    bool m_chosen = false;
};

} // namespace zelkam
