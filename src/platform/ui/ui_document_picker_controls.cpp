#include "platform/ui/ui_document_picker_controls.h"

#include "platform/ui/theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTimer>

namespace zelkam {

namespace {

void drawFocus(QPainter &painter, const QWidget &widget)
{
    if (!widget.hasFocus() || !widget.window()->testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(accentColor(widget.palette()), 2));
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(3, 3, -3, -3), 8, 8);
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
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::HighlightedText), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(3, 3, -3, -3), 8, 8);
    }
}

PickerSearchField::PickerSearchField(QWidget *parent) : QLineEdit(parent)
{
    setFont(themeFont(TextRole::body, font()));
    setPlaceholderText(tr("Search in this folder"));
    setAccessibleName(tr("Search in this folder"));
    setFrame(false);
    setFixedHeight(metrics::tapTarget);
    setTextMargins(5 * metrics::grid, 0, metrics::grid, 0);
    setClearButtonEnabled(true);
    setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    // The round ground below is drawn here and not by the style.
    QPalette own = palette();
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
}

void PickerSearchField::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor ground = palette().color(QPalette::WindowText);
        ground.setAlphaF(0.07F);
        painter.setBrush(ground);
        painter.setPen(hasFocus() ? QPen(accentColor(palette()), 1.5) : QPen(Qt::NoPen));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), metrics::corner,
                                metrics::corner);
        const QPixmap icon = tintedIcon(QStringLiteral("search"), 20, secondaryTextColor(palette()),
                                        devicePixelRatioF());
        const double x = isRightToLeft() ? width() - 20.0 - 12.0 : 12.0;
        painter.drawPixmap(QPointF(x, (height() - 20) / 2.0), icon);
    }
    QLineEdit::paintEvent(event);
}

bool PickerSearchField::event(QEvent *event)
{
    // Esc first empties the field, and only then reaches the screen.
    if (event->type() == QEvent::KeyPress && !text().isEmpty() &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        clear();
        return true;
    }
    return QLineEdit::event(event);
}

void PickerSearchField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down)
        emit leftDownwards();
    else
        QLineEdit::keyPressEvent(event);
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
}

void PickerLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
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
