#pragma once

#include <QPointer>
#include <QWidget>

namespace zelkam {

/// Holds the view of one presented screen over the whole window. Tab goes round inside it.
class ScreenContainer : public QWidget
{
    Q_OBJECT

public:
    /// @param focusBefore  what had the focus, and gets it again when the screen has gone
    ScreenContainer(QWidget *screenView, QWidget *focusBefore, QWidget *parent);

    QWidget *screenView() const { return m_view; }
    QWidget *focusBefore() const { return m_focusBefore; }
    void setFocusBefore(QWidget *widget) { m_focusBefore = widget; }

    /// Gives the focus to the first control that takes it by Tab, otherwise to the container.
    void takeFocus();

protected:
    bool focusNextPrevChild(bool next) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *nextInside(QWidget *from, bool forward) const;

    QPointer<QWidget> m_view;
    QPointer<QWidget> m_focusBefore;
};

/// Lies over the window during a transition and swallows what the user does.
class InputShield : public QWidget
{
    Q_OBJECT

public:
    explicit InputShield(QWidget *parent);

protected:
    bool event(QEvent *event) override;
};

} // namespace zelkam
