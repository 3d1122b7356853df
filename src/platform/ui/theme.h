#pragma once

#include "toast/toast_motion.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <chrono>

class QPainter;
class QWidget;

namespace zelkam {

/// The look of every screen of ours, in one place. Widgets draw with their own palette and with
/// what is here, so that a host that keeps its own style and palette stays in charge.

enum class ColorScheme { system, light, dark };

/// Sets the application's style (Fusion), palette, font and icon theme. Main thread; may be
/// called again to change the scheme. With `system`, a dark system palette gives the dark one.
void applyTheme(ColorScheme scheme);

/// The palette of a scheme.
QPalette themePalette(ColorScheme scheme);

/// Lengths, in points.
namespace metrics {
inline constexpr int grid = 8;
inline constexpr int tapTarget = 44;
inline constexpr int row = 56;
inline constexpr int corner = 10;
inline constexpr int icon = 24;
inline constexpr int bodyText = 16;
inline constexpr int titleText = 17;
inline constexpr int captionText = 13;
} // namespace metrics

enum class TextRole { body, title, caption };

/// The font of a role, in the family that the base has.
QFont themeFont(TextRole role, const QFont &base);

/// Colours that a palette has no role for, mixed from it.
QColor accentColor(const QPalette &palette);
QColor separatorColor(const QPalette &palette);
QColor errorColor(const QPalette &palette);
QColor secondaryTextColor(const QPalette &palette);
bool isDark(const QPalette &palette);

/// Whether a widget has the focus and the person goes about with keys, so that it has to be seen.
bool showsFocus(const QWidget &widget);
/// The ring round what has the focus. Fills nothing, whatever the painter's brush is.
void drawFocusRing(QPainter &painter, const QRectF &ring, const QColor &color);

/// An icon of the theme by its freedesktop name, drawn in one colour; null when there is none.
/// @param size  edge in points     @param devicePixelRatio  of the widget that will draw it
QPixmap tintedIcon(const QString &name, int size, const QColor &color, double devicePixelRatio);

/// A file kind's own icon, in its own colours, by the first of the names that the theme has.
QPixmap kindIcon(const QStringList &names, int size, double devicePixelRatio);

/// The arc of a busy mark that has made `turns` turns, with the painter's pen. It pulses in place
/// where motion is reduced.
void drawBusyArc(QPainter &painter, const QRectF &ring, int degrees, double turns);

/// How long a screen slides in or out.
inline constexpr std::chrono::milliseconds transitionDuration{300};

} // namespace zelkam
