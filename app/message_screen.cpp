#include "app/message_screen.h"

#include "platform/ui/theme.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zelkam {

MessageScreen::MessageScreen(QWidget *parent)
    : QWidget(parent),
      m_icon(new QLabel(this)),
      m_title(new QLabel(this)),
      m_text(new QLabel(this)),
      m_retry(new QPushButton(tr("Try Again"), this))
{
    setAutoFillBackground(true);
    m_retry->setMinimumSize(160, metrics::tapTarget);
    m_retry->setFlat(true);
    for (QLabel *label : {m_icon, m_title, m_text}) {
        label->setAlignment(Qt::AlignCenter);
        label->setTextFormat(Qt::PlainText);
    }
    m_title->setWordWrap(true);
    m_text->setWordWrap(true);
    m_text->setMaximumWidth(440);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4 * metrics::grid, 4 * metrics::grid, 4 * metrics::grid,
                               4 * metrics::grid);
    column->setSpacing(metrics::grid);
    column->addStretch(2);
    column->addWidget(m_icon);
    column->addSpacing(metrics::grid);
    column->addWidget(m_title);
    // Centred by a row, as an alignment would take the text's height from its unwrapped width.
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_text, 1000);
    row->addStretch();
    column->addLayout(row);
    column->addSpacing(2 * metrics::grid);
    column->addWidget(m_retry, 0, Qt::AlignHCenter);
    column->addStretch(3);

    connect(m_retry, &QPushButton::clicked, this, &MessageScreen::retryRequested);
    restyle();
}

void MessageScreen::setMessage(const QString &iconName, const QString &title, const QString &text)
{
    m_iconName = iconName;
    m_title->setText(title);
    m_text->setText(text);
    restyle();
}

void MessageScreen::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        restyle();
}

void MessageScreen::restyle()
{
    m_title->setFont(themeFont(TextRole::title, font()));
    m_text->setFont(themeFont(TextRole::body, font()));
    m_retry->setFont(themeFont(TextRole::body, font()));
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, secondaryTextColor(palette()));
    m_text->setPalette(quiet);
    QPalette action = palette();
    action.setColor(QPalette::ButtonText, accentColor(palette()));
    m_retry->setPalette(action);
    constexpr int iconSize = 64;
    m_icon->setPixmap(
        tintedIcon(m_iconName, iconSize, secondaryTextColor(palette()), devicePixelRatioF()));
}

} // namespace zelkam
