#pragma once

#include "toast/toast_text.h"

#include <QWidget>

namespace zelkam {

/// Shows a ToastText on a clear background. Presses go through it to the bubble.
class ToastLabel : public QWidget
{
    Q_OBJECT

public:
    ToastLabel(const ToastText &text, const QColor &color, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ToastText m_text;
    QColor m_color;
};

/// Shows an image in the middle, scaled to its rectangle with its aspect ratio kept.
class ToastImageView : public QWidget
{
    Q_OBJECT

public:
    explicit ToastImageView(const QImage &image, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_image;
    // The image in the pixels of the screen: smooth scaling is too slow for every repaint.
    QImage m_scaled;
};

} // namespace zelkam
