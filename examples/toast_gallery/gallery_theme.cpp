#include "gallery_theme.h"

#include <QApplication>
#include <QPalette>

GalleryTheme GalleryTheme::of(bool isDark)
{
    if (isDark) {
        return {true,
                QColor(0x12, 0x14, 0x18),
                QColor(0x20, 0x24, 0x2b),
                QColor(0xf1, 0xf3, 0xf6),
                QColor(0x3a, 0x40, 0x4a),
                QColor(0x4c, 0x9a, 0xff)};
    }
    return {false,
            QColor(0xec, 0xee, 0xf3),
            QColor(0xff, 0xff, 0xff),
            QColor(0x1b, 0x1f, 0x26),
            QColor(0xd5, 0xd9, 0xe2),
            QColor(0x1f, 0x6f, 0xeb)};
}

// The one place with a look of its own. That it leaves the toasts alone is a thing to show, too.
static QString styleSheet(const GalleryTheme &theme)
{
    return QStringLiteral(R"(
        QPushButton, QLineEdit, QComboBox, QAbstractSpinBox {
            background: %1; color: %2; border: 1px solid %3; border-radius: 10px;
            padding: 0 12px; min-height: 42px; min-width: 36px;
            selection-background-color: %4; }
        QPushButton:hover, QComboBox:hover { border-color: %4; }
        QPushButton:pressed { background: %3; }
        QPushButton:checked { background: %5; border-color: %4; }
        QPushButton:default { background: %4; color: white; border-color: %4; }
        QLineEdit:focus, QAbstractSpinBox:focus, QComboBox:focus, QPushButton:focus {
            border: 2px solid %4; padding: 0 11px; }
        QComboBox::drop-down { border: none; width: 32px; }
        QComboBox::down-arrow, QAbstractSpinBox::down-arrow {
            image: url(:/gallery/chevron_down.png); width: 12px; height: 12px; }
        QAbstractSpinBox::up-arrow {
            image: url(:/gallery/chevron_up.png); width: 12px; height: 12px; }
        QAbstractSpinBox::up-button, QAbstractSpinBox::down-button {
            border: none; background: none; width: 28px; }
        QScrollBar:vertical { background: transparent; width: 8px; margin: 0; }
        QScrollBar::handle:vertical { background: %3; border-radius: 4px; min-height: 44px; }
        QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
        QScrollBar::add-page, QScrollBar::sub-page { background: none; }
    )")
        .arg(theme.card.name(), theme.ink.name(), theme.faint.name(), theme.accent.name(),
             theme.isDark ? QStringLiteral("#24364f") : QStringLiteral("#dbe8ff"));
}

void GalleryTheme::apply() const
{
    const QColor window = isDark ? QColor(0x18, 0x1b, 0x20) : QColor(0xf8, 0xf9, 0xfb);
    QPalette palette(card, window);
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::Base, card);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    QColor hint = ink;
    hint.setAlphaF(0.55F);
    palette.setColor(QPalette::PlaceholderText, hint);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, hint);
    QApplication::setPalette(palette);
    qApp->setStyleSheet(styleSheet(*this));
}
