#include "platform/ui/ui_navigation_bar.h"

#include "platform/ui/theme.h"

#include <QAbstractButton>
#include <QEvent>
#include <QPainter>
#include <QVariantAnimation>

namespace zelkam {

namespace {

/// Draws its item as the platform does: a word or an icon in the accent colour, no frame.
class BarButton : public QAbstractButton
{
public:
    BarButton(UIBarButtonItem &item, QWidget *parent) : QAbstractButton(parent)
    {
        const bool strong = item.systemItem() == UIBarButtonSystemItem::done;
        m_icon = item.iconName();
        if (tintedIcon(m_icon, metrics::icon, Qt::black, 1.0).isNull())
            m_icon.clear(); // without the icon theme, the word has to do
        QFont own = themeFont(TextRole::body, font());
        own.setWeight(strong ? QFont::DemiBold : QFont::Normal);
        setFont(own);
        setText(item.title());
        setAccessibleName(item.title());
        if (!m_icon.isEmpty())
            setToolTip(item.title());
        setEnabled(item.isEnabled());
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
        connect(&item, &UIBarButtonItem::enabledChanged, this, &QWidget::setEnabled);
        connect(this, &QAbstractButton::clicked, &item, &UIBarButtonItem::perform);
    }

    QSize sizeHint() const override
    {
        const int content =
            m_icon.isEmpty() ? fontMetrics().horizontalAdvance(text()) : metrics::icon;
        return {qMax(metrics::tapTarget, content + 4 * metrics::grid), metrics::tapTarget};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QColor color = isEnabled() ? accentColor(palette()) : secondaryTextColor(palette());
        if (isDown())
            color.setAlphaF(0.5F);
        const QPixmap icon = m_icon.isEmpty()
                                 ? QPixmap()
                                 : tintedIcon(m_icon, metrics::icon, color, devicePixelRatioF());
        if (m_icon.isEmpty()) {
            painter.setPen(color);
            painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
        } else {
            painter.drawPixmap(
                QPointF((width() - metrics::icon) / 2.0, (height() - metrics::icon) / 2.0), icon);
        }
        if (showsFocus(*this))
            drawFocusRing(painter, QRectF(rect()).adjusted(5, 5, -5, -5), accentColor(palette()));
    }

private:
    QString m_icon;
};

} // namespace

UINavigationBar::UINavigationBar(const QRect &frame, QWidget *parent) : QWidget(parent)
{
    setGeometry(frame);
    setAutoFillBackground(true);
}

UINavigationBar::~UINavigationBar() = default;

void UINavigationBar::setItems(const QList<std::shared_ptr<UINavigationItem>> &items, bool animated)
{
    m_items = items;
    // A tap may be what replaces the buttons.
    for (const QPointer<QWidget> &old : {m_left, m_right}) {
        if (old) {
            old->hide();
            old->deleteLater();
        }
    }
    const UINavigationItem *top = topItem();
    m_left = top && top->leftBarButtonItem ? makeButton(*top->leftBarButtonItem) : nullptr;
    m_right = top && top->rightBarButtonItem ? makeButton(*top->rightBarButtonItem) : nullptr;
    layoutButtons();
    setAccessibleName(top ? top->title : QString());

    m_titleOpacity = 1.0;
    if (animated && isVisible() && !isMotionReduced()) {
        m_titleOpacity = 0.0;
        auto *fade = new QVariantAnimation(this);
        fade->setDuration(int(transitionDuration.count()));
        fade->setStartValue(0.0);
        fade->setEndValue(1.0);
        connect(fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
            m_titleOpacity = value.toDouble();
            update();
        });
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }
    update();
}

QWidget *UINavigationBar::makeButton(UIBarButtonItem &item)
{
    auto *button = new BarButton(item, this);
    item.m_view = button;
    button->show();
    return button;
}

void UINavigationBar::layoutButtons()
{
    const int top = (height() - 1 - metrics::tapTarget) / 2;
    if (m_left)
        m_left->setGeometry({{0, top}, m_left->sizeHint()});
    if (m_right) {
        const QSize size = m_right->sizeHint();
        m_right->setGeometry({{width() - size.width(), top}, size});
    }
}

void UINavigationBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(QRectF(0, height() - 1, width(), 1), separatorColor(palette()));
    const UINavigationItem *top = topItem();
    if (!top)
        return;
    painter.setOpacity(m_titleOpacity);
    painter.setFont(themeFont(TextRole::title, font()));
    painter.setPen(palette().color(QPalette::WindowText));
    QString title = top->title;
    title.replace(u'\n', u' ');
    const int left = m_left ? m_left->width() : metrics::grid;
    const int right = m_right ? m_right->width() : metrics::grid;
    // The same room on both sides keeps the title in the middle of the bar.
    const int side = qMax(left, right);
    QRect room = rect().adjusted(side, 0, -side, -1);
    if (painter.fontMetrics().horizontalAdvance(title) > room.width())
        room = rect().adjusted(left, 0, -right, -1);
    painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(title, top->titleElision, room.width()));
}

void UINavigationBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutButtons();
}

} // namespace zelkam
