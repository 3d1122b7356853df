#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QScrollArea>

namespace zelkam {

/// A button that shows an icon in the accent colour, 44 points square, or a word without one.
class PickerIconButton : public QAbstractButton
{
    Q_OBJECT

public:
    PickerIconButton(const QString &iconName, const QString &name, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_iconName;
};

/// A row with an icon and a name, such as a place. Where it can be checked, it does not do that
/// itself.
class PickerRow : public QAbstractButton
{
    Q_OBJECT

public:
    PickerRow(const QString &iconName, const QString &name, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void nextCheckState() override {
    } // a check shows where the person is, and is no answer to a tap
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_iconName;
};

/// The one button of a screen that does what the screen is for.
class PickerPrimaryButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit PickerPrimaryButton(const QString &text, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A text that says less, is cut, or takes a second line where there is less room.
class PickerLine : public QLabel
{
    Q_OBJECT

public:
    explicit PickerLine(QWidget *parent = nullptr);

    /// @param brief    stands for the text where that does not fit; may be empty
    /// @param elision  where what does not fit either is cut
    void setLine(const QString &text, const QString &brief, Qt::TextElideMode elision);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_brief;
    Qt::TextElideMode m_elision = Qt::ElideRight;
};

/// The folders from the place that a path lies in down to its last folder. Each can be gone to.
class PickerPathBar : public QScrollArea
{
    Q_OBJECT

public:
    explicit PickerPathBar(QWidget *parent = nullptr);

    struct Step
    {
        QString name;
        QString path;
    };
    void setSteps(const QList<Step> &steps);

signals:
    void chosen(const QString &path);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showEnd();
};

} // namespace zelkam
