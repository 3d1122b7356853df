#include "gallery_window.h"

#include <QFormLayout>
#include <QLabel>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTimer>

using namespace zelkam;

namespace {

constexpr int touchHeight = 44;

QLabel *makeHeading(const QString &text, int pixels)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    return label;
}

QPushButton *makeButton(const QString &text)
{
    auto *button = new QPushButton(text);
    button->setMinimumSize(touchHeight, touchHeight);
    return button;
}

QPushButton *makeSwitch(const QString &text, bool isOn)
{
    QPushButton *button = makeButton(text);
    button->setCheckable(true);
    button->setChecked(isOn);
    return button;
}

} // namespace

GalleryWindow::GalleryWindow()
    : m_columns(new QBoxLayout(QBoxLayout::TopToBottom, this)),
      m_stage(new Stage),
      m_style(new StyleEditor)
{
    setWindowTitle(tr("Toast gallery"));
    m_columns->setContentsMargins(0, 0, 0, 0);
    m_columns->setSpacing(0);
    m_columns->addWidget(m_stage, 1);
    m_columns->addWidget(makePanel(), 1);
    connect(m_style, &StyleEditor::styleChanged, this,
            [this] { ToastManager::shared().style = m_style->style(); });
}

QWidget *GalleryWindow::makePanel()
{
    auto *panel = new QWidget;
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    auto *header = new QHBoxLayout;
    header->setContentsMargins(16, 12, 16, 4);
    header->addWidget(makeHeading(windowTitle(), 22), 1);
    m_dark = makeSwitch(tr("Dark"), false);
    connect(m_dark, &QPushButton::toggled, this, &GalleryWindow::setDark);
    header->addWidget(m_dark);
    column->addLayout(header);

    auto *fields = new QWidget;
    auto *list = new QVBoxLayout(fields);
    list->setContentsMargins(16, 4, 16, 16);
    list->setSpacing(12);
    list->addLayout(makeExamples());
    list->addLayout(makeContent());
    list->addLayout(makeBehaviour());
    list->addWidget(m_style);
    m_scroll = new QScrollArea;
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidget(fields);
    column->addWidget(m_scroll, 1);
    column->addWidget(makeBar());
    return panel;
}

QLayout *GalleryWindow::makeExamples()
{
    auto *section = new QVBoxLayout;
    section->addWidget(makeHeading(tr("Examples"), 17));
    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    int index = 0;
    for (const Scene &scene : scenes()) {
        QPushButton *button = makeButton(scene.title);
        connect(button, &QPushButton::clicked, this, [this, scene] { play(scene); });
        grid->addWidget(button, index / 2, index % 2);
        ++index;
    }
    section->addLayout(grid);
    return section;
}

QLayout *GalleryWindow::makeContent()
{
    auto *form = new QFormLayout;
    form->setSpacing(8);
    form->addRow(makeHeading(tr("Your own"), 17));
    m_title = new QLineEdit;
    m_title->setPlaceholderText(tr("No title"));
    m_message = new QLineEdit(tr("Hello from the toast gallery"));
    m_message->setPlaceholderText(tr("No message"));
    m_image = makeSwitch(tr("Mountains"), false);
    m_position = new QComboBox;
    m_position->addItems({tr("Top"), tr("Center"), tr("Bottom")});
    m_position->setCurrentIndex(int(ToastManager::shared().position));
    m_duration = new QDoubleSpinBox;
    m_duration->setRange(0.0, 60.0);
    m_duration->setSingleStep(0.5);
    m_duration->setSuffix(tr(" s"));
    m_duration->setValue(ToastManager::shared().duration.count());
    for (QWidget *field : {static_cast<QWidget *>(m_title), static_cast<QWidget *>(m_message),
                           static_cast<QWidget *>(m_image), static_cast<QWidget *>(m_position),
                           static_cast<QWidget *>(m_duration)})
        field->setMinimumHeight(touchHeight);
    form->addRow(tr("Title"), m_title);
    form->addRow(tr("Message"), m_message);
    form->addRow(tr("Picture"), m_image);
    form->addRow(tr("Position"), m_position);
    form->addRow(tr("Duration"), m_duration);
    centerLabels(form);
    return form;
}

QLayout *GalleryWindow::makeBehaviour()
{
    ToastManager &manager = ToastManager::shared();
    auto *section = new QVBoxLayout;
    section->addWidget(makeHeading(tr("Behaviour"), 17));
    const auto addSwitch = [&](const QString &text, bool isOn, auto apply) {
        QPushButton *button = makeSwitch(text, isOn);
        connect(button, &QPushButton::toggled, this, apply);
        section->addWidget(button);
    };
    addSwitch(tr("A tap dismisses"), manager.isTapToDismissEnabled,
              [](bool on) { ToastManager::shared().isTapToDismissEnabled = on; });
    addSwitch(tr("One after another"), manager.isQueueEnabled,
              [](bool on) { ToastManager::shared().isQueueEnabled = on; });
    addSwitch(tr("Reduced motion"), isMotionReduced(this), [](bool on) { setMotionReduced(on); });
    return section;
}

QWidget *GalleryWindow::makeBar()
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(16, 8, 16, 12);
    row->setSpacing(8);
    QPushButton *show = makeButton(tr("Show"));
    show->setDefault(true);
    connect(show, &QPushButton::clicked, this, &GalleryWindow::showOwn);
    QPushButton *activity = makeSwitch(tr("Activity"), false);
    connect(activity, &QPushButton::toggled, this, [this](bool on) {
        if (on)
            makeToastActivity(m_stage);
        else
            hideToastActivity(m_stage);
    });
    QPushButton *hide = makeButton(tr("Hide"));
    connect(hide, &QPushButton::clicked, this, [this] { hideToast(m_stage); });
    QPushButton *all = makeButton(tr("Hide all"));
    connect(all, &QPushButton::clicked, this, [activity, this] {
        activity->setChecked(false);
        clear();
    });
    for (QPushButton *button : {show, activity, hide, all})
        row->addWidget(button, 1);
    return bar;
}

void GalleryWindow::setDark(bool isDark)
{
    const GalleryTheme theme = GalleryTheme::of(isDark);
    theme.apply();
    m_stage->setTheme(theme);
    m_dark->setChecked(isDark);
}

void GalleryWindow::clear()
{
    hideAllToasts(m_stage, true, true);
}

void GalleryWindow::play(const Scene &scene)
{
    clear();
    // An activity bubble that fades out still stands in the way of the next one.
    const auto fade = ToastManager::shared().style.fadeDuration + std::chrono::milliseconds(50);
    QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(fade), this,
                       [this, scene] { scene.show(m_stage); });
}

void GalleryWindow::showOwn()
{
    const auto text = [](const QLineEdit *field) {
        return field->text().isEmpty() ? std::nullopt : std::optional(field->text());
    };
    makeToast(m_stage, text(m_message), ToastDuration(m_duration->value()),
              ToastPosition(m_position->currentIndex()), text(m_title),
              m_image->isChecked() ? std::optional(samplePicture()) : std::nullopt);
}

void GalleryWindow::scrollTo(double share)
{
    QScrollBar *bar = m_scroll->verticalScrollBar();
    bar->setValue(int(bar->maximum() * share));
}

void GalleryWindow::resizeEvent(QResizeEvent *event)
{
    const bool isWide = event->size().width() >= 700;
    m_columns->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QWidget::resizeEvent(event);
}
