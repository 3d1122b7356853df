#include "platform/photos_ui/photo_grid_view.h"

#include "platform/foundation/file_name.h"
#include "platform/photos/thumbnail_store.h"
#include "platform/ui/theme.h"

#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QScrollBar>
#include <QScroller>
#include <QTimerEvent>
#include <cmath>

namespace zelkam {

namespace {

constexpr int gap = 2;
constexpr int widestCell = 148; ///< three to a phone's width, seven to a tablet's
constexpr int fewestColumns = 3;

} // namespace

PhotoGridView::PhotoGridView(ThumbnailStore &store, QWidget *parent)
    : QAbstractScrollArea(parent), m_store(store)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Photos"));
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    connect(&m_store, &ThumbnailStore::ready, this, [this] {
        // Not only its cell: the store tells of many at once, and Qt draws them together.
        viewport()->update();
        tellWhenFilled();
    });
}

void PhotoGridView::setAssets(const QList<PHAsset> &assets)
{
    m_assets = assets;
    m_current = qMin(m_current, itemCount() - 1);
    m_pressed = -1;
    layoutCells();
}

void PhotoGridView::setHasCameraTile(bool has)
{
    m_hasCameraTile = has;
    layoutCells();
}

void PhotoGridView::setCameraTileEnabled(bool enabled)
{
    m_cameraTileEnabled = enabled;
    viewport()->update();
}

void PhotoGridView::setShowsSelection(bool shows)
{
    m_showsSelection = shows;
    viewport()->update();
}

void PhotoGridView::setSelection(const QList<PHAsset> &selection)
{
    m_numbers.clear();
    for (const PHAsset &asset : selection)
        m_numbers.insert(asset.localIdentifier(), int(m_numbers.size()) + 1);
    viewport()->update();
    describeCurrent();
}

void PhotoGridView::setIsFull(bool full)
{
    m_full = full;
    viewport()->update();
}

void PhotoGridView::scrollTo(const PHAsset &asset)
{
    const auto index = m_assets.indexOf(asset);
    if (index >= 0)
        moveTo(int(index) + (m_hasCameraTile ? 1 : 0));
}

QRect PhotoGridView::cellRect(int item) const
{
    const int column = item % m_columns;
    const int row = item / m_columns;
    const int x = column * (m_cell + gap);
    const int y = row * (m_cell + gap) - verticalScrollBar()->value();
    return {isRightToLeft() ? viewport()->width() - x - m_cell : x, y, m_cell, m_cell};
}

int PhotoGridView::itemAt(QPoint position) const
{
    const int x = isRightToLeft() ? viewport()->width() - position.x() : position.x();
    const int column = x / (m_cell + gap);
    const int row = (position.y() + verticalScrollBar()->value()) / (m_cell + gap);
    const int item = row * m_columns + column;
    return x >= 0 && column < m_columns && item < itemCount() ? item : -1;
}

PhotoGridView::Range PhotoGridView::visibleItems() const
{
    const int top = verticalScrollBar()->value();
    const int first = top / (m_cell + gap) * m_columns;
    const int last = ((top + viewport()->height() - 1) / (m_cell + gap) + 1) * m_columns - 1;
    return {first, qMin(last, itemCount() - 1)};
}

void PhotoGridView::layoutCells()
{
    const int width = viewport()->width();
    m_columns = qMax(fewestColumns, (width + gap + widestCell) / (widestCell + gap));
    m_cell = qMax(1, (width - (m_columns - 1) * gap) / m_columns);
    m_store.setEdge(int(std::lround(m_cell * devicePixelRatioF())));
    const int rows = (itemCount() + m_columns - 1) / m_columns;
    verticalScrollBar()->setRange(0, qMax(0, rows * (m_cell + gap) - gap - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep((m_cell + gap) / 2);
    viewport()->update();
    wantThumbnails();
}

void PhotoGridView::wantThumbnails()
{
    // Gathered: a flick changes the place many times before anything can be made.
    if (!m_wanting.isActive())
        m_wanting.start(0, this);
}

void PhotoGridView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_wanting.timerId()) {
        QAbstractScrollArea::timerEvent(event);
        return;
    }
    m_wanting.stop();
    const Range visible = visibleItems();
    const int ahead = visible.last - visible.first + 1;
    QList<PHAsset> wanted;
    for (int item = visible.first; item <= qMin(visible.last + ahead, itemCount() - 1); ++item) {
        if (!isCameraTile(item))
            wanted.append(assetAt(item));
    }
    m_store.setWanted(wanted);
    tellWhenFilled();
}

void PhotoGridView::tellWhenFilled()
{
    const Range visible = visibleItems();
    for (int item = visible.first; item <= visible.last; ++item) {
        if (!isCameraTile(item) && !m_store.thumbnail(assetAt(item)))
            return;
    }
    if (visible.first <= visible.last)
        emit filled();
}

void PhotoGridView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    layoutCells();
}

void PhotoGridView::scrollContentsBy(int, int)
{
    viewport()->update();
    wantThumbnails();
}

bool PhotoGridView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Leave && m_pressed >= 0) {
        m_pressed = -1;
        viewport()->update();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void PhotoGridView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = itemAt(event->position().toPoint());
    viewport()->update();
}

void PhotoGridView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressed >= 0 && itemAt(event->position().toPoint()) != m_pressed) {
        m_pressed = -1;
        viewport()->update();
    }
}

void PhotoGridView::mouseReleaseEvent(QMouseEvent *event)
{
    const int item = std::exchange(m_pressed, -1);
    viewport()->update();
    if (event->button() != Qt::LeftButton || item < 0)
        return;
    m_current = item;
    activate(item);
}

void PhotoGridView::keyPressEvent(QKeyEvent *event)
{
    const int page = qMax(1, viewport()->height() / (m_cell + gap)) * m_columns;
    const int forward = isRightToLeft() ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(m_current - forward);
    case Qt::Key_Right:
        return moveTo(m_current + forward);
    case Qt::Key_Up:
        return moveTo(m_current < m_columns ? m_current : m_current - m_columns);
    case Qt::Key_Down:
        return moveTo(m_current + m_columns);
    case Qt::Key_PageUp:
        return moveTo(m_current - page);
    case Qt::Key_PageDown:
        return moveTo(m_current + page);
    case Qt::Key_Home:
        return moveTo(0);
    case Qt::Key_End:
        return moveTo(itemCount() - 1);
    case Qt::Key_Space:
        return activate(m_current);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // With a selection, Enter accepts it: the screen's business.
        if (m_showsSelection || m_current < 0)
            event->ignore();
        else
            activate(m_current);
        return;
    default:
        event->ignore(); // not the base's, which would move the scroll bar a second time
    }
}

void PhotoGridView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (m_current < 0 && itemCount() > 0)
        m_current = visibleItems().first;
    describeCurrent();
    viewport()->update();
}

void PhotoGridView::moveTo(int item)
{
    if (itemCount() == 0)
        return;
    m_current = qBound(0, item, itemCount() - 1);
    const QRect cell = cellRect(m_current);
    QScrollBar *bar = verticalScrollBar();
    if (cell.top() < 0)
        bar->setValue(bar->value() + cell.top());
    else if (cell.bottom() >= viewport()->height())
        bar->setValue(bar->value() + cell.bottom() + 1 - viewport()->height());
    describeCurrent();
    viewport()->update();
}

void PhotoGridView::activate(int item)
{
    if (item < 0 || item >= itemCount())
        return;
    if (!isCameraTile(item))
        emit tapped(assetAt(item));
    else if (m_cameraTileEnabled)
        emit cameraTapped();
}

void PhotoGridView::describeCurrent()
{
    if (m_current < 0 || m_current >= itemCount())
        return;
    if (isCameraTile(m_current)) {
        setAccessibleDescription(tr("Take a photo"));
        return;
    }
    const PHAsset &asset = assetAt(m_current);
    const int number = m_numbers.value(asset.localIdentifier());
    const QString name = displayName(asset.fileName());
    setAccessibleDescription(
        number > 0 ? tr("%1, selected as number %2").arg(name, QLocale().toString(number)) : name);
}

void PhotoGridView::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Window));
    const Range visible = visibleItems();
    for (int item = visible.first; item <= visible.last; ++item) {
        const QRect cell = cellRect(item);
        if (isCameraTile(item))
            paintCameraTile(painter, cell);
        else
            paintItem(painter, item, cell);
        if (item == m_pressed)
            painter.fillRect(cell, QColor(0, 0, 0, 70));
        if (item == m_current && hasFocus() &&
            window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(palette().color(QPalette::Window), 6));
            painter.drawRect(cell.adjusted(3, 3, -3, -3));
            painter.setPen(QPen(accentColor(palette()), 3));
            painter.drawRect(cell.adjusted(2, 2, -2, -2));
        }
    }
}

void PhotoGridView::paintItem(QPainter &painter, int item, const QRect &cell)
{
    const PHAsset &asset = assetAt(item);
    const int number = m_numbers.value(asset.localIdentifier());
    QColor ground = palette().color(QPalette::WindowText);
    ground.setAlphaF(0.08F);
    painter.fillRect(cell, ground);
    const auto thumbnail = m_store.thumbnail(asset);
    if (thumbnail && !thumbnail->isNull()) {
        QImage image = *thumbnail;
        image.setDevicePixelRatio(devicePixelRatioF());
        painter.drawImage(cell.topLeft(), image);
    } else if (thumbnail) {
        const int icon = metrics::icon;
        painter.drawPixmap(cell.center() - QPoint(icon / 2, icon / 2),
                           tintedIcon(QStringLiteral("dialog-warning-symbolic"), icon,
                                      secondaryTextColor(palette()), devicePixelRatioF()));
    }
    if (!m_showsSelection)
        return;
    if (number > 0) {
        QColor veil = accentColor(palette());
        veil.setAlphaF(0.12F);
        painter.fillRect(cell, veil);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(accentColor(palette()), 4));
        painter.drawRect(cell.adjusted(2, 2, -2, -2));
    } else if (m_full) {
        QColor veil = palette().color(QPalette::Window);
        veil.setAlphaF(0.6F);
        painter.fillRect(cell, veil);
    }
    paintMark(painter, cell, number);
}

void PhotoGridView::paintMark(QPainter &painter, const QRect &cell, int number) const
{
    constexpr int size = 26;
    constexpr int margin = metrics::grid;
    const int x = isRightToLeft() ? cell.left() + margin : cell.right() + 1 - margin - size;
    QRectF mark(x, cell.top() + margin, size, size);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QString text = number > 0 ? QLocale().toString(number) : QString();
    QFont bold = themeFont(TextRole::caption, font());
    bold.setWeight(QFont::DemiBold);
    const int wide = QFontMetrics(bold).horizontalAdvance(text) + 2 * metrics::grid - 2;
    if (wide > size)
        mark = QRectF(isRightToLeft() ? mark.left() : mark.right() - wide, mark.top(), wide, size);
    painter.setPen(QPen(Qt::white, 2));
    painter.setBrush(number > 0 ? accentColor(palette()) : QColor(0, 0, 0, 60));
    painter.drawRoundedRect(mark.adjusted(1, 1, -1, -1), size / 2.0, size / 2.0);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(mark, Qt::AlignCenter, text);
    painter.restore();
}

void PhotoGridView::paintCameraTile(QPainter &painter, const QRect &cell) const
{
    QColor ground = palette().color(QPalette::WindowText);
    ground.setAlphaF(0.12F);
    painter.fillRect(cell, ground);
    constexpr int icon = 32;
    const QFont caption = themeFont(TextRole::caption, font());
    const int text = QFontMetrics(caption).height();
    const int top = cell.center().y() - (icon + text + 4) / 2;
    const QColor color = m_cameraTileEnabled
                             ? accentColor(palette())
                             : palette().color(QPalette::Disabled, QPalette::WindowText);
    painter.drawPixmap(
        QPoint(cell.center().x() - icon / 2, top),
        tintedIcon(QStringLiteral("camera-photo-symbolic"), icon, color, devicePixelRatioF()));
    painter.setFont(caption);
    painter.setPen(color);
    painter.drawText(QRect(cell.left() + 4, top + icon + 4, cell.width() - 8, text),
                     Qt::AlignHCenter | Qt::TextSingleLine, tr("Take photo"));
}

} // namespace zelkam
