#pragma once

#include "platform/ui/theme.h"
#include "platform/ui/ui_navigation_bar.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTranslator>
#include <memory>

namespace zelkam::test {

/// The texts on a screen that do not fit where they are drawn.
inline QStringList cutTexts(QWidget &screen)
{
    QStringList cut;
    const auto add = [&cut](const QString &text, bool isCut) {
        if (isCut && !text.isEmpty())
            cut.append(text);
    };
    for (auto *button : screen.findChildren<QAbstractButton *>())
        add(button->text(), button->isVisible() && button->width() < button->sizeHint().width());
    for (auto *label : screen.findChildren<QLabel *>()) {
        const int width = label->width();
        const bool fits = label->wordWrap()
                              ? label->heightForWidth(width) <= label->height()
                              : label->fontMetrics().horizontalAdvance(label->text()) <= width;
        add(label->text(), label->isVisible() && !fits);
    }
    for (auto *field : screen.findChildren<QLineEdit *>()) {
        const int needed = field->fontMetrics().horizontalAdvance(field->placeholderText()) + 4;
        const QMargins margins = field->textMargins();
        add(field->placeholderText(),
            field->isVisible() && needed + margins.left() + margins.right() > field->width());
    }
    for (auto *bar : screen.findChildren<UINavigationBar *>()) {
        int room = bar->width() - metrics::grid;
        for (auto *button : bar->findChildren<QAbstractButton *>())
            room -= button->width();
        const QFontMetrics metrics(themeFont(TextRole::title, bar->font()));
        add(bar->topItem()->title, metrics.horizontalAdvance(bar->topItem()->title) > room);
    }
    return cut;
}

/// Has screens speak a language for as long as the result lives.
inline std::unique_ptr<QTranslator> speak(const QString &language)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral(":/zelkam/i18n/zelkam_%1.qm").arg(language)))
        qFatal("There is no such language.");
    QCoreApplication::installTranslator(translator.get());
    return translator;
}

} // namespace zelkam::test
