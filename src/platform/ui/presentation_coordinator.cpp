#include "platform/ui/presentation_coordinator.h"

#include "platform/ui/release_later.h"
#include "platform/ui/screen_container.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_window.h"

#include <QApplication>
#include <QEasingCurve>
#include <QTimer>
#include <utility>

namespace zelkam {

namespace {

/// The platform's styles that take the presenter's view off the screen; the others leave it.
bool hidesPresenter(const UIViewController &screen)
{
    return screen.modalPresentationStyle == UIModalPresentationStyle::fullScreen ||
           screen.modalPresentationStyle == UIModalPresentationStyle::currentContext;
}

} // namespace

PresentationCoordinator::PresentationCoordinator(UIWindow &window)
    : m_window(window), m_shield(std::make_unique<InputShield>(&window))
{
    m_animation.setEasingCurve(QEasingCurve::OutCubic);
    m_animation.setDuration(int(transitionDuration.count()));
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { apply(value.toDouble()); });
    // Through the event loop: what the end sets off may delete the window.
    connect(&m_animation, &QVariantAnimation::finished, this, &PresentationCoordinator::finish,
            Qt::QueuedConnection);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *now) { keepFocusInside(now); });
}

PresentationCoordinator::~PresentationCoordinator() = default;

void PresentationCoordinator::present(UIViewController &presenter,
                                      std::shared_ptr<UIViewController> screen, bool animated,
                                      Completion completion)
{
    if (m_running) {
        m_waiting.push_back([this, weak = presenter.weak_from_this(), screen = std::move(screen),
                             animated, completion = std::move(completion)] {
            presentWaiting(weak, screen, animated, completion);
        });
        return;
    }
    if (screen->m_withdrawn)
        return;
    if (presenter.m_presented) {
        qWarning("A screen that already presents another was asked to present; ignored.");
        return;
    }
    if (screen->m_presenting || screen->m_parent || screen->window()) {
        qWarning("A screen that is in use was to be presented; ignored.");
        return;
    }
    presenter.m_presented = screen;
    screen->m_presenting = &presenter;
    screen->m_phase = UIViewController::Phase::coming;
    QWidget *focused = m_window.focusWidget();
    m_containers.append(new ScreenContainer(screen->view(), focused, &m_window));
    begin({{screen}, presenter.shared_from_this(), true, animated, {std::move(completion)}});
}

void PresentationCoordinator::presentWaiting(const std::weak_ptr<UIViewController> &presenter,
                                             const std::shared_ptr<UIViewController> &screen,
                                             bool animated, const Completion &completion)
{
    UIViewController *from = presenter.lock().get();
    if (!from || from->window() != &m_window || from->m_presented)
        from = m_window.topMostViewController();
    if (from)
        present(*from, screen, animated, completion);
    else
        qWarning("The window lost its screens before another could be presented; ignored.");
}

void PresentationCoordinator::dismiss(UIViewController &screen, bool animated,
                                      Completion completion)
{
    if (m_running) {
        const auto target = screen.shared_from_this();
        if (!m_running->coming && m_running->screens.contains(target)) {
            m_running->completions.append(std::move(completion));
            return;
        }
        m_waiting.push_back([this, target, animated, completion = std::move(completion)] {
            if (target->m_presenting && target->window() == &m_window)
                dismiss(*target, animated, completion);
        });
        return;
    }
    Transition transition;
    transition.presenter = screen.m_presenting->shared_from_this();
    for (auto each = screen.shared_from_this(); each; each = each->m_presented)
        transition.screens.append(each);
    for (const auto &each : std::as_const(transition.screens))
        each->m_phase = UIViewController::Phase::leaving;
    transition.animated = animated;
    transition.completions.append(std::move(completion));
    begin(std::move(transition));
}

void PresentationCoordinator::begin(Transition transition)
{
    m_running = std::move(transition);
    const auto screens = m_running->screens;
    const auto presenter = m_running->presenter;
    const bool coming = m_running->coming;
    const bool animated = m_running->animated;

    if (hidesPresenter(*screens.first()))
        presenter->beginAppearance(!coming, animated);
    for (auto screen = screens.crbegin(); screen != screens.crend(); ++screen)
        (*screen)->beginAppearance(coming, animated);

    apply(coming ? 0.0 : 1.0);
    if (coming) {
        m_containers.last()->show();
        m_containers.last()->raise();
    }
    m_shield->setGeometry(m_window.rect());
    m_shield->show();
    m_shield->raise();
    m_shield->setFocus(Qt::OtherFocusReason);

    if (animated && !isMotionReduced()) {
        m_animation.setStartValue(coming ? 0.0 : 1.0);
        m_animation.setEndValue(coming ? 1.0 : 0.0);
        m_animation.start();
    } else {
        QTimer::singleShot(0, this, &PresentationCoordinator::finish);
    }
}

void PresentationCoordinator::apply(double shown)
{
    if (!m_running)
        return;
    for (const auto &screen : std::as_const(m_running->screens))
        screen->layoutTransition(shown);
}

void PresentationCoordinator::finishNow()
{
    m_animation.stop();
    finish();
}

void PresentationCoordinator::finish()
{
    if (!m_running || m_animation.state() == QAbstractAnimation::Running)
        return; // ended by finishNow() before the queued call came
    const Transition ended = std::move(*m_running);
    m_running.reset();
    const QPointer<PresentationCoordinator> self(this);

    // A widget that is hidden with the focus hands it on as the Tab key would, and a page that is
    // tabbed into scrolls to its first control.
    m_shield->clearFocus();
    m_shield->hide();
    if (ended.coming) {
        const auto &screen = ended.screens.first();
        screen->layoutTransition(1.0);
        screen->m_phase = UIViewController::Phase::resting;
        screen->endAppearance(true, ended.animated);
        if (ScreenContainer *container = containerOf(*screen))
            container->takeFocus(); // now, as viewDidAppear may have made the controls
        if (hidesPresenter(*screen))
            ended.presenter->endAppearance(false, ended.animated);
        if (self)
            emit m_window.screenDidAppear(screen.get());
    } else {
        remove(ended);
        if (hidesPresenter(*ended.screens.first()))
            ended.presenter->endAppearance(true, ended.animated);
    }
    for (const auto &completion : ended.completions) {
        if (completion)
            completion();
    }
    if (self)
        runNext();
}

QPointer<QWidget> PresentationCoordinator::takeOut(UIViewController &screen)
{
    QPointer<QWidget> focusBefore;
    if (ScreenContainer *container = containerOf(screen)) {
        focusBefore = container->focusBefore();
        m_containers.removeOne(container);
        container->hide();
        screen.view()->setParent(nullptr);
        container->deleteLater();
    }
    if (screen.m_presenting)
        screen.m_presenting->m_presented.reset();
    screen.m_presenting = nullptr;
    screen.m_phase = UIViewController::Phase::resting;
    return focusBefore;
}

void PresentationCoordinator::removeFromBelow(UIViewController &screen)
{
    const auto self = screen.shared_from_this();
    const QPointer<UIViewController> presenter = screen.m_presenting;
    screen.beginAppearance(false, false);
    const auto above = std::exchange(screen.m_presented, nullptr);
    const QPointer<QWidget> focusBefore = takeOut(screen);
    if (ScreenContainer *container = containerOf(*above))
        container->setFocusBefore(focusBefore);
    presenter->m_presented = above;
    above->m_presenting = presenter;
    screen.endAppearance(false, false);
    emit m_window.screenDidDisappear(&screen);
    releaseLater(self);
}

void PresentationCoordinator::remove(const Transition &transition)
{
    const auto &screens = transition.screens;
    QPointer<QWidget> focus;
    for (auto screen = screens.crbegin(); screen != screens.crend(); ++screen)
        focus = takeOut(**screen);
    if (focus)
        focus->setFocus(Qt::OtherFocusReason);
    else if (!m_containers.isEmpty())
        m_containers.last()->takeFocus();
    for (auto screen = screens.crbegin(); screen != screens.crend(); ++screen) {
        (*screen)->endAppearance(false, transition.animated);
        emit m_window.screenDidDisappear(screen->get());
    }
    // The dismissed screens may be on the call stack (a button of theirs began all this).
    for (const auto &screen : screens)
        releaseLater(screen);
}

void PresentationCoordinator::removeAll()
{
    UIViewController *root = m_window.rootViewController().get();
    if (!root || !root->m_presented)
        return;
    Transition all;
    for (auto each = root->m_presented; each; each = each->m_presented)
        all.screens.append(each);
    for (auto screen = all.screens.crbegin(); screen != all.screens.crend(); ++screen)
        (*screen)->beginAppearance(false, false);
    remove(all);
}

void PresentationCoordinator::runNext()
{
    while (!m_running && !m_waiting.empty()) {
        const auto next = std::move(m_waiting.front());
        m_waiting.pop_front();
        next();
    }
}

void PresentationCoordinator::layout()
{
    for (ScreenContainer *container : std::as_const(m_containers))
        container->setGeometry(m_window.rect());
    m_shield->setGeometry(m_window.rect());
    if (m_running && m_animation.state() == QAbstractAnimation::Running)
        apply(m_animation.currentValue().toDouble());
}

void PresentationCoordinator::keepFocusInside(QWidget *focused)
{
    // A page in a web view below, for instance, may take the focus by script.
    if (!focused || !m_window.isAncestorOf(focused))
        return;
    QWidget *owner = m_running                ? static_cast<QWidget *>(m_shield.get())
                     : m_containers.isEmpty() ? nullptr
                                              : m_containers.last();
    if (!owner || owner == focused || owner->isAncestorOf(focused))
        return;
    QTimer::singleShot(0, this, [this] {
        QWidget *now = QApplication::focusWidget();
        if (!now || !m_window.isAncestorOf(now))
            return;
        if (m_running)
            m_shield->setFocus(Qt::OtherFocusReason);
        else if (!m_containers.isEmpty() && !m_containers.last()->isAncestorOf(now))
            m_containers.last()->takeFocus();
    });
}

ScreenContainer *PresentationCoordinator::containerOf(const UIViewController &screen) const
{
    for (ScreenContainer *container : m_containers) {
        if (screen.m_view && container->screenView() == screen.m_view)
            return container;
    }
    return nullptr;
}

} // namespace zelkam
