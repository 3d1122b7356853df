#pragma once

#include "toast/toast_text.h"

#include <QWidget>

namespace zelkam {

/// Something that a bubble shows, on a clear background. Presses go through it to the bubble.
class ToastContent : public QWidget
{
    Q_OBJECT

public:
    explicit ToastContent(QWidget *parent);

    /// Whether some of it lies beyond its parent. Then it is left to the parent to draw.
    bool hangsOver() const;

    virtual void draw(QPainter &painter, const QRect &rect) const = 0;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// Shows a ToastText.
class ToastLabel : public ToastContent
{
    Q_OBJECT

public:
    ToastLabel(const ToastText &text, const QColor &color, QWidget *parent);

    void draw(QPainter &painter, const QRect &rect) const override;

private:
    ToastText m_text;
    QColor m_color;
};

/// Shows an image in the middle, scaled to its rectangle with its aspect ratio kept.
class ToastImageView : public ToastContent
{
    Q_OBJECT

public:
    ToastImageView(const QImage &image, QWidget *parent);

    void draw(QPainter &painter, const QRect &rect) const override;

private:
    QImage m_image;
    // The image in the pixels of the screen: smooth scaling is too slow for every repaint.
    mutable QImage m_scaled;
};

} // namespace zelkam
