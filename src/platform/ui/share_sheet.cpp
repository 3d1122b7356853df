#include "platform/ui/share_sheet.h"

#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <QVBoxLayout>

namespace zelkam {

namespace {

constexpr int headHeight = 80;
constexpr int widestSheet = 560;
constexpr int popoverWidth = 320;
constexpr int arrow = 10;
constexpr int gap = metrics::grid;
constexpr float dimming = 0.4F;

/// A row of the panel: an icon and a title, or only a centred title for Cancel.
class SheetRow : public QAbstractButton
{
public:
    explicit SheetRow(const ShareRow &row) : m_iconName(row.iconName)
    {
        setText(row.title);
        setEnabled(row.enabled);
        setFixedHeight(metrics::row);
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
        setFont(themeFont(TextRole::body, font()));
    }

    QSize sizeHint() const override
    {
        return {fontMetrics().horizontalAdvance(text()) + metrics::icon + 6 * gap, metrics::row};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const bool keyboard = showsFocus(*this);
        if (isEnabled() && (isDown() || underMouse() || keyboard)) {
            QColor shade = palette().color(QPalette::WindowText);
            shade.setAlphaF(isDown() ? 0.12F : 0.06F);
            painter.fillRect(rect(), shade);
        }
        const QColor text = isEnabled() ? palette().color(QPalette::WindowText)
                                        : palette().color(QPalette::Disabled, QPalette::WindowText);
        if (m_iconName.isEmpty()) {
            QFont strong = font();
            strong.setWeight(QFont::DemiBold);
            painter.setFont(strong);
            painter.setPen(accentColor(palette()));
            painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, this->text());
        } else {
            const QColor tint = isEnabled() ? accentColor(palette()) : text;
            painter.drawPixmap(QPointF(2 * gap, (height() - metrics::icon) / 2.0),
                               tintedIcon(m_iconName, metrics::icon, tint, devicePixelRatioF()));
            painter.setPen(text);
            painter.drawText(rect().adjusted(2 * gap + metrics::icon + 2 * gap, 0, -2 * gap, 0),
                             Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, this->text());
            painter.fillRect(QRectF(2 * gap + metrics::icon + 2 * gap, 0, width(), 1),
                             separatorColor(palette()));
        }
        if (keyboard)
            drawFocusRing(painter, QRectF(rect()).adjusted(4, 4, -4, -4), accentColor(palette()));
    }

private:
    QString m_iconName;
};

} // namespace

ShareSheet::ShareSheet(Head head, const QList<ShareRow> &rows)
    : m_head(std::move(head)),
      m_rows(new QScrollArea(this)),
      m_cancel(new SheetRow({tr("Cancel"), {}, true}))
{
    auto *list = new QWidget;
    auto *column = new QVBoxLayout(list);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (int index = 0; index < rows.size(); ++index) {
        auto *row = new SheetRow(rows.at(index));
        column->addWidget(row);
        connect(row, &QAbstractButton::clicked, this, [this, index] { emit chosen(index); });
    }
    m_rowsHeight = int(rows.size()) * metrics::row;
    m_rows->setWidget(list);
    m_rows->setWidgetResizable(true);
    m_rows->setFrameShape(QFrame::NoFrame);
    m_rows->setFocusPolicy(Qt::NoFocus);
    m_rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The panel behind is drawn here, with its round corners.
    m_rows->viewport()->setAutoFillBackground(false);
    list->setAutoFillBackground(false);
    m_cancel->setParent(this);
    connect(static_cast<QAbstractButton *>(m_cancel), &QAbstractButton::clicked, this,
            &ShareSheet::cancelled);
    setAccessibleName(m_head.title);
    setAccessibleDescription(m_head.subtitle);
}

void ShareSheet::setAnchor(const std::optional<QRect> &anchor)
{
    m_anchor = anchor;
    layoutPanel();
}

void ShareSheet::setShown(double shown)
{
    m_shown = shown;
    layoutPanel();
}

bool ShareSheet::isPopover() const
{
    return m_anchor && width() >= popoverWidth + 2 * gap;
}

void ShareSheet::layoutPanel()
{
    const QMargins safe = safeAreaInsets(this);
    const bool popover = isPopover();
    m_cancel->setVisible(!popover);
    const double below = popover ? gap : gap + metrics::row + safe.bottom();
    const double room = height() - safe.top() - 2 * gap - headHeight - below;
    const double rows = qMin<double>(m_rowsHeight, qMax<double>(metrics::row, room));
    const double panelHeight = headHeight + rows + below;
    const double panelWidth = popover ? popoverWidth : qMin(widestSheet, width());
    if (popover) {
        const QPoint middle = m_anchor->center();
        const double left =
            qBound<double>(gap, middle.x() - panelWidth / 2.0, width() - panelWidth - gap);
        const double under = m_anchor->bottom() + 1 + arrow;
        const bool fits = under + panelHeight + gap <= height() - safe.bottom();
        m_panel = QRectF(left, fits ? under : m_anchor->top() - arrow - panelHeight, panelWidth,
                         panelHeight);
    } else {
        m_panel = QRectF((width() - panelWidth) / 2.0, height() - m_shown * panelHeight, panelWidth,
                         panelHeight);
    }
    m_rows->setGeometry(
        QRectF(m_panel.left(), m_panel.top() + headHeight, panelWidth, rows).toAlignedRect());
    m_cancel->setGeometry(int(m_panel.left()), int(m_panel.top() + headHeight + rows + gap),
                          int(panelWidth), metrics::row);
    // A popover fades; its rows, being widgets, come with its last step.
    m_rows->setVisible(!popover || m_shown >= 1.0);
    update();
}

void ShareSheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor::fromRgbF(0, 0, 0, dimming * float(m_shown)));
    QPainterPath shape;
    const bool popover = isPopover();
    if (popover) {
        painter.setOpacity(m_shown);
        shape.addRoundedRect(m_panel, metrics::corner, metrics::corner);
        const double x =
            qBound<double>(m_panel.left() + 2 * metrics::corner, m_anchor->center().x() + 0.5,
                           m_panel.right() - 2 * metrics::corner);
        const bool isBelow = m_panel.top() > m_anchor->center().y();
        const double base = isBelow ? m_panel.top() + 1 : m_panel.bottom() - 1;
        const double tip = isBelow ? base - arrow : base + arrow;
        QPainterPath pointer;
        pointer.addPolygon(QPolygonF({{x - arrow, base}, {x, tip}, {x + arrow, base}}));
        pointer.closeSubpath();
        shape = shape.united(pointer);
    } else {
        // Round at the top only: the panel goes on below the edge of the screen.
        shape.addRoundedRect(m_panel.adjusted(0, 0, 0, metrics::corner), metrics::corner,
                             metrics::corner);
    }
    painter.fillPath(shape, palette().color(QPalette::Base));
    if (isDark(palette()))
        painter.strokePath(shape, separatorColor(palette()));
    drawHead(painter, {m_panel.topLeft(), QSizeF(m_panel.width(), headHeight)});
    if (!popover) {
        painter.fillRect(QRectF(m_panel.left(), m_cancel->y() - gap, m_panel.width(), gap),
                         palette().color(QPalette::Window));
    }
}

void ShareSheet::drawHead(QPainter &painter, const QRectF &room) const
{
    constexpr int iconSize = 48;
    const QPointF iconAt(room.left() + 2 * gap, room.top() + (headHeight - iconSize) / 2.0);
    // The theme draws its full icons at 64 only; below, they are outlines.
    constexpr int drawnSize = 64;
    const QPixmap icon = kindIcon(m_head.iconNames, drawnSize, devicePixelRatioF());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRectF(iconAt, QSizeF(iconSize, iconSize)), icon, icon.rect());
    const double left = iconAt.x() + iconSize + 1.5 * gap;
    const QRectF lines(left, room.center().y() - 2.75 * gap, room.right() - 2 * gap - left,
                       5.5 * gap);
    const auto drawLine = [&](TextRole role, const QColor &color, const QString &text,
                              Qt::Alignment alignment) {
        painter.setFont(themeFont(role, font()));
        painter.setPen(color);
        painter.drawText(lines, int(alignment | Qt::AlignLeft) | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(QString(text).replace(u'\n', u' '),
                                                          Qt::ElideMiddle, int(lines.width())));
    };
    drawLine(TextRole::title, palette().color(QPalette::WindowText), m_head.title, Qt::AlignTop);
    drawLine(TextRole::caption, secondaryTextColor(palette()), m_head.subtitle, Qt::AlignBottom);
}

void ShareSheet::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutPanel();
}

void ShareSheet::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_panel.contains(event->position()))
        emit cancelled();
}

} // namespace zelkam
