#include "platform/ui/document_fields.h"

#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_controls.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

namespace zelkam {

PickerField::PickerField(const QString &name, QWidget *parent) : QLineEdit(parent)
{
    setFont(themeFont(TextRole::body, font()));
    setPlaceholderText(name);
    setAccessibleName(name);
    setFrame(false);
    setFixedHeight(metrics::tapTarget);
    setTextMargins(metrics::grid, 0, metrics::grid, 0);
    setClearButtonEnabled(true);
    setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    // The round ground below is drawn here and not by the style.
    QPalette own = palette();
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
}

void PickerField::paintEvent(QPaintEvent *event)
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
    }
    QLineEdit::paintEvent(event);
}

PickerSearchField::PickerSearchField(QWidget *parent)
    : PickerField(tr("Search in this folder"), parent)
{
    setTextMargins(5 * metrics::grid, 0, metrics::grid, 0);
}

void PickerSearchField::paintEvent(QPaintEvent *event)
{
    PickerField::paintEvent(event);
    constexpr int size = 20;
    const QPixmap icon = tintedIcon(QStringLiteral("search"), size, secondaryTextColor(palette()),
                                    devicePixelRatioF());
    const double x = isRightToLeft() ? width() - size - 12.0 : 12.0;
    QPainter(this).drawPixmap(QPointF(x, (height() - size) / 2.0), icon);
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

NameField::NameField(const QString &label, QWidget *parent)
    : QWidget(parent), m_field(new PickerField(label)), m_problem(new QLabel)
{
    m_problem->setFont(themeFont(TextRole::caption, font()));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->setContentsMargins(12, 0, 12, 0);
    m_problem->hide();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(metrics::grid / 2);
    column->addWidget(m_field);
    column->addWidget(m_problem);
    setFocusProxy(m_field);
    connect(m_field, &QLineEdit::textChanged, this, [this] { showProblem({}); });
}

void NameField::setName(const QString &name)
{
    m_field->setText(name);
}

void NameField::edit()
{
    m_field->setFocus(Qt::OtherFocusReason);
    const qsizetype dot = name().lastIndexOf(u'.');
    m_field->setSelection(0, int(dot > 0 ? dot : name().size()));
}

void NameField::showProblem(const QString &problem)
{
    m_problem->setVisible(!problem.isEmpty());
    m_problem->setText(problem);
    m_field->setAccessibleDescription(problem);
    if (problem.isEmpty())
        return;
    QPalette red = palette();
    red.setColor(QPalette::WindowText, errorColor(palette()));
    m_problem->setPalette(red);
    QAccessibleEvent event(m_problem, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

NewFolderRow::NewFolderRow(QWidget *parent)
    : QWidget(parent),
      m_row(new PickerRow(QStringLiteral("folder-new"), tr("New Folder"))),
      m_entry(new QWidget),
      m_field(new NameField(tr("New Folder")))
{
    auto *create = new PickerPrimaryButton(tr("Create"));
    auto *entry = new QHBoxLayout(m_entry);
    entry->setContentsMargins(2 * metrics::grid, 2, 2 * metrics::grid, metrics::grid);
    entry->setSpacing(metrics::grid);
    entry->addWidget(m_field, 1, Qt::AlignTop);
    entry->addWidget(create, 0, Qt::AlignTop);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_row);
    column->addWidget(m_entry);
    m_entry->hide();
    connect(m_row, &QAbstractButton::clicked, this, [this] { setOpen(true); });
    connect(create, &QAbstractButton::clicked, this, &NewFolderRow::accepted);
}

bool NewFolderRow::isOpen() const
{
    return m_entry->isVisibleTo(this);
}

void NewFolderRow::setOpen(bool open)
{
    if (open == isOpen())
        return;
    m_field->setName({});
    m_entry->setVisible(open);
    m_row->setVisible(!open);
    if (open)
        m_field->edit();
}

} // namespace zelkam
