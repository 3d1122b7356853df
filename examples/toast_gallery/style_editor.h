#pragma once

#include "toast/toast.h"

#include <QFormLayout>
#include <QWidget>

/// Puts the labels of a form half-way up their fields.
void centerLabels(QFormLayout *form);

/// Fields for everything in a ToastStyle.
class StyleEditor : public QWidget
{
    Q_OBJECT

public:
    explicit StyleEditor(QWidget *parent = nullptr);

    const zelkam::ToastStyle &style() const { return m_style; }

signals:
    void styleChanged();

private:
    using Style = zelkam::ToastStyle;

    void addHeading(const QString &text);
    void addColor(const QString &label, QColor Style::*field);
    void addLength(const QString &label, double Style::*field, double most);
    void addFraction(const QString &label, zelkam::UnitFraction Style::*field);
    void addSize(const QString &label, QSizeF Style::*field, double least);
    void addText(const QString &label, QFont Style::*font, zelkam::TextAlignment Style::*alignment,
                 int Style::*lines);
    void changed();

    Style m_style;
    QFormLayout *m_form;
};
