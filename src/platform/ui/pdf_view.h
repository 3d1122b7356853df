#pragma once

#include "platform/ui/pdf_pages.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QTimer>

namespace zelkam {

/// Shows the pages of a PDF one below another, as wide as the view; zoomed by pinch, Ctrl and
/// wheel, double tap and the keys + - 0.
class PdfView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit PdfView(std::shared_ptr<PdfPages> pages, QWidget *parent = nullptr);
    ~PdfView() override;

    double zoom() const { return m_zoom; }
    void setZoom(double zoom, const QPointF &fixedPoint);
    /// Whether the pages that can be seen are drawn at the size in which they are shown.
    bool isSharp() const;

signals:
    /// A page that can be seen has been drawn.
    void pageDrawn();

protected:
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layoutPages();
    QRectF shownRect(int page) const;
    QPair<int, int> shownPages() const;
    QSize pixelSize(int page) const;
    void askForPages();
    void takePage(const PdfPages::Request &request, const QImage &image);

    std::shared_ptr<PdfPages> m_pages;
    QList<QRectF> m_layout; ///< in the coordinates of the scrolled area
    QHash<int, QImage> m_images;
    QSizeF m_area;
    double m_zoom = 1.0;
    QTimer m_ask; ///< not for every step of a zoom
};

} // namespace zelkam
