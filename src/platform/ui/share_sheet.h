#pragma once

#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <optional>

class QScrollArea;

namespace zelkam {

/// One thing that a share sheet offers.
struct ShareRow
{
    QString title;
    QString iconName;
    bool enabled = true;
};

/// The screen of the share sheet: a dimmed background, and on it a panel with what is shared and
/// what can be done with it. It says what was chosen and does nothing itself.
class ShareSheet : public QWidget
{
    Q_OBJECT

public:
    /// What the panel's head shows.
    struct Head
    {
        QStringList iconNames;
        QString title;
        QString subtitle;
    };

    ShareSheet(Head head, const QList<ShareRow> &rows);

    /// Where a popover points to, in this widget's coordinates; nothing for a sheet at the bottom.
    void setAnchor(const std::optional<QRect> &anchor);
    /// 0 is gone, 1 is in place.
    void setShown(double shown);
    void layoutPanel();

signals:
    void chosen(int row);
    void cancelled();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    bool isPopover() const;
    void drawHead(QPainter &painter, const QRectF &room) const;

    Head m_head;
    QScrollArea *m_rows;
    QWidget *m_cancel;
    int m_rowsHeight = 0;
    std::optional<QRect> m_anchor;
    QRectF m_panel;
    double m_shown = 1.0;
};

} // namespace zelkam
