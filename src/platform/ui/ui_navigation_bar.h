#pragma once

#include "platform/ui/ui_bar_button_item.h"

#include <QList>
#include <QString>
#include <QWidget>
#include <memory>

namespace zelkam {

/// What a navigation bar shows for one screen. Set the fields before it is given to a bar.
struct UINavigationItem
{
    explicit UINavigationItem(QString itemTitle) : title(std::move(itemTitle)) {}

    QString title;
    /// Where a title goes that has no room. The middle suits a file's name, whose extension stays.
    Qt::TextElideMode titleElision = Qt::ElideRight;
    std::shared_ptr<UIBarButtonItem> leftBarButtonItem;
    std::shared_ptr<UIBarButtonItem> rightBarButtonItem;
};

/// A bar with a title in the middle and a button at each end. A title that is too long for the
/// middle takes all the room between the buttons, and is elided only when that is not enough. The
/// bar keeps the frame that it was given; 44 points is its height. The title is plain text.
class UINavigationBar : public QWidget
{
    Q_OBJECT

public:
    explicit UINavigationBar(const QRect &frame, QWidget *parent = nullptr);
    ~UINavigationBar() override;

    /// Shows the last item of the list. The bar holds the items.
    /// @param animated  whether the title fades in; not on a bar that is not on the screen yet
    void setItems(const QList<std::shared_ptr<UINavigationItem>> &items, bool animated);
    const QList<std::shared_ptr<UINavigationItem>> &items() const { return m_items; }
    UINavigationItem *topItem() const { return m_items.isEmpty() ? nullptr : m_items.last().get(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layoutButtons();
    QWidget *makeButton(UIBarButtonItem &item);

    QList<std::shared_ptr<UINavigationItem>> m_items;
    QPointer<QWidget> m_left;
    QPointer<QWidget> m_right;
    double m_titleOpacity = 1.0;
};

} // namespace zelkam
