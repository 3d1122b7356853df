#pragma once

#include "gallery_theme.h"

#include <QWidget>

/// The host of the gallery's toasts: a sketch of a list, so that one sees what shines through.
class Stage : public QWidget
{
    Q_OBJECT

public:
    explicit Stage(QWidget *parent = nullptr);

    void setTheme(const GalleryTheme &theme);
    QSize sizeHint() const override { return {390, 380}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    GalleryTheme m_theme = GalleryTheme::of(false);
};
