#pragma once

class QWidget;

namespace zelkam {

/// Tells the screen reader of a toast that has come up: an alert, with the bubble's title and
/// message, or its state of being busy.
void announceToast(QWidget *toast);

} // namespace zelkam
