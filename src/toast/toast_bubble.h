#pragma once

#include "toast/toast_shadow.h"

#include <QWidget>

#include <optional>

namespace zelkam {

/// A rounded bubble. What lies in it are its child widgets; what of them hangs over its edge is
/// drawn too, and is no part of the widget: a press there reaches what lies below.
///
/// frame() is the bubble in the widget's coordinates, exact where the widget has whole points only.
class ToastBubble : public QWidget
{
    Q_OBJECT

public:
    ToastBubble(const QColor &background, double cornerRadius);

    QRectF frame() const { return m_frame; }

    /// Sets the bubble's frame, in a coordinate system of the caller's, and the widget's size by
    /// it. Returns where the widget's corner lies in that system.
    QPoint setFrame(const QRectF &frame);

    /// Draws beyond the edges what hangs over them. Call when the children are in place.
    void setOverhang();

    /// The corner radius that is drawn, at most half of the shorter side.
    double cornerRadius() const;

    /// Call after setFrame(). A translucent bubble's shadow is fainter by as much.
    void setShadow(ToastShadow shadow);

    /// What a screen reader says; a busy bubble is announced as work that goes on.
    void setAnnouncement(const QString &title, const QString &message, bool isBusy);
    bool isBusy() const { return m_isBusy; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_background;
    double m_cornerRadius;
    QRectF m_frame;
    bool m_isBusy = false;
};

} // namespace zelkam
