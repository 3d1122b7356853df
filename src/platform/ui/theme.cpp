#include "platform/ui/theme.h"

#include "platform/ui/theme_style.h"

#include <QApplication>
#include <QPainter>
#include <QStandardPaths>
#include <QStyle>
#include <QWidget>

namespace zelkam {

namespace {

QColor mixed(const QColor &a, const QColor &b, double share)
{
    const auto part = [share](float from, float to) { return from + float(share) * (to - from); };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()),
                            part(a.blueF(), b.blueF()));
}

struct Colors
{
    QRgb window, base, raised, text, secondary, border, accent, onAccent;
};

constexpr Colors lightColors{0xfff5f6f8, 0xffffffff, 0xffffffff, 0xff1b1e23,
                             0xff5d6470, 0xffd3d7de, 0xff2563d9, 0xffffffff};
constexpr Colors darkColors{0xff15171b, 0xff1e2126, 0xff262a30, 0xffeceef2,
                            0xff9ea5b1, 0xff3a3f48, 0xff7aa7ff, 0xff0d1830};

bool systemIsDark()
{
    static const bool dark = isDark(QApplication::palette());
    return dark;
}

/// Makes the icons findable on platforms that know no icon theme (offscreen, plain X11) and where
/// the host has chosen none.
void ensureIconTheme()
{
    static const bool done = [] {
        QStringList paths = QIcon::themeSearchPaths();
        const QStringList folders =
            QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                      QStandardPaths::LocateDirectory);
        for (const QString &folder : folders) {
            if (!paths.contains(folder))
                paths.append(folder);
        }
        QIcon::setThemeSearchPaths(paths);
        // "hicolor" is what Qt names where there is no theme; it holds applications' own icons.
        const auto isNone = [](const QString &theme) {
            return theme.isEmpty() || theme == u"hicolor";
        };
        if (isNone(QIcon::fallbackThemeName()))
            QIcon::setFallbackThemeName(QStringLiteral("breeze"));
        // Qt looks into the fallback only when there is a theme to fall back from.
        if (isNone(QIcon::themeName()))
            QIcon::setThemeName(isDark(QApplication::palette()) ? QStringLiteral("breeze-dark")
                                                                : QStringLiteral("breeze"));
        return true;
    }();
    Q_UNUSED(done)
}

} // namespace

QPalette themePalette(ColorScheme scheme)
{
    const bool dark =
        scheme == ColorScheme::dark || (scheme == ColorScheme::system && systemIsDark());
    const Colors &colors = dark ? darkColors : lightColors;
    QPalette palette(QColor(colors.raised), QColor(colors.window));
    palette.setColor(QPalette::Window, QColor(colors.window));
    palette.setColor(QPalette::WindowText, QColor(colors.text));
    palette.setColor(QPalette::Base, QColor(colors.base));
    palette.setColor(QPalette::AlternateBase, QColor(colors.window));
    palette.setColor(QPalette::Text, QColor(colors.text));
    palette.setColor(QPalette::PlaceholderText, QColor(colors.secondary));
    palette.setColor(QPalette::Button, QColor(colors.raised));
    palette.setColor(QPalette::ButtonText, QColor(colors.text));
    palette.setColor(QPalette::ToolTipBase, QColor(colors.raised));
    palette.setColor(QPalette::ToolTipText, QColor(colors.text));
    palette.setColor(QPalette::Mid, QColor(colors.border));
    palette.setColor(QPalette::Highlight, QColor(colors.accent));
    palette.setColor(QPalette::HighlightedText, QColor(colors.onAccent));
    palette.setColor(QPalette::Link, QColor(colors.accent));
    const QColor faint = mixed(QColor(colors.text), QColor(colors.window), 0.6);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

void applyTheme(ColorScheme scheme)
{
    const QPalette palette = themePalette(scheme); // asks for the system's before it is replaced
    if (!qobject_cast<ThemeStyle *>(QApplication::style()))
        QApplication::setStyle(new ThemeStyle);
    QApplication::setPalette(palette);

    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans"),
                      QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Noto Color Emoji")});
    font.setPixelSize(metrics::bodyText);
    QApplication::setFont(font);

    ensureIconTheme();
    QIcon::setThemeName(isDark(palette) ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
}

QFont themeFont(TextRole role, const QFont &base)
{
    QFont font = base;
    switch (role) {
    case TextRole::body:
        font.setPixelSize(metrics::bodyText);
        break;
    case TextRole::title:
        font.setPixelSize(metrics::titleText);
        font.setWeight(QFont::DemiBold);
        break;
    case TextRole::caption:
        font.setPixelSize(metrics::captionText);
        break;
    }
    return font;
}

QColor accentColor(const QPalette &palette)
{
    return palette.color(QPalette::Highlight);
}

QColor separatorColor(const QPalette &palette)
{
    return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.16);
}

QColor secondaryTextColor(const QPalette &palette)
{
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.36);
}

QColor errorColor(const QPalette &palette)
{
    return isDark(palette) ? QColor(0xff, 0x8a, 0x80) : QColor(0xb3, 0x26, 0x1e);
}

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

bool showsFocus(const QWidget &widget)
{
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void drawFocusRing(QPainter &painter, const QRectF &ring, const QColor &color)
{
    constexpr double radius = 8;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2));
    painter.drawRoundedRect(ring, radius, radius);
}

QPixmap tintedIcon(const QString &name, int size, const QColor &color, double devicePixelRatio)
{
    QPixmap pixmap = kindIcon({name}, size, devicePixelRatio);
    if (pixmap.isNull())
        return pixmap;
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF({}, pixmap.deviceIndependentSize()), color);
    return pixmap;
}

QPixmap kindIcon(const QStringList &names, int size, double devicePixelRatio)
{
    ensureIconTheme();
    for (const QString &name : names) {
        const QIcon icon = QIcon::fromTheme(name);
        const QPixmap pixmap = icon.pixmap(QSize(size, size), devicePixelRatio);
        if (!pixmap.isNull())
            return pixmap;
    }
    return {};
}

void drawBusyArc(QPainter &painter, const QRectF &ring, int degrees, double turns)
{
    constexpr int sixteenths = 16;
    const bool turning = !isMotionReduced();
    const double opacity = painter.opacity();
    painter.setOpacity(opacity * (turning ? 1.0 : pulseOpacity(turns)));
    painter.drawArc(ring, turning ? int(-turns * 360.0 * sixteenths) : 0, degrees * sixteenths);
    painter.setOpacity(opacity);
}

} // namespace zelkam
