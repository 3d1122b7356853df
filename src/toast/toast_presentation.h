#pragma once

#include "toast/toast_style.h"

#include <QPointF>

class QWidget;

namespace zelkam {

/// Puts the toast on its host and fades it in; its timer starts when that has ended.
void presentToast(QWidget *host, QWidget *toast, ToastDuration duration, QPointF point);

/// Fades the toast out and removes it, calls its completion with `fromTap`, and then presents the
/// first toast of the host's queue. The toast need not lie on `host`; null stands for the host that
/// it was presented on. One that is already fading out is left to that, and is then removed from
/// this host too.
void dismissToast(QWidget *host, QWidget *toast, bool fromTap);

} // namespace zelkam
