#pragma once

#include "scenes.h"
#include "stage.h"
#include "style_editor.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>

/// The stage with the toasts, and beside or below it what there is to try.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    GalleryWindow();

    void setDark(bool isDark);
    /// Clears the stage and plays the scene on it.
    void play(const Scene &scene);
    void scrollTo(double share);

    QWidget *stage() { return m_stage; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *makePanel();
    QLayout *makeExamples();
    QLayout *makeContent();
    QLayout *makeBehaviour();
    QWidget *makeBar();
    void clear();
    void showOwn();

    QBoxLayout *m_columns;
    Stage *m_stage;
    QScrollArea *m_scroll;
    StyleEditor *m_style;
    QPushButton *m_dark;
    QLineEdit *m_title;
    QLineEdit *m_message;
    QPushButton *m_image;
    QComboBox *m_position;
    QDoubleSpinBox *m_duration;
};
