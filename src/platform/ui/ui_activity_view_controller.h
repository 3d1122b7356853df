#pragma once

#include "platform/ui/ui_activity.h"
#include "platform/ui/ui_bar_button_item.h"
#include "platform/ui/ui_view_controller.h"

namespace zelkam {

class ShareSheet;

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

    /// @param activityItems  the files; what is not a local file is not offered to any activity
    /// @param applicationActivities  offered before the system's own
    UIActivityViewController(const QList<URL> &activityItems,
                             QList<std::shared_ptr<UIActivity>> applicationActivities = {});
    ~UIActivityViewController() override;

    /// Runs once, when the sheet has gone: with the activity, or with an empty type when the user
    /// closed the sheet.
    CompletionHandler completionWithItemsHandler;

    /// On a tablet only; nothing on a phone.
    UIPopoverPresentationController *popoverPresentationController();

    /// The activities that are offered.
    QList<std::shared_ptr<UIActivity>> activities() const;

    void viewDidLoad() override;
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
    double m_shown = 1.0;
};

} // namespace zelkam
