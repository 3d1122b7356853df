#pragma once

class QWidget;

namespace zelkam {

/// Gives bubbles an interface of their own. To be called before the first one has a name: Qt asks
/// for the interface then, and keeps it.
void makeBubblesAccessible();

/// Tells the screen reader of a toast that has come up: an alert, with the bubble's title and
/// message, or its state of being busy.
void announceToast(QWidget *toast);

} // namespace zelkam
