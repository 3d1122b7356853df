#include "platform/ui/ui_document_picker_controls.h"

#include "platform/ui/theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>

namespace zelkam {

namespace {

void drawFocus(QPainter &painter, const QWidget &widget)
{
    if (showsFocus(widget))
        drawFocusRing(painter, QRectF(widget.rect()).adjusted(3, 3, -3, -3),
                      accentColor(widget.palette()));
}

/// One folder of the path: its name, and the sign that one more follows.
class PathStep : public QAbstractButton
{
public:
    PathStep(const QString &name, bool isLast, QWidget *parent)
        : QAbstractButton(parent), m_isLast(isLast)
    {
        QFont own = themeFont(TextRole::body, font());
        own.setWeight(isLast ? QFont::DemiBold : QFont::Normal);
        setFont(own);
        setText(name);
        setAccessibleName(name);
        setFocusPolicy(isLast ? Qt::NoFocus : Qt::StrongFocus);
        setFixedHeight(metrics::tapTarget);
    }

    QSize sizeHint() const override
    {
        const int text = qMin(widestName, fontMetrics().horizontalAdvance(this->text()) + 1);
        return {qMax(text + metrics::grid, m_isLast ? 0 : metrics::tapTarget) +
                    (m_isLast ? 0 : arrowRoom),
                metrics::tapTarget};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(m_isLast ? palette().color(QPalette::WindowText) : accentColor(palette()));
        const QRect room = rect().adjusted(0, 0, m_isLast ? 0 : -arrowRoom, 0);
        painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width()));
        if (!m_isLast)
            painter.drawPixmap(QPointF(width() - arrowRoom, (height() - arrowRoom) / 2.0),
                               tintedIcon(isRightToLeft() ? QStringLiteral("go-previous")
                                                          : QStringLiteral("go-next"),
                                          arrowRoom, secondaryTextColor(palette()),
                                          devicePixelRatioF()));
        drawFocus(painter, *this);
    }

private:
    static constexpr int widestName = 220;
    static constexpr int arrowRoom = 12;
    bool m_isLast;
};

} // namespace

PickerIconButton::PickerIconButton(const QString &iconName, const QString &name, QWidget *parent)
    : QAbstractButton(parent), m_iconName(iconName)
{
    setFont(themeFont(TextRole::body, font()));
    setText(name);
    setAccessibleName(name);
    if (!iconName.isEmpty())
        setToolTip(name);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

QSize PickerIconButton::sizeHint() const
{
    const bool isWord =
        m_iconName.isEmpty() || tintedIcon(m_iconName, metrics::icon, Qt::black, 1.0).isNull();
    return {isWord ? qMax(metrics::tapTarget,
                          fontMetrics().horizontalAdvance(text()) + 2 * metrics::grid)
                   : metrics::tapTarget,
            metrics::tapTarget};
}

void PickerIconButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor color = isEnabled() ? accentColor(palette()) : secondaryTextColor(palette());
    color.setAlphaF(!isEnabled() ? 0.5F : isDown() ? 0.6F : 1.0F);
    const QPixmap icon = m_iconName.isEmpty()
                             ? QPixmap()
                             : tintedIcon(m_iconName, metrics::icon, color, devicePixelRatioF());
    if (icon.isNull()) {
        painter.setPen(color);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    } else {
        painter.drawPixmap(
            QPointF((width() - metrics::icon) / 2.0, (height() - metrics::icon) / 2.0), icon);
    }
    drawFocus(painter, *this);
}

PickerRow::PickerRow(const QString &iconName, const QString &name, QWidget *parent)
    : QAbstractButton(parent), m_iconName(iconName)
{
    setFont(themeFont(TextRole::body, font()));
    setText(name);
    setAccessibleName(name);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize PickerRow::sizeHint() const
{
    constexpr int besideText = 72;
    return {fontMetrics().horizontalAdvance(text()) + besideText, metrics::tapTarget + 4};
}

void PickerRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF plate = QRectF(rect()).adjusted(metrics::grid, 2, -metrics::grid, -2);
    QColor shade = isChecked() ? accentColor(palette()) : palette().color(QPalette::WindowText);
    shade.setAlphaF(isChecked() ? 0.14F : isDown() ? 0.1F : underMouse() ? 0.05F : 0.0F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawRoundedRect(plate, metrics::corner, metrics::corner);
    if (showsFocus(*this))
        drawFocusRing(painter, plate, accentColor(palette()));
    const auto placed = [this](const QRect &rect) {
        return QStyle::visualRect(layoutDirection(), this->rect(), rect);
    };
    const QRect icon(20, (height() - metrics::icon) / 2, metrics::icon, metrics::icon);
    painter.drawPixmap(
        placed(icon).topLeft(),
        tintedIcon(m_iconName, metrics::icon, accentColor(palette()), devicePixelRatioF()));
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect text = placed(rect().adjusted(56, 0, -2 * metrics::grid, 0));
    const Qt::Alignment side = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(text, int(side | Qt::AlignVCenter | Qt::AlignAbsolute) | Qt::TextSingleLine,
                     fontMetrics().elidedText(this->text(), Qt::ElideRight, text.width()));
}

PickerPrimaryButton::PickerPrimaryButton(const QString &text, QWidget *parent)
    : QAbstractButton(parent)
{
    QFont own = themeFont(TextRole::body, font());
    own.setWeight(QFont::DemiBold);
    setFont(own);
    setText(text);
    setAccessibleName(text);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PickerPrimaryButton::sizeHint() const
{
    constexpr int narrowest = 120;
    return {qMax(narrowest, fontMetrics().horizontalAdvance(text()) + 5 * metrics::grid),
            metrics::tapTarget};
}

void PickerPrimaryButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = isEnabled() ? accentColor(palette()) : palette().color(QPalette::Mid);
    if (isDown())
        fill.setAlphaF(0.7F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect(), metrics::corner, metrics::corner);
    painter.setPen(isEnabled() ? palette().color(QPalette::HighlightedText)
                               : secondaryTextColor(palette()));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (showsFocus(*this))
        drawFocusRing(painter, QRectF(rect()).adjusted(3, 3, -3, -3),
                      palette().color(QPalette::HighlightedText));
}

PickerLine::PickerLine(QWidget *parent) : QLabel(parent)
{
    setFont(themeFont(TextRole::body, font()));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void PickerLine::setLine(const QString &text, const QString &brief, Qt::TextElideMode elision)
{
    m_brief = brief;
    m_elision = elision;
    setText(text);
    // A sentence goes on in a second line; a name is cut.
    setWordWrap(brief.isEmpty() && elision == Qt::ElideRight);
}

void PickerLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    if (wordWrap()) {
        painter.drawText(rect(),
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                             Qt::AlignVCenter | Qt::TextWordWrap,
                         text());
        return;
    }
    const bool fits = fontMetrics().horizontalAdvance(text()) <= width();
    const QString line = fits || m_brief.isEmpty() ? text() : m_brief;
    painter.drawText(rect(),
                     int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                         Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(line, m_elision, width()));
}

PickerPathBar::PickerPathBar(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedHeight(metrics::tapTarget);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
}

void PickerPathBar::setSteps(const QList<Step> &steps)
{
    auto *row = new QWidget;
    row->setAutoFillBackground(false);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, metrics::grid, 0);
    layout->setSpacing(2);
    for (qsizetype i = 0; i < steps.size(); ++i) {
        const bool isLast = i + 1 == steps.size();
        auto *button = new PathStep(steps.at(i).name, isLast, row);
        layout->addWidget(button);
        if (!isLast)
            connect(button, &QAbstractButton::clicked, this,
                    [this, path = steps.at(i).path] { emit chosen(path); });
    }
    layout->setSizeConstraint(QLayout::SetFixedSize);
    // A button may be the one that was just tapped: the row with it goes later.
    if (QWidget *old = takeWidget())
        old->deleteLater();
    setWidget(row);
    showEnd();
}

void PickerPathBar::showEnd()
{
    const auto scroll = [this] {
        horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
    };
    scroll();
    QTimer::singleShot(0, this, scroll); // once more when the row has been laid out
}

void PickerPathBar::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    showEnd();
}

} // namespace zelkam
