#include "platform/ui/file_info_view.h"

#include "platform/ui/theme.h"

#include <QLocale>
#include <QPainter>
#include <QTextLayout>

namespace zelkam {

namespace {

constexpr int iconSize = 96;
constexpr int widest = 480;

/// Draws centred text, broken anywhere where it must be, and returns where it ends.
/// Drawing plain QTextLayout lines takes a name for what it is: no markup, no mnemonics.
double drawCentred(QPainter &painter, const QFont &font, const QColor &color, const QString &text,
                   const QRectF &room, int mostLines)
{
    QTextLayout layout(text, font, painter.device());
    QTextOption option(Qt::AlignHCenter);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    double y = 0.0;
    for (int line = 0; line < mostLines; ++line) {
        QTextLine next = layout.createLine();
        if (!next.isValid())
            break;
        next.setLineWidth(room.width());
        next.setPosition({0.0, y});
        y += next.height();
    }
    layout.endLayout();
    painter.setPen(color);
    layout.draw(&painter, room.topLeft());
    return room.top() + y;
}

} // namespace

QStringList kindIconNames(const QMimeType &type)
{
    QStringList names;
    if (type.isValid())
        names << type.iconName() << type.genericIconName();
    return names << QStringLiteral("unknown") << QStringLiteral("text-x-generic");
}

QString kindAndSize(const PreviewFile &file)
{
    if (!file.type.isValid()) // it cannot be read
        return {};
    const QString size = QLocale().formattedDataSize(file.size, 1, QLocale::DataSizeSIFormat);
    if (file.type.isDefault())
        return size;
    return file.type.comment() + QStringLiteral(" · ") + size;
}

FileInfoView::FileInfoView(PreviewFile file, QString problem, QWidget *parent)
    : QWidget(parent), m_file(std::move(file)), m_problem(std::move(problem))
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(m_file.name);
    setAccessibleDescription(kindAndSize(m_file) + u' ' + m_problem);
}

void FileInfoView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double room = qMin(widest, width() - 4 * metrics::grid);
    const double left = (width() - room) / 2.0;
    // A little above the middle, where the eye takes the middle to be.
    double y = qMax(2.0 * metrics::grid, height() * 0.42 - iconSize - 2 * metrics::grid);

    const QPixmap icon = kindIcon(kindIconNames(m_file.type), iconSize, devicePixelRatioF());
    painter.drawPixmap(QPointF((width() - iconSize) / 2.0, y), icon);
    y += iconSize + 2 * metrics::grid;

    constexpr double rest = 1000.0;
    const QFont title = themeFont(TextRole::title, font());
    const QFontMetrics titleMetrics(title);
    const QString name = titleMetrics.elidedText(m_file.name, Qt::ElideMiddle, int(room * 2.6));
    y = drawCentred(painter, title, palette().color(QPalette::WindowText), name,
                    {left, y, room, rest}, 3);
    y = drawCentred(painter, themeFont(TextRole::caption, font()), secondaryTextColor(palette()),
                    kindAndSize(m_file), {left, y + metrics::grid / 2.0, room, rest}, 2);
    drawCentred(painter, themeFont(TextRole::body, font()), palette().color(QPalette::WindowText),
                m_problem, {left, y + 3 * metrics::grid, room, rest}, 4);
}

LoadingView::LoadingView(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(tr("Loading"));
    // It keeps the keys for what takes its place.
    setFocusPolicy(Qt::StrongFocus);
    startTimer(std::chrono::milliseconds(40));
}

void LoadingView::timerEvent(QTimerEvent *)
{
    ++m_ticks;
    update();
}

void LoadingView::paintEvent(QPaintEvent *)
{
    constexpr int hiddenTicks = 6;
    if (m_ticks < hiddenTicks)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF ring(0, 0, 4 * metrics::grid, 4 * metrics::grid);
    ring.moveCenter(QRectF(rect()).center());
    painter.setPen(QPen(separatorColor(palette()), 3));
    painter.drawEllipse(ring);
    painter.setPen(QPen(accentColor(palette()), 3, Qt::SolidLine, Qt::RoundCap));
    drawBusyArc(painter, ring, 90, m_ticks / 30.0);
}

} // namespace zelkam
