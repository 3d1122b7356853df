#pragma once

#include "platform/photos/ph_asset.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QHash>
#include <QList>

namespace zelkam {

class ThumbnailStore;

/// A grid of square thumbnails over any number of photos. Only what is on the screen is drawn, and
/// only that and the screen after it is asked of the thumbnail store.
///
/// A tap, Space or Enter chooses; the arrow keys, Page Up and Down, Home and End move.
class PhotoGridView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit PhotoGridView(ThumbnailStore &store, QWidget *parent = nullptr);

    void setAssets(const QList<PHAsset> &assets);
    /// Puts a tile before the first photo that takes a new one.
    void setHasCameraTile(bool has);
    /// A tile that is off is drawn dimmed and takes no tap.
    void setCameraTileEnabled(bool enabled);

    bool hasItems() const { return itemCount() > 0; }

    /// Photos carry a round mark; the selected ones their number in the selection.
    void setShowsSelection(bool shows);
    void setSelection(const QList<PHAsset> &selection);
    /// Whether further photos cannot be selected now: they are drawn dimmed.
    void setIsFull(bool full);

    void scrollTo(const PHAsset &asset);

signals:
    void tapped(const zelkam::PHAsset &asset);
    void cameraTapped();
    /// Thumbnails, or signs that there are none, are there for all that is on the screen.
    void filled();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    struct Range
    {
        int first = 0;
        int last = -1;
    };

    int itemCount() const { return int(m_assets.size()) + (m_hasCameraTile ? 1 : 0); }
    bool isCameraTile(int item) const { return m_hasCameraTile && item == 0; }
    const PHAsset &assetAt(int item) const { return m_assets.at(item - (m_hasCameraTile ? 1 : 0)); }
    QRect cellRect(int item) const;
    int itemAt(QPoint position) const;
    Range visibleItems() const;

    void layoutCells();
    void wantThumbnails();
    void tellWhenFilled();
    void activate(int item);
    void moveTo(int item);
    void describeCurrent();

    void paintItem(QPainter &painter, int item, const QRect &cell);
    void paintCameraTile(QPainter &painter, const QRect &cell) const;
    void paintMark(QPainter &painter, const QRect &cell, int number) const;

    ThumbnailStore &m_store;
    QList<PHAsset> m_assets;
    QHash<QString, int> m_numbers; ///< of the selected, by their identifiers, from 1
    QBasicTimer m_wanting;
    int m_columns = 1;
    int m_cell = 1;
    int m_current = -1;
    int m_pressed = -1;
    bool m_hasCameraTile = false;
    bool m_cameraTileEnabled = true;
    bool m_showsSelection = false;
    bool m_full = false;
};

} // namespace zelkam
