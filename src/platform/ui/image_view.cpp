#include "platform/ui/image_view.h"

#include "platform/images/image_scaling.h"
#include "platform/ui/animation_player.h"
#include "platform/ui/theme.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

namespace zelkam {

namespace {

constexpr double doubleTapZoom = 2.5;
constexpr double keyZoom = 1.25;
constexpr double leastMostZoom = 8.0;
constexpr int arrowStep = 48;

void drawCheckerboard(QPainter &painter, const QRectF &area, const QPalette &palette)
{
    painter.fillRect(area, palette.color(QPalette::Base));
    QColor squares = palette.color(QPalette::WindowText);
    squares.setAlphaF(0.06F);
    painter.save();
    painter.setClipRect(area);
    constexpr int edge = metrics::grid;
    for (int y = int(area.top()); y < area.bottom(); y += edge) {
        const int shift = ((y - int(area.top())) / edge) % 2 == 0 ? 0 : edge;
        for (int x = int(area.left()) + shift; x < area.right(); x += 2 * edge)
            painter.fillRect(x, y, edge, edge, squares);
    }
    painter.restore();
}

} // namespace

ImageView::ImageView(QImage image, QWidget *parent) : QWidget(parent), m_image(std::move(image))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_AcceptTouchEvents);
    grabGesture(Qt::PinchGesture);
}

void ImageView::play(std::shared_ptr<const RegularFile> animation, int frames)
{
    if (isMotionReduced())
        return;
    auto *const player = new AnimationPlayer(std::move(animation), frames, this);
    connect(player, &AnimationPlayer::frameChanged, this, [this](const QImage &frame) {
        m_image = frame;
        m_fitted = QPixmap();
        update();
    });
    player->start();
}

double ImageView::fittedScale() const
{
    const QSizeF size = m_image.deviceIndependentSize();
    if (size.isEmpty() || width() < 1 || height() < 1)
        return 1.0;
    return std::min({1.0, width() / size.width(), height() / size.height()});
}

QSizeF ImageView::shownSize() const
{
    return m_image.deviceIndependentSize() * fittedScale() * m_zoom;
}

void ImageView::setZoom(double zoom, const QPointF &fixedPoint)
{
    // Far enough in to see an image's single pixels, whatever its size.
    const double most = std::max(leastMostZoom, 4.0 / fittedScale());
    const double bounded = std::clamp(zoom, 1.0, most);
    const QPointF fromMiddle = fixedPoint - QRectF(rect()).center();
    m_offset = fromMiddle - (fromMiddle - m_offset) * (bounded / m_zoom);
    m_zoom = bounded;
    keepInView();
}

void ImageView::moveBy(const QPointF &distance)
{
    m_offset += distance;
    keepInView();
}

void ImageView::keepInView()
{
    const QSizeF room = (shownSize() - QSizeF(size())) / 2.0;
    const auto bounded = [](double value, double most) {
        return most <= 0.0 ? 0.0 : std::clamp(value, -most, most);
    };
    m_offset = {bounded(m_offset.x(), room.width()), bounded(m_offset.y(), room.height())};
    updateCursor();
    update();
}

void ImageView::updateCursor()
{
    if (m_zoom > 1.0)
        setCursor(m_dragging ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    else
        unsetCursor();
}

void ImageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QRectF area({}, shownSize());
    area.moveCenter(QRectF(rect()).center() + m_offset);
    if (m_image.hasAlphaChannel())
        drawCheckerboard(painter, area, palette());
    const QSize pixels = (area.size() * devicePixelRatioF()).toSize();
    if (m_zoom > 1.0 || pixels.width() >= m_image.width()) {
        painter.drawImage(area, m_image);
        return;
    }
    if (m_fitted.size() != pixels)
        m_fitted = QPixmap::fromImage(stretchedImage(m_image, pixels));
    painter.drawPixmap(area, m_fitted, m_fitted.rect());
}

void ImageView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    keepInView();
}

bool ImageView::event(QEvent *event)
{
    if (event->type() == QEvent::Gesture) {
        auto *gestures = static_cast<QGestureEvent *>(event);
        if (auto *pinch = static_cast<QPinchGesture *>(gestures->gesture(Qt::PinchGesture))) {
            setZoom(m_zoom * pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
            return true;
        }
    }
    if (event->type() == QEvent::NativeGesture) {
        const auto *gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            setZoom(m_zoom * (1.0 + gesture->value()), gesture->position());
            return true;
        }
    }
    return QWidget::event(event);
}

void ImageView::wheelEvent(QWheelEvent *event)
{
    constexpr double stepsForDouble = 480.0;
    setZoom(m_zoom * std::exp2(event->angleDelta().y() / stepsForDouble), event->position());
    event->accept();
}

void ImageView::mousePressEvent(QMouseEvent *event)
{
    m_dragging = event->button() == Qt::LeftButton;
    m_dragged = event->position();
    updateCursor();
}

void ImageView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    moveBy(event->position() - m_dragged);
    m_dragged = event->position();
}

void ImageView::mouseReleaseEvent(QMouseEvent *)
{
    m_dragging = false;
    updateCursor();
}

void ImageView::mouseDoubleClickEvent(QMouseEvent *event)
{
    setZoom(m_zoom > 1.0 ? 1.0 : doubleTapZoom, event->position());
}

void ImageView::keyPressEvent(QKeyEvent *event)
{
    const QPointF middle = QRectF(rect()).center();
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return setZoom(m_zoom * keyZoom, middle);
    case Qt::Key_Minus:
        return setZoom(m_zoom / keyZoom, middle);
    case Qt::Key_0:
        return setZoom(1.0, middle);
    case Qt::Key_Left:
        return moveBy({arrowStep, 0});
    case Qt::Key_Right:
        return moveBy({-arrowStep, 0});
    case Qt::Key_Up:
        return moveBy({0, arrowStep});
    case Qt::Key_Down:
        return moveBy({0, -arrowStep});
    case Qt::Key_PageUp:
        return moveBy({0, double(height())});
    case Qt::Key_PageDown:
        return moveBy({0, -double(height())});
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace zelkam
