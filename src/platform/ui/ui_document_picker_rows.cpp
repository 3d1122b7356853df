#include "platform/ui/ui_document_picker_rows.h"

#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_model.h"

#include <QMimeDatabase>
#include <QPainter>

namespace zelkam {

namespace {

constexpr int rowHeight = 60;
constexpr int iconSize = 32;
constexpr int markSize = 24;
constexpr int margin = 2 * metrics::grid;
constexpr int wideFrom = 560;
constexpr int sizeColumn = 88;
constexpr int dateColumn = 112;
constexpr double dimmed = 0.45;
constexpr qsizetype mostIcons = 500;

void drawText(QPainter &painter, const QRect &room, const QString &text, Qt::Alignment alignment,
              Qt::TextElideMode elide = Qt::ElideRight)
{
    painter.drawText(room, int(alignment) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, elide, room.width()));
}

} // namespace

DocumentRowDelegate::DocumentRowDelegate(const DocumentPickerModel &model, QObject *parent)
    : QStyledItemDelegate(parent), m_model(model)
{
}

QSize DocumentRowDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, rowHeight};
}

QPixmap DocumentRowDelegate::iconOf(const DocumentEntry &entry, double devicePixelRatio) const
{
    // A slash is in no name, so that these cannot be extensions.
    const QString key = entry.isFolder ? QStringLiteral("/folder")
                        : entry.choice == DocumentChoice::notAFile
                            ? QStringLiteral("/other")
                            : entry.name.section(u'.', -1).toLower();
    const auto known = m_icons.constFind(key);
    if (known != m_icons.cend() && known->devicePixelRatio() == devicePixelRatio)
        return *known;
    QStringList names;
    if (entry.isFolder) {
        names << QStringLiteral("folder") << QStringLiteral("inode-directory");
    } else if (entry.choice != DocumentChoice::notAFile) {
        const QMimeType type =
            QMimeDatabase().mimeTypeForFile(entry.name, QMimeDatabase::MatchExtension);
        if (!type.isDefault())
            names << type.iconName() << type.genericIconName();
    }
    names << QStringLiteral("unknown") << QStringLiteral("text-x-generic");
    if (m_icons.size() >= mostIcons)
        m_icons.clear();
    return *m_icons.insert(key, kindIcon(names, iconSize, devicePixelRatio));
}

void DocumentRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    const DocumentEntry &entry = m_model.entry(index);
    const bool selected = m_model.isSelected(index);
    const bool usable = index.flags().testFlag(Qt::ItemIsEnabled);
    // What cannot be picked is drawn fainter as a whole, not in the palette's disabled colours.
    QPalette palette = option.palette;
    palette.setCurrentColorGroup(QPalette::Active);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);

    QColor shade = selected ? accentColor(palette) : palette.color(QPalette::WindowText);
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver) && usable;
    shade.setAlphaF(selected ? 0.12F : isHovered ? 0.05F : 0.0F);
    painter->fillRect(option.rect, shade);

    // Right-to-left languages have the row the other way round.
    const bool mirrored = option.direction == Qt::RightToLeft;
    const auto placed = [&](const QRect &rect) {
        return QStyle::visualRect(mirrored ? Qt::RightToLeft : Qt::LeftToRight, option.rect, rect);
    };
    const QRect inner = option.rect.adjusted(margin, 0, -margin, 0);
    const QRect icon(inner.left(), inner.center().y() - iconSize / 2 + 1, iconSize, iconSize);
    const QRect mark(inner.right() - markSize + 1, inner.center().y() - markSize / 2 + 1, markSize,
                     markSize);
    const QRect text(icon.right() + 1 + 12, inner.top(), mark.left() - icon.right() - 24,
                     inner.height());

    painter->setOpacity(usable ? 1.0 : dimmed);
    painter->drawPixmap(placed(icon).topLeft(),
                        iconOf(entry, painter->device()->devicePixelRatio()));
    painter->setLayoutDirection(option.direction);
    if (option.rect.width() >= wideFrom)
        drawWide(*painter, placed(text), entry, palette);
    else
        drawNarrow(*painter, placed(text), entry, palette);
    if (entry.isFolder)
        painter->drawPixmap(
            placed(mark.adjusted(4, 4, -4, -4)).topLeft(),
            tintedIcon(mirrored ? QStringLiteral("go-previous") : QStringLiteral("go-next"), 16,
                       secondaryTextColor(palette), painter->device()->devicePixelRatio()));
    else if (m_model.hasMark(index))
        drawMark(*painter, placed(mark), selected, palette);

    painter->setOpacity(1.0);
    painter->fillRect(
        placed(QRect(text.left(), option.rect.bottom(), option.rect.right() - text.left() + 1, 1)),
        separatorColor(palette));
    if (option.state.testFlag(QStyle::State_HasFocus) && showsFocus(*option.widget))
        drawFocusRing(*painter, QRectF(option.rect).adjusted(3, 3, -3, -4), accentColor(palette));
    painter->restore();
}

void DocumentRowDelegate::drawWide(QPainter &painter, const QRect &room, const DocumentEntry &entry,
                                   const QPalette &palette) const
{
    const bool mirrored = painter.layoutDirection() == Qt::RightToLeft;
    const auto column = [&](int fromEnd, int width) {
        const QRect rect(room.right() + 1 - fromEnd - width, room.top(), width, room.height());
        return QStyle::visualRect(mirrored ? Qt::RightToLeft : Qt::LeftToRight, room, rect);
    };
    const int columns = sizeColumn + dateColumn + 2 * margin;
    const QRect name =
        QStyle::visualRect(painter.layoutDirection(), room, room.adjusted(0, 0, -columns, 0));
    painter.setFont(themeFont(TextRole::body, painter.font()));
    painter.setPen(palette.color(QPalette::WindowText));
    drawText(painter, name, entry.shown, Qt::AlignVCenter, Qt::ElideMiddle);
    painter.setFont(themeFont(TextRole::caption, painter.font()));
    painter.setPen(secondaryTextColor(palette));
    const QString problem = documentProblem(entry);
    if (entry.choice != DocumentChoice::wrongType && !problem.isEmpty()) {
        drawText(painter, column(0, columns - margin), problem, Qt::AlignVCenter | Qt::AlignRight);
        return;
    }
    drawText(painter, column(dateColumn + margin, sizeColumn), documentSize(entry),
             Qt::AlignVCenter | Qt::AlignRight);
    drawText(painter, column(0, dateColumn), documentDate(entry),
             Qt::AlignVCenter | Qt::AlignRight);
}

void DocumentRowDelegate::drawNarrow(QPainter &painter, const QRect &room,
                                     const DocumentEntry &entry, const QPalette &palette) const
{
    QStringList details{documentSize(entry), documentDate(entry)};
    if (entry.choice != DocumentChoice::wrongType && !documentProblem(entry).isEmpty())
        details = {documentProblem(entry)};
    details.removeAll(QString());
    const QRect upper = room.adjusted(0, 9, 0, -room.height() / 2 + 3);
    const QRect lower = room.adjusted(0, room.height() / 2 + 3, 0, -8);
    painter.setFont(themeFont(TextRole::body, painter.font()));
    painter.setPen(palette.color(QPalette::WindowText));
    drawText(painter, details.isEmpty() ? room : upper, entry.shown, Qt::AlignVCenter,
             Qt::ElideMiddle);
    painter.setFont(themeFont(TextRole::caption, painter.font()));
    painter.setPen(secondaryTextColor(palette));
    drawText(painter, lower, details.join(QStringLiteral(" · ")), Qt::AlignVCenter);
}

void DocumentRowDelegate::drawMark(QPainter &painter, const QRect &room, bool selected,
                                   const QPalette &palette) const
{
    const QRectF circle = QRectF(room).adjusted(1.5, 1.5, -1.5, -1.5);
    if (!selected) {
        painter.setPen(QPen(palette.color(QPalette::Mid), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(circle);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(accentColor(palette));
    painter.drawEllipse(circle.adjusted(-0.5, -0.5, 0.5, 0.5));
    QPen pen(palette.color(QPalette::HighlightedText), 2, Qt::SolidLine, Qt::RoundCap,
             Qt::RoundJoin);
    painter.setPen(pen);
    const QPointF middle = circle.center();
    painter.drawPolyline(QPolygonF(
        {middle + QPointF(-4.5, 0.5), middle + QPointF(-1.5, 3.5), middle + QPointF(5.0, -3.5)}));
}

} // namespace zelkam
