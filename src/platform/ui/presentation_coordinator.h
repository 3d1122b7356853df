#pragma once

#include "platform/ui/ui_view_controller.h"

#include <QPointer>
#include <QVariantAnimation>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

class InputShield;
class ScreenContainer;
class UIWindow;

/// Runs one window's transitions, one after another, and keeps focus in the top-most screen.
/// UIViewController::present and dismiss say what callers may rely on.
class PresentationCoordinator : public QObject
{
    Q_OBJECT

public:
    using Completion = UIViewController::Completion;

    explicit PresentationCoordinator(UIWindow &window);
    ~PresentationCoordinator() override;

    void present(UIViewController &presenter, std::shared_ptr<UIViewController> screen,
                 bool animated, Completion completion);
    void dismiss(UIViewController &screen, bool animated, Completion completion);

    bool isBusy() const { return m_running.has_value(); }
    /// Takes a screen out from between the one that presented it and the one that it presents.
    void removeFromBelow(UIViewController &screen);
    /// Ends a running transition now, as if its time were over.
    void finishNow();
    /// Removes everything that is presented, at once and without completions of its own.
    void removeAll();
    void layout();

private:
    struct Transition
    {
        QList<std::shared_ptr<UIViewController>> screens; ///< the lowest first
        std::shared_ptr<UIViewController> presenter;
        bool coming = false;
        bool animated = false;
        QList<Completion> completions;
    };

    void presentWaiting(const std::weak_ptr<UIViewController> &presenter,
                        const std::shared_ptr<UIViewController> &screen, bool animated,
                        const Completion &completion);
    void begin(Transition transition);
    void finish();
    void remove(const Transition &transition);
    QPointer<QWidget> takeOut(UIViewController &screen);
    void runNext();
    void apply(double shown);
    void keepFocusInside(QWidget *focused);
    ScreenContainer *containerOf(const UIViewController &screen) const;

    UIWindow &m_window;
    QList<ScreenContainer *> m_containers; ///< the lowest first
    std::unique_ptr<InputShield> m_shield;
    std::optional<Transition> m_running;
    std::deque<std::function<void()>> m_waiting;
    QVariantAnimation m_animation;
};

} // namespace zelkam
