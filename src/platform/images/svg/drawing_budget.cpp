#include "platform/images/svg/drawing_budget.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <numeric>

namespace zelkam {

namespace {

/// Of this thread: how busy the machine is otherwise does not matter.
std::chrono::nanoseconds processorTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// A stroke has two sides, and joins and caps of some lines at each point.
constexpr double outlinesOfAStroke = 6;

/// How far two points lie apart in one direction within the canvas: what lies outside is clipped
/// before it costs anything.
double distance(double from, double to, double canvas)
{
    return std::fabs(std::clamp(from, 0.0, canvas) - std::clamp(to, 0.0, canvas));
}

double length(const QPainterPath::Element &from, const QPainterPath::Element &to)
{
    return std::hypot(to.x - from.x, to.y - from.y);
}

} // namespace

/// Hands everything on to a painter of the image and counts on the way.
class DrawingBudget::Engine : public QPaintEngine
{
public:
    Engine(QImage &image, const Limits &limits)
        : QPaintEngine(AllFeatures),
          m_image(image),
          m_shapeWork(limits.shapeWork),
          m_end(processorTime() + limits.time)
    {
    }

    bool isSpent() const { return m_isSpent; }

    bool begin(QPaintDevice *) override { return m_painter.begin(&m_image); }
    bool end() override { return m_painter.end(); }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState &changed) override
    {
        const DirtyFlags dirty = changed.state();
        if (dirty & DirtyPen)
            m_painter.setPen(changed.pen());
        if (dirty & DirtyBrush)
            m_painter.setBrush(changed.brush());
        if (dirty & DirtyBrushOrigin)
            m_painter.setBrushOrigin(changed.brushOrigin());
        if (dirty & DirtyFont)
            m_painter.setFont(changed.font());
        if (dirty & DirtyBackground)
            m_painter.setBackground(changed.backgroundBrush());
        if (dirty & DirtyBackgroundMode)
            m_painter.setBackgroundMode(changed.backgroundMode());
        if (dirty & DirtyTransform)
            m_painter.setTransform(changed.transform());
        if (dirty & DirtyClipRegion)
            m_painter.setClipRegion(changed.clipRegion(), changed.clipOperation());
        if (dirty & DirtyClipPath) {
            const QPainterPath path = changed.clipPath();
            if (pay(cost(path)))
                m_painter.setClipPath(path, changed.clipOperation());
        }
        if (dirty & DirtyClipEnabled)
            m_painter.setClipping(changed.isClipEnabled());
        if (dirty & DirtyHints)
            m_painter.setRenderHints(changed.renderHints());
        if (dirty & DirtyCompositionMode)
            m_painter.setCompositionMode(changed.compositionMode());
        if (dirty & DirtyOpacity)
            m_painter.setOpacity(changed.opacity());
    }

    // Everything else that a painter draws arrives in one of these: what an engine does not
    // implement, rectangles, ellipses and text among it, is made of paths and polygons.
    void drawPath(const QPainterPath &path) override
    {
        if (pay(cost(path) + strokeCost(path)))
            m_painter.drawPath(path);
    }

    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path;
        path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
        path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        const QBrush brush = m_painter.brush();
        if (mode == PolylineMode)
            m_painter.setBrush(Qt::NoBrush);
        else
            path.closeSubpath();
        drawPath(path);
        m_painter.setBrush(brush);
    }

    void drawPixmap(const QRectF &target, const QPixmap &pixmap, const QRectF &source) override
    {
        if (pay(area(target)))
            m_painter.drawPixmap(target, pixmap, source);
    }

    void drawImage(const QRectF &target, const QImage &image, const QRectF &source,
                   Qt::ImageConversionFlags flags) override
    {
        if (pay(area(target)))
            m_painter.drawImage(target, image, source, flags);
    }

private:
    /// Whether a shape of this price may be drawn.
    bool pay(double price)
    {
        // Written so that what is no number is too much.
        m_isSpent = m_isSpent || !(price <= m_shapeWork) || processorTime() > m_end;
        return !m_isSpent;
    }

    QRectF onCanvas(const QRectF &rectangle) const
    {
        return m_painter.transform().mapRect(rectangle).intersected(QRectF(m_image.rect()));
    }

    double area(const QRectF &rectangle) const
    {
        const QRectF seen = onCanvas(rectangle);
        return 1 + seen.width() * seen.height();
    }

    /// The price of pixels that an outline passes through, within bounds: the renderer keeps those
    /// of a line of pixels in a list, and searches it for each from its start.
    double outlineCost(double pixels, const QRectF &bounds) const
    {
        const QRectF seen = onCanvas(bounds);
        const double ofALine = std::fmin(1 + seen.width(), pixels / (1 + seen.height()));
        constexpr double fixedPrice = 20;
        return pixels * (fixedPrice + ofALine / 2) + area(bounds);
    }

    double cost(const QPainterPath &path) const
    {
        const QTransform transform = m_painter.transform();
        double pixels = 0;
        QPointF before;
        for (int i = 0; i < path.elementCount(); ++i) {
            const QPointF point = transform.map(QPointF(path.elementAt(i)));
            if (i > 0)
                pixels += 1 + distance(before.x(), point.x(), m_image.width()) +
                          distance(before.y(), point.y(), m_image.height());
            before = point;
        }
        return outlineCost(pixels, path.controlPointRect());
    }

    double strokeCost(const QPainterPath &path) const
    {
        const QPen pen = m_painter.pen();
        if (pen.style() == Qt::NoPen)
            return 0;
        const double unit = pen.widthF() > 0 ? pen.widthF() : 1.0;
        double outline = 0;
        for (int i = 1; i < path.elementCount(); ++i)
            outline += length(path.elementAt(i - 1), path.elementAt(i));
        double points = path.elementCount();
        if (pen.style() != Qt::SolidLine) {
            const auto dashes = pen.dashPattern();
            const double pattern = unit * std::accumulate(dashes.begin(), dashes.end(), 0.0);
            points += outline / pattern * double(dashes.size());
        }
        const double scale = std::sqrt(std::fabs(m_painter.transform().determinant()));
        const double canvas = m_image.width() + m_image.height();
        const double across = std::fmin(unit * scale, canvas);
        const double along = std::fmin(outline * scale, canvas * points);
        const QRectF bounds = path.controlPointRect().adjusted(-unit, -unit, unit, unit);
        return outlineCost(outlinesOfAStroke * points * (1 + across) + 2 * along, bounds);
    }

    QImage &m_image;
    QPainter m_painter;
    double m_shapeWork;
    std::chrono::nanoseconds m_end;
    bool m_isSpent = false;
};

DrawingBudget::DrawingBudget(QImage &image, const Limits &limits)
    : m_image(image), m_engine(std::make_unique<Engine>(image, limits))
{
}

DrawingBudget::~DrawingBudget() = default;

bool DrawingBudget::isSpent() const
{
    return m_engine->isSpent();
}

QPaintEngine *DrawingBudget::paintEngine() const
{
    return m_engine.get();
}

int DrawingBudget::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return m_image.width();
    case PdmHeight:
        return m_image.height();
    case PdmWidthMM:
        return m_image.widthMM();
    case PdmHeightMM:
        return m_image.heightMM();
    case PdmNumColors:
        return m_image.colorCount();
    case PdmDepth:
        return m_image.depth();
    case PdmDpiX:
        return m_image.logicalDpiX();
    case PdmDpiY:
        return m_image.logicalDpiY();
    case PdmPhysicalDpiX:
        return m_image.physicalDpiX();
    case PdmPhysicalDpiY:
        return m_image.physicalDpiY();
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    }
    return 0;
}

} // namespace zelkam
