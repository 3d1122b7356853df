#pragma once

#include "platform/ui/ui_view_controller.h"

#include <QTabBar>

namespace zelkam {

/// Several screens of which one, the selected, shows above a bar of tabs.
class UITabBarController : public UIViewController
{
    Q_OBJECT

public:
    UITabBarController() = default;

    /// Replaces the screens and selects the first, if there is one.
    void setViewControllers(const QList<std::shared_ptr<UIViewController>> &viewControllers);
    const QList<std::shared_ptr<UIViewController>> &viewControllers() const { return children(); }

    /// The selected screen, or nothing when there are no screens.
    UIViewController *selectedViewController() const;
    int selectedIndex() const { return m_selected; }
    /// Selects a screen; an index out of range changes nothing.
    void setSelectedIndex(int index);

    void viewDidLoad() override;
    void viewDidLayoutSubviews() override;

private:
    void fillBar();
    void showSelected();

    QPointer<QTabBar> m_bar;
    int m_selected = -1;
};

} // namespace zelkam
