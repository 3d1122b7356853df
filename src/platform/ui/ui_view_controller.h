#pragma once

#include <QList>
#include <QMargins>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

class Bundle;
class NSCoder;
class UIWindow;

/// How a presented screen lies over the one that presents it. The values are the platform's.
enum class UIModalPresentationStyle {
    automatic = -2,
    none = -1,
    fullScreen = 0,
    pageSheet = 1,
    formSheet = 2,
    currentContext = 3,
    custom = 4,
    overFullScreen = 5,
    overCurrentContext = 6,
    popover = 7,
};

enum class UIStatusBarStyle { defaultStyle = 0, lightContent = 1, darkContent = 3 };

/// One screen: an object that owns a widget and learns when it is shown.
///
/// Life-cycle: the widget is made on the first call of view() (`loadView`, then `viewDidLoad`,
/// once). Then `viewWillAppear` and `viewDidAppear` run each time the screen comes into a shown
/// window, `viewWillDisappear` and `viewDidDisappear` each time it leaves. While a screen slides in
/// or out, the "will" call runs before the first step and the "did" call after the last.
///
/// Ownership: a window holds its root controller, a container its children, and a presenting
/// controller what it presents, each by shared_ptr; controllers must be made by make_shared.
/// Pointers to parents and presenters are plain. A controller that is taken out of a hierarchy is
/// released from the event loop, never inside its own call.
///
/// Main thread only, like everything in this folder.
class UIViewController : public QObject, public std::enable_shared_from_this<UIViewController>
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)

public:
    using Completion = std::function<void()>;

    /// The nib name and the bundle are kept for whoever asks; every view is built in code.
    explicit UIViewController(std::optional<QString> nibName = std::nullopt,
                              const Bundle *bundle = nullptr);
    /// From an archive, which may hold "UITitle" and "UINibName" (text).
    explicit UIViewController(const NSCoder &coder);
    ~UIViewController() override;

    const std::optional<QString> &nibName() const { return m_nibName; }

    QString title() const { return m_title; }
    void setTitle(const QString &title);

    /// The screen's widget, made and loaded by the first call. Owned by the controller.
    QWidget *view();
    bool isViewLoaded() const { return m_view != nullptr; }

    UIModalPresentationStyle modalPresentationStyle = UIModalPresentationStyle::automatic;

    /// Presents a screen over this one's window; it covers the window and takes focus and input.
    ///
    /// Animated, it comes up from below; the completion runs when the animation has ended and
    /// the screen's `viewDidAppear` has run. Not animated (or where motion is reduced) this still
    /// happens from the event loop, after the call has returned.
    ///
    /// A child presents through its farthest ancestor, as on the platform. While a transition of
    /// the window runs, the presentation waits for its end, and is then made from the top-most
    /// screen if this one has presented something or has left the window meanwhile: two downloads
    /// that end at once both get their screen and their completion.
    ///
    /// Refused with a warning, and then the completion never runs: this controller is in no
    /// window, it presents already (with no transition running), or the screen is in use.
    void present(std::shared_ptr<UIViewController> viewControllerToPresent, bool animated,
                 Completion completion = {});

    /// Dismisses what this controller presents, with all that lies above it; when it presents
    /// nothing, asks its own presenter to dismiss it. The completion runs after the
    /// `viewDidDisappear` of what was dismissed. A call for a screen that is already leaving only
    /// adds its completion; one during another transition waits. Where there is nothing to
    /// dismiss, nothing happens and the completion does not run.
    void dismiss(bool animated, Completion completion = {});

    /// Dismisses this screen itself (for a child: the screen it is part of) with all that lies
    /// above it. For a screen that is done: what something else has put over it meanwhile must not
    /// be all that goes, and leave it behind. Otherwise like dismiss().
    void leave(bool animated, Completion completion = {});

    /// Takes this screen back for good, at once and without motion: with all that lies above it
    /// when it is presented, and before it has come when it still waits for another transition.
    void withdraw();

    /// Takes a presented screen out from below the one that it presents, which stays in sight. With
    /// nothing above it, or while a transition runs, nothing happens.
    void removeFromBelow();

    /// What this controller, or one of its ancestors, presents; from the call of present() until
    /// the end of the dismissal.
    std::shared_ptr<UIViewController> presentedViewController() const;
    /// The controller that presented this one or its farthest ancestor.
    UIViewController *presentingViewController() const;
    bool isBeingPresented() const { return m_phase == Phase::coming; }
    bool isBeingDismissed() const { return m_phase == Phase::leaving; }

    /// Makes a controller a child. The caller then puts the child's view into its own and calls
    /// didMove() of the child. A child of another parent is taken from it first.
    void addChild(std::shared_ptr<UIViewController> childController);
    /// To be called when the child's view is in place: a child of a visible parent appears now.
    virtual void didMove(UIViewController *toParent);
    /// Takes the child out of its parent and its view out of the parent's.
    void removeFromParent();
    UIViewController *parentViewController() const { return m_parent; }
    const QList<std::shared_ptr<UIViewController>> &children() const { return m_children; }

    /// The part of the view's edges that the device covers (a status bar, rounded corners).
    QMargins safeAreaInsets() const;
    /// The window that shows this controller, or nothing.
    UIWindow *window() const;
    bool isVisible() const { return m_visible; }

    /// Asks the top-most screen for its status bar style and tells the application object.
    void setNeedsStatusBarAppearanceUpdate();
    virtual UIStatusBarStyle preferredStatusBarStyle() const;

    virtual void viewDidLoad();
    virtual void viewWillAppear(bool animated);
    virtual void viewDidAppear(bool animated);
    virtual void viewWillDisappear(bool animated);
    virtual void viewDidDisappear(bool animated);
    /// After the view got another size or other safe-area insets.
    virtual void viewDidLayoutSubviews();
    /// For a host that learns that memory is short, to call. As it stands, nothing is freed.
    virtual void didReceiveMemoryWarning();

    /// Esc (or the device's Back key) reached this top-most screen. Returns whether it was used.
    /// As it stands, a presented screen is dismissed.
    virtual bool cancelOperation();
    /// Enter reached this top-most screen and no control took it. Returns whether it was used.
    virtual bool acceptOperation();

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void titleChanged(const QString &title);

protected:
    /// Makes the widget. As it stands, an empty one filled with the palette's window colour.
    virtual QWidget *loadView();
    /// Draws a transition's state on the view, which fills its window: 0 is gone, 1 is in place.
    /// As it stands, the view slides over the window's whole height.
    virtual void layoutTransition(double shown);

    /// Takes a child's view out of this one's, with the child's "disappear" calls; the child stays.
    void hideChild(UIViewController &child);

private:
    friend class UIWindow;
    friend class PresentationCoordinator;
    enum class Phase { resting, coming, leaving };

    void beginAppearance(bool appearing, bool animated);
    void endAppearance(bool appearing, bool animated);
    UIViewController *farthestAncestor() const;

    std::optional<QString> m_nibName;
    QString m_title;
    QPointer<QWidget> m_view;
    QList<std::shared_ptr<UIViewController>> m_children;
    std::shared_ptr<UIViewController> m_presented;
    QPointer<UIViewController> m_parent;
    QPointer<UIViewController> m_presenting;
    Phase m_phase = Phase::resting;
    bool m_visible = false;
    bool m_withdrawn = false;
};

} // namespace zelkam
