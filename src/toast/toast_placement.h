#pragma once

#include "toast/toast_position.h"

#include <QPointF>
#include <QRectF>

class QWidget;

namespace zelkam {

/// The frame of a toast in its host: a bubble's own, a fraction of a point included, or the
/// geometry of any other widget.
QRectF toastFrame(const QWidget *toast);

/// Where the centre of `forToast` lies in `inSuperview`, in the latter's coordinates. The padding
/// is the shared style's at this moment, not that of the style the toast was built with.
QPointF centerPoint(ToastPosition position, const QWidget *forToast, const QWidget *inSuperview);

/// Moves the toast so that the centre of its frame is `center`, to the nearest whole point.
void moveToastCenter(QWidget *toast, QPointF center);

/// The relative place of a toast: on each axis the share of the free space that lies before it.
/// With four flexible margins that share is what stays when the host changes its size.
class FlexibleMargins
{
public:
    FlexibleMargins(QPointF center, QSizeF toast, QSizeF host);

    /// The centre of the toast in a host of another size.
    QPointF center(QSizeF toast, QSizeF host) const;

private:
    double m_left;
    double m_top;
};

} // namespace zelkam
