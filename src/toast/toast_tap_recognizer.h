#pragma once

#include <QObject>
#include <QPointF>
#include <QWidget>

namespace zelkam {

/// Stands between a toast and presses on it, by mouse or by touch.
///
/// No press on the view reaches what lies below. One finger or the left button that goes down and
/// up within the view, and does not leave it in between, is a tap. While a finger is on a view that
/// takes touches exclusively, the rest of its window gets none.
class ToastTapRecognizer : public QObject
{
    Q_OBJECT

public:
    ToastTapRecognizer(QWidget *view, bool isExclusive);
    ~ToastTapRecognizer() override;

    QWidget *view() const { return m_view; }

signals:
    void tapped();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool handleMouse(QEvent *event);
    bool handleTouch(QEvent *event);
    bool keepFromOthers(QObject *watched, QEvent *event) const;
    void begin();
    void move(QPointF position);
    void end(bool isTap);

    // The parent, which outlives its recognizer.
    QWidget *m_view;
    bool m_isExclusive;
    bool m_isDown = false;
    bool m_canBeTap = false;
};

} // namespace zelkam
