#include "platform/ui/pdf_view.h"

#include "platform/ui/theme.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QScroller>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace zelkam {

namespace {

constexpr int gap = 2 * metrics::grid;
constexpr double widestPage = 900.0;
constexpr double mostZoom = 5.0;
constexpr double doubleTapZoom = 2.0;
/// A drawn page takes 48 MiB at most, whatever the zoom; from there on it is only magnified.
constexpr double mostPixels = 12.0 * 1000 * 1000;

} // namespace

PdfView::PdfView(std::shared_ptr<PdfPages> pages, QWidget *parent)
    : QAbstractScrollArea(parent), m_pages(std::move(pages))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->grabGesture(Qt::PinchGesture);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    m_ask.setSingleShot(true);
    connect(&m_ask, &QTimer::timeout, this, &PdfView::askForPages);
}

PdfView::~PdfView() = default;

void PdfView::layoutPages()
{
    // Only the width decides, so that a page's share of the view is the same on every device.
    const double room = std::min(double(viewport()->width() - 2 * gap), widestPage);
    const double pageWidth = std::max(1.0, room) * m_zoom;
    m_layout.clear();
    double y = gap;
    for (const QSizeF &size : m_pages->sizes()) {
        const double height = pageWidth * size.height() / size.width();
        m_layout.append({gap, y, pageWidth, height});
        y += height + gap;
    }
    m_area = {pageWidth + 2 * gap, y};
    // Scroll bars count in whole numbers, and a page may be any number of times higher than wide.
    constexpr double furthest = 1e9;
    horizontalScrollBar()->setRange(0, std::max(0, int(m_area.width()) - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    verticalScrollBar()->setRange(
        0, std::max(0, int(std::min(m_area.height(), furthest)) - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(metrics::tapTarget);
    m_ask.start(std::chrono::milliseconds(30));
    viewport()->update();
}

QRectF PdfView::shownRect(int page) const
{
    const double spare = std::max(0.0, viewport()->width() - m_area.width());
    return m_layout.at(page).translated(spare / 2 - horizontalScrollBar()->value(),
                                        -verticalScrollBar()->value());
}

QPair<int, int> PdfView::shownPages() const
{
    const double top = verticalScrollBar()->value();
    const auto first =
        std::partition_point(m_layout.cbegin(), m_layout.cend(),
                             [top](const QRectF &page) { return page.bottom() < top; });
    const double bottom = top + viewport()->height();
    const auto end = std::partition_point(
        first, m_layout.cend(), [bottom](const QRectF &page) { return page.top() < bottom; });
    return {int(first - m_layout.cbegin()), int(end - m_layout.cbegin())};
}

QSize PdfView::pixelSize(int page) const
{
    QSizeF size = m_layout.at(page).size() * devicePixelRatioF();
    const double pixels = size.width() * size.height();
    if (pixels > mostPixels)
        size *= std::sqrt(mostPixels / pixels);
    return size.toSize().expandedTo({1, 1}).boundedTo({32000, 32000});
}

void PdfView::askForPages()
{
    if (m_layout.isEmpty())
        return;
    const auto [first, end] = shownPages();
    // What is in view first, then a page on either side for whoever scrolls on.
    QList<int> near;
    for (int page = first; page < end; ++page)
        near.append(page);
    near.append(end);
    near.append(first - 1);
    QList<PdfPages::Request> wanted;
    QHash<int, QImage> kept;
    for (const int page : std::as_const(near)) {
        if (page < 0 || page >= m_layout.size())
            continue;
        const QImage image = m_images.value(page);
        if (!image.isNull())
            kept.insert(page, image);
        if (image.size() != pixelSize(page))
            wanted.append({page, pixelSize(page)});
    }
    m_images = kept;
    m_pages->request(wanted, [self = QPointer(this)](const auto &request, const QImage &image) {
        if (self)
            self->takePage(request, image);
    });
}

void PdfView::takePage(const PdfPages::Request &request, const QImage &image)
{
    if (image.isNull())
        return;
    m_images.insert(request.page, image);
    viewport()->update();
    emit pageDrawn();
}

bool PdfView::isSharp() const
{
    const auto [first, end] = shownPages();
    for (int page = first; page < end; ++page) {
        if (m_images.value(page).size() != pixelSize(page))
            return false;
    }
    return end > first;
}

void PdfView::setZoom(double zoom, const QPointF &fixedPoint)
{
    const double bounded = std::clamp(zoom, 1.0, mostZoom);
    const double change = bounded / m_zoom;
    const QPointF at(horizontalScrollBar()->value() + fixedPoint.x(),
                     verticalScrollBar()->value() + fixedPoint.y());
    m_zoom = bounded;
    layoutPages();
    horizontalScrollBar()->setValue(int(at.x() * change - fixedPoint.x()));
    verticalScrollBar()->setValue(int(at.y() * change - fixedPoint.y()));
}

void PdfView::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const auto [first, end] = shownPages();
    for (int page = first; page < end; ++page) {
        const QRectF area = shownRect(page);
        const QImage image = m_images.value(page);
        if (image.isNull())
            painter.fillRect(area, Qt::white);
        else
            painter.drawImage(area, image);
        painter.setPen(separatorColor(palette()));
        painter.drawRect(area);
    }
}

void PdfView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    const double before = verticalScrollBar()->maximum();
    const double share = before > 0 ? verticalScrollBar()->value() / before : 0.0;
    layoutPages();
    verticalScrollBar()->setValue(int(share * verticalScrollBar()->maximum()));
}

void PdfView::scrollContentsBy(int, int)
{
    viewport()->update();
    m_ask.start(std::chrono::milliseconds(30));
}

bool PdfView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Gesture) {
        auto *gestures = static_cast<QGestureEvent *>(event);
        if (auto *pinch = static_cast<QPinchGesture *>(gestures->gesture(Qt::PinchGesture))) {
            setZoom(m_zoom * pinch->scaleFactor(), viewport()->mapFromGlobal(pinch->centerPoint()));
            return true;
        }
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void PdfView::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    constexpr double stepsForDouble = 480.0;
    setZoom(m_zoom * std::exp2(event->angleDelta().y() / stepsForDouble), event->position());
    event->accept();
}

void PdfView::mouseDoubleClickEvent(QMouseEvent *event)
{
    setZoom(m_zoom > 1.0 ? 1.0 : doubleTapZoom, event->position());
}

void PdfView::keyPressEvent(QKeyEvent *event)
{
    constexpr double keyZoom = 1.25;
    const QPointF middle = QRectF(viewport()->rect()).center();
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return setZoom(m_zoom * keyZoom, middle);
    case Qt::Key_Minus:
        return setZoom(m_zoom / keyZoom, middle);
    case Qt::Key_0:
        return setZoom(1.0, middle);
    case Qt::Key_Home:
        return verticalScrollBar()->setValue(0);
    case Qt::Key_End:
        return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

} // namespace zelkam
