#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>

namespace zelkam {

/// The buttons that the platform draws and names itself. The values are the platform's.
enum class UIBarButtonSystemItem { done = 0, cancel = 1, add = 4, action = 9, trash = 16 };

/// A button of a bar: what it shows and what it does. The bar makes the widget.
class UIBarButtonItem : public QObject
{
    Q_OBJECT

public:
    /// The receiver is given the item that was tapped.
    using Action = std::function<void(QObject *sender)>;

    /// @param target  the object the action belongs to; the action does not run without it
    UIBarButtonItem(UIBarButtonSystemItem barButtonSystemItem, QObject *target, Action action);
    UIBarButtonItem(const QString &title, QObject *target, Action action);

    std::optional<UIBarButtonSystemItem> systemItem() const { return m_systemItem; }
    /// The word on the button, or for an icon its accessible name.
    QString title() const;
    /// The freedesktop name of the icon; empty for a button that shows its title.
    QString iconName() const;

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /// Runs the action, as a tap does, unless the item is disabled or its target is gone.
    void perform();

    /// The widget that shows the item now, to which a popover is anchored; nothing off a bar.
    QWidget *view() const { return m_view; }

signals:
    void enabledChanged(bool enabled);

private:
    friend class UINavigationBar;

    std::optional<UIBarButtonSystemItem> m_systemItem;
    QString m_title;
    QPointer<QObject> m_target;
    Action m_action;
    QPointer<QWidget> m_view;
    bool m_enabled = true;
};

} // namespace zelkam
