#include "style_editor.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontDialog>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

using namespace zelkam;

namespace {

constexpr int fieldHeight = 44;

QDoubleSpinBox *makeSpin(double least, double most, double step, double value)
{
    auto *spin = new QDoubleSpinBox;
    spin->setRange(least, most);
    spin->setSingleStep(step);
    spin->setDecimals(step < 1.0 ? 2 : 0);
    spin->setValue(value);
    spin->setMinimumHeight(fieldHeight);
    return spin;
}

void paintSwatch(QPushButton *button, const QColor &color)
{
    QPixmap swatch(24, 24);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(button->palette().mid(), 1.0));
    painter.setBrush(color);
    painter.drawEllipse(QRectF(2.5, 2.5, 19.0, 19.0));
    painter.end();
    button->setIcon(swatch);
    button->setIconSize(swatch.size());
    button->setText(QLatin1Char(' ') + color.name(QColor::HexArgb));
}

} // namespace

void centerLabels(QFormLayout *form)
{
    for (int row = 0; row < form->rowCount(); ++row) {
        if (QLayoutItem *label = form->itemAt(row, QFormLayout::LabelRole))
            label->widget()->setMinimumHeight(fieldHeight);
    }
}

StyleEditor::StyleEditor(QWidget *parent) : QWidget(parent), m_form(new QFormLayout(this))
{
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setSpacing(8);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    addHeading(tr("Bubble"));
    addColor(tr("Background"), &Style::backgroundColor);
    addLength(tr("Corner radius"), &Style::cornerRadius, 60.0);
    addLength(tr("Horizontal padding"), &Style::horizontalPadding, 60.0);
    addLength(tr("Vertical padding"), &Style::verticalPadding, 60.0);
    addFraction(tr("Largest width"), &Style::maxWidthPercentage);
    addFraction(tr("Largest height"), &Style::maxHeightPercentage);
    addSize(tr("Image size"), &Style::imageSize, 0.0);

    addHeading(tr("Text"));
    addColor(tr("Title colour"), &Style::titleColor);
    addText(tr("Title"), &Style::titleFont, &Style::titleAlignment, &Style::titleNumberOfLines);
    addColor(tr("Message colour"), &Style::messageColor);
    addText(tr("Message"), &Style::messageFont, &Style::messageAlignment,
            &Style::messageNumberOfLines);

    addHeading(tr("Shadow"));
    auto *shadow = new QPushButton(tr("On"));
    shadow->setCheckable(true);
    connect(shadow, &QPushButton::toggled, this, [this](bool on) {
        m_style.displayShadow = on;
        changed();
    });
    m_form->addRow(tr("Display"), shadow);
    addColor(tr("Activity colour"), &Style::shadowColor);
    auto *opacity = makeSpin(0.0, 1.0, 0.05, double(m_style.shadowOpacity));
    connect(opacity, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        m_style.shadowOpacity = float(value);
        changed();
    });
    m_form->addRow(tr("Opacity"), opacity);
    addLength(tr("Radius"), &Style::shadowRadius, 40.0);
    addSize(tr("Offset"), &Style::shadowOffset, -60.0);

    addHeading(tr("Activity bubble and fades"));
    addSize(tr("Size"), &Style::activitySize, 0.0);
    addColor(tr("Spinner"), &Style::activityIndicatorColor);
    addColor(tr("Background"), &Style::activityBackgroundColor);
    auto *fade = makeSpin(0.0, 5.0, 0.05, m_style.fadeDuration.count());
    fade->setSuffix(tr(" s"));
    connect(fade, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        m_style.fadeDuration = ToastDuration(value);
        changed();
    });
    m_form->addRow(tr("Fade"), fade);
    centerLabels(m_form);
}

void StyleEditor::changed()
{
    emit styleChanged();
}

void StyleEditor::addHeading(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setPixelSize(17);
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    label->setContentsMargins(0, 16, 0, 4);
    m_form->addRow(label);
}

void StyleEditor::addColor(const QString &label, QColor Style::*field)
{
    auto *button = new QPushButton;
    button->setMinimumHeight(fieldHeight);
    paintSwatch(button, m_style.*field);
    connect(button, &QPushButton::clicked, this, [this, button, field] {
        const QColor color =
            QColorDialog::getColor(m_style.*field, this, QString(), QColorDialog::ShowAlphaChannel);
        if (!color.isValid())
            return;
        m_style.*field = color;
        paintSwatch(button, color);
        changed();
    });
    m_form->addRow(label, button);
}

void StyleEditor::addLength(const QString &label, double Style::*field, double most)
{
    auto *spin = makeSpin(0.0, most, 1.0, m_style.*field);
    connect(spin, &QDoubleSpinBox::valueChanged, this, [this, field](double value) {
        m_style.*field = value;
        changed();
    });
    m_form->addRow(label, spin);
}

void StyleEditor::addFraction(const QString &label, UnitFraction Style::*field)
{
    auto *spin = makeSpin(0.0, 1.0, 0.05, m_style.*field);
    connect(spin, &QDoubleSpinBox::valueChanged, this, [this, field](double value) {
        m_style.*field = value;
        changed();
    });
    m_form->addRow(label, spin);
}

void StyleEditor::addSize(const QString &label, QSizeF Style::*field, double least)
{
    auto *row = new QHBoxLayout;
    auto *width = makeSpin(least, 300.0, 1.0, (m_style.*field).width());
    auto *height = makeSpin(least, 300.0, 1.0, (m_style.*field).height());
    const auto update = [this, field, width, height] {
        m_style.*field = QSizeF(width->value(), height->value());
        changed();
    };
    connect(width, &QDoubleSpinBox::valueChanged, this, update);
    connect(height, &QDoubleSpinBox::valueChanged, this, update);
    row->addWidget(width);
    row->addWidget(height);
    m_form->addRow(label, row);
}

void StyleEditor::addText(const QString &label, QFont Style::*font, TextAlignment Style::*alignment,
                          int Style::*lines)
{
    auto *choose = new QPushButton(tr("%1 px").arg((m_style.*font).pixelSize()));
    choose->setMinimumHeight(fieldHeight);
    connect(choose, &QPushButton::clicked, this, [this, choose, font] {
        bool accepted = false;
        QFont chosen = QFontDialog::getFont(&accepted, m_style.*font, this);
        if (!accepted)
            return;
        chosen.setPixelSize(QFontInfo(chosen).pixelSize());
        m_style.*font = chosen;
        choose->setText(tr("%1 px").arg(chosen.pixelSize()));
        changed();
    });
    m_form->addRow(tr("%1 font").arg(label), choose);

    auto *align = new QComboBox;
    align->addItems({tr("Left"), tr("Centre"), tr("Right"), tr("Justified"), tr("Natural")});
    align->setMinimumHeight(fieldHeight);
    connect(align, &QComboBox::currentIndexChanged, this, [this, alignment](int index) {
        m_style.*alignment = TextAlignment(index);
        changed();
    });
    m_form->addRow(tr("%1 alignment").arg(label), align);

    auto *limit = makeSpin(0.0, 20.0, 1.0, m_style.*lines);
    limit->setSpecialValueText(tr("No limit"));
    connect(limit, &QDoubleSpinBox::valueChanged, this, [this, lines](double value) {
        m_style.*lines = int(value);
        changed();
    });
    m_form->addRow(tr("%1 lines").arg(label), limit);
}
