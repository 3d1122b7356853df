#pragma once

#include "platform/ui/ui_view_controller.h"

namespace zelkam {

class UINavigationBar;

/// A stack of screens under a navigation bar; the last one shows, with a Back button when there
/// is one below it.
class UINavigationController : public UIViewController
{
    Q_OBJECT

public:
    explicit UINavigationController(std::shared_ptr<UIViewController> rootViewController);

    void pushViewController(std::shared_ptr<UIViewController> viewController, bool animated);
    /// Takes the last screen off and returns it; nothing when only the root is left.
    std::shared_ptr<UIViewController> popViewController(bool animated);

    const QList<std::shared_ptr<UIViewController>> &viewControllers() const { return children(); }
    UIViewController *topViewController() const;
    /// What this controller presents, otherwise the last of the stack.
    UIViewController *visibleViewController() const;

    void setNavigationBarHidden(bool hidden);

    void viewDidLoad() override;
    void viewDidLayoutSubviews() override;
    bool cancelOperation() override;

private:
    void showTop();

    QPointer<UINavigationBar> m_bar;
    QMetaObject::Connection m_titleConnection;
    bool m_barHidden = false;
};

} // namespace zelkam
