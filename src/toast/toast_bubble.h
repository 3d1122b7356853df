#pragma once

#include "toast/toast_shadow.h"

#include <QWidget>

#include <optional>

namespace zelkam {

/// A rounded bubble. What lies in it are its child widgets.
///
/// The widget may be larger than the bubble, where a child hangs over its edge: frame() is the
/// bubble in the widget's coordinates, exact where the widget has whole points only.
class ToastBubble : public QWidget
{
    Q_OBJECT

public:
    ToastBubble(const QColor &background, double cornerRadius);

    QRectF frame() const { return m_frame; }

    /// Sets the bubble's frame and grows the widget to hold it and `contents`, both in one
    /// coordinate system of the caller's. Returns where the widget's corner lies in it.
    QPoint setFrame(const QRectF &frame, const QRectF &contents);

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
