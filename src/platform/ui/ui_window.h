#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

namespace zelkam {

class PresentationCoordinator;
class UIViewController;

/// The widget in which screens are shown: the root controller's view fills it, presented screens
/// lie above. It may be a top-level window or lie in a host's own.
///
/// Keys and clicks reach the top-most screen only: focus stays inside it, Tab goes round in it,
/// Esc (Back) and Enter go to its cancelOperation() and acceptOperation() when no control took
/// them. While a screen slides, input is swallowed.
///
/// A device's covered edges are given as the dynamic property "safeAreaInsets" (QMargins, points)
/// of this widget.
class UIWindow : public QWidget
{
    Q_OBJECT

public:
    explicit UIWindow(QWidget *parent = nullptr);
    ~UIWindow() override;

    /// The root screen; setting another one removes the old one and all it presents.
    void setRootViewController(std::shared_ptr<UIViewController> rootViewController);
    const std::shared_ptr<UIViewController> &rootViewController() const { return m_root; }

    /// Makes this the application's key window and shows it.
    void makeKeyAndVisible();

    void setSafeAreaInsets(const QMargins &insets);

    /// The last screen of the chain of presentations that starts at the root; nothing without
    /// a root. One that is leaving does not count.
    UIViewController *topMostViewController() const;

    /// Whether a screen is sliding in or out.
    bool isInTransition() const;

signals:
    /// A screen (root or presented, not a child) has appeared, its viewDidAppear has run.
    void screenDidAppear(zelkam::UIViewController *screen);
    /// A presented screen has gone; the pointer is still valid during the signal.
    void screenDidDisappear(zelkam::UIViewController *screen);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    friend class UIViewController;
    friend class PresentationCoordinator;
    PresentationCoordinator &coordinator() { return *m_coordinator; }
    void appear();

    std::shared_ptr<UIViewController> m_root;
    std::unique_ptr<PresentationCoordinator> m_coordinator;
};

} // namespace zelkam
