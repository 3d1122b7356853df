#pragma once

#include <QColor>
#include <QVariantAnimation>
#include <QWidget>

namespace zelkam {

/// A ring of twelve spokes that turns once a second; where motion is reduced it pulses in place. It
/// rests while it is hidden.
class ToastSpinner : public QWidget
{
    Q_OBJECT

public:
    ToastSpinner(const QColor &color, QWidget *parent);

    bool isAnimating() const { return m_turns.state() == QAbstractAnimation::Running; }

    /// Lays the ring round `center`, in the parent's coordinates.
    void setCenter(QPointF center);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QColor m_color;
    QVariantAnimation m_turns;
    bool m_pulses = false;
};

} // namespace zelkam
