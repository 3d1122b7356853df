#include "platform/ui/ui_bar_button_item.h"

namespace zelkam {

UIBarButtonItem::UIBarButtonItem(UIBarButtonSystemItem barButtonSystemItem, QObject *target,
                                 Action action)
    : m_systemItem(barButtonSystemItem), m_target(target), m_action(std::move(action))
{
}

UIBarButtonItem::UIBarButtonItem(const QString &title, QObject *target, Action action)
    : m_title(title), m_target(target), m_action(std::move(action))
{
}

QString UIBarButtonItem::title() const
{
    if (!m_systemItem)
        return m_title;
    switch (*m_systemItem) {
    case UIBarButtonSystemItem::done:
        return tr("Done");
    case UIBarButtonSystemItem::cancel:
        return tr("Cancel");
    case UIBarButtonSystemItem::add:
        return tr("Add");
    case UIBarButtonSystemItem::action:
        return tr("Share");
    case UIBarButtonSystemItem::trash:
        return tr("Delete");
    }
    return {};
}

QString UIBarButtonItem::iconName() const
{
    if (m_systemItem == UIBarButtonSystemItem::add)
        return QStringLiteral("list-add");
    if (m_systemItem == UIBarButtonSystemItem::action)
        return QStringLiteral("document-share");
    if (m_systemItem == UIBarButtonSystemItem::trash)
        return QStringLiteral("edit-delete");
    return {};
}

void UIBarButtonItem::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    emit enabledChanged(enabled);
}

void UIBarButtonItem::perform()
{
    if (m_enabled && m_target && m_action)
        m_action(this);
}

} // namespace zelkam
