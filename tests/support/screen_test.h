#pragma once

#include "platform/ui/theme.h"
#include "platform/ui/ui_window.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTest>

/// A test of screens: a window of a phone's size with a page in it, and what a person does there.
class ScreenTest : public QObject
{
protected:
    void openWindow()
    {
        zelkam::setMotionReduced(true);
        window = std::make_unique<zelkam::UIWindow>();
        page = std::make_shared<zelkam::UIViewController>();
        window->setRootViewController(page);
        window->resize(390, 844);
        window->makeKeyAndVisible();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
    void closeWindow()
    {
        page.reset();
        window.reset();
    }

    void show(const std::shared_ptr<zelkam::UIViewController> &screen)
    {
        bool isThere = false;
        page->present(screen, true, [&isThere] { isThere = true; });
        QTRY_VERIFY(isThere && !window->isInTransition());
    }
    QWidget *top() const { return window->topMostViewController()->view(); }
    bool isOnTop(const QWidget *screen) const
    {
        return top() == screen && !window->isInTransition();
    }

    QAbstractButton *button(const QString &name) const
    {
        for (auto *button : top()->findChildren<QAbstractButton *>()) {
            if (button->text() == name || button->accessibleName() == name)
                return button;
        }
        return nullptr;
    }
    QLineEdit *field(const QString &name) const
    {
        for (auto *field : top()->findChildren<QLineEdit *>()) {
            if (field->accessibleName() == name)
                return field;
        }
        return nullptr;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window->focusWidget(), key, modifiers);
    }

    std::unique_ptr<zelkam::UIWindow> window;
    std::shared_ptr<zelkam::UIViewController> page;
};
