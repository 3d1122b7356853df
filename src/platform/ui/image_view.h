#pragma once

#include "platform/foundation/regular_file.h"

#include <QImage>
#include <QPixmap>
#include <QPointF>
#include <QWidget>
#include <memory>

class QPinchGesture;

namespace zelkam {

/// Shows an image, fitted to the widget; zoomed by wheel, pinch, double tap and the keys + - 0,
/// and moved by dragging and the arrow keys while it is larger than the widget.
class ImageView : public QWidget
{
    Q_OBJECT

public:
    explicit ImageView(QImage image, QWidget *parent = nullptr);

    /// Plays the frames of a file in place of the still image, which is the first of them, unless
    /// the person has asked for less motion.
    void play(std::shared_ptr<const RegularFile> animation, int frames);

    /// How much larger than fitted the image is shown, 1 to at least 8.
    double zoom() const { return m_zoom; }
    void setZoom(double zoom, const QPointF &fixedPoint);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    double fittedScale() const;
    QSizeF shownSize() const;
    void moveBy(const QPointF &distance);
    void keepInView();
    void updateCursor();

    QImage m_image;
    QPixmap m_fitted; ///< scaled down once; scaling a large image for each paint is slow and rough
    double m_zoom = 1.0;
    QPointF m_offset; ///< of the image's middle from the widget's
    QPointF m_dragged;
    bool m_dragging = false;
};

} // namespace zelkam
