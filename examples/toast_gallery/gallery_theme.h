#pragma once

#include <QColor>

/// The gallery's colours, light and dark: the palette of the application, and a few roles that a
/// palette does not have.
struct GalleryTheme
{
    bool isDark;
    QColor stage;
    QColor card;
    QColor ink;
    QColor faint;
    QColor accent;

    static GalleryTheme of(bool isDark);
    void apply() const;
};
