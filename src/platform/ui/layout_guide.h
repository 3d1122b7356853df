#pragma once

#include <QMargins>

class QWidget;

namespace zelkam {

/// The part of a widget's edges that lies under a device's covered edges: the dynamic property
/// "safeAreaInsets" (QMargins) of the widget or of the nearest widget above that has it, less the
/// distance between the two widgets' edges. Zero where no widget has the property.
QMargins safeAreaInsets(const QWidget *widget);

/// Puts a widget into another, above what is there, and shows it.
void addSubview(QWidget *to, QWidget *subview);

/// Keeps a widget inside its parent's safe area, at fixed distances from the area's edges, for
/// as long as both live: now and whenever its parent, the parent's size or the insets change.
/// A second call replaces the first.
///
/// @param constants  distances from the safe area's edges, in points; they may be negative
void pinToSafeArea(QWidget *subview, const QMargins &constants = {});

} // namespace zelkam
