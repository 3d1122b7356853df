#pragma once

#include <QHash>
#include <QPixmap>
#include <QStyledItemDelegate>

namespace zelkam {

class DocumentPickerModel;
struct DocumentEntry;

/// Draws the rows of the picker: icon, name, size and date, and the mark of a picked document.
/// A wide row has columns, a narrow one a second line.
class DocumentRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit DocumentRowDelegate(const DocumentPickerModel &model, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QPixmap iconOf(const DocumentEntry &entry, double devicePixelRatio) const;
    void drawWide(QPainter &painter, const QRect &room, const DocumentEntry &entry,
                  const QPalette &palette) const;
    void drawNarrow(QPainter &painter, const QRect &room, const DocumentEntry &entry,
                    const QPalette &palette) const;
    void drawMark(QPainter &painter, const QRect &room, bool selected,
                  const QPalette &palette) const;

    const DocumentPickerModel &m_model;
    mutable QHash<QString, QPixmap> m_icons; ///< by extension; emptied when it grows large
};

} // namespace zelkam
