#include "app/demo_files.h"

#include <QBuffer>
#include <QDataStream>
#include <QImage>
#include <QLinearGradient>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <array>
#include <cmath>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

/// A band of hills or waves from one edge to the other, filled down to the bottom.
QPainterPath ridge(const QSizeF &size, double height, double swing, double waves, double phase)
{
    constexpr int steps = 160;
    QPainterPath path(QPointF(0, size.height()));
    for (int i = 0; i <= steps; ++i) {
        const double x = double(i) / steps;
        const double y = std::sin(x * waves + phase) + 0.45 * std::sin(x * waves * 2.3 + phase * 2);
        path.lineTo(x * size.width(), size.height() * (height + swing * y));
    }
    path.lineTo(size.width(), size.height());
    path.closeSubpath();
    return path;
}

struct Band
{
    double height, swing, waves, phase;
    QRgb color;
};

/// A drawn landscape: a sky of three colours, the sun or the moon, and what lies below it.
struct Landscape
{
    std::array<QRgb, 3> sky;
    QRgb light;
    QPointF lightAt;
    double lightSize;
    std::array<Band, 6> bands;
};

constexpr Landscape coast{{0xff28406f, 0xffd98a6a, 0xfff8d79a},
                          0xfffff1cd,
                          {1080, 610},
                          96,
                          {Band{0.50, 0.035, 7.0, 0.4, 0xff6d6a8f},
                           {0.57, 0.030, 9.0, 2.1, 0xff4a5480},
                           {0.66, 0.008, 21.0, 0.0, 0xff35648c},
                           {0.75, 0.010, 17.0, 1.2, 0xff27517a},
                           {0.85, 0.012, 13.0, 2.6, 0xff1b3d61},
                           {0.93, 0.018, 5.0, 4.0, 0xff142536}}};
constexpr Landscape dunes{{0xff5fa8d8, 0xffbfe0ee, 0xfffdf0d2},
                          0xfffffbe8,
                          {380, 300},
                          80,
                          {Band{0.52, 0.030, 5.0, 1.0, 0xffe9cfa0},
                           {0.60, 0.040, 4.0, 3.0, 0xffe0bb7f},
                           {0.69, 0.045, 3.5, 0.3, 0xffd3a560},
                           {0.78, 0.040, 4.5, 2.2, 0xffc08c49},
                           {0.87, 0.035, 3.0, 4.1, 0xffa87539},
                           {0.95, 0.020, 6.0, 1.5, 0xff8b5e2e}}};
constexpr Landscape night{{0xff0b1026, 0xff1d2b53, 0xff3b4a7a},
                          0xfff3f1e0,
                          {1180, 260},
                          60,
                          {Band{0.56, 0.050, 8.0, 0.9, 0xff2a355e},
                           {0.63, 0.045, 6.0, 2.4, 0xff222c50},
                           {0.71, 0.035, 10.0, 0.2, 0xff1a2342},
                           {0.79, 0.030, 7.0, 3.3, 0xff141b35},
                           {0.87, 0.025, 9.0, 1.1, 0xff0f1529},
                           {0.94, 0.020, 5.0, 4.5, 0xff0a0e1d}}};

QByteArray drawn(const Landscape &landscape, const char *format)
{
    const QSize size(1600, 1200);
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    QLinearGradient sky(0, 0, 0, size.height() * 0.62);
    sky.setColorAt(0.0, QColor(landscape.sky[0]));
    sky.setColorAt(0.55, QColor(landscape.sky[1]));
    sky.setColorAt(1.0, QColor(landscape.sky[2]));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(landscape.light));
    painter.drawEllipse(landscape.lightAt, landscape.lightSize, landscape.lightSize);
    for (const Band &band : landscape.bands) {
        painter.setBrush(QColor(band.color));
        painter.drawPath(ridge(size, band.height, band.swing, band.waves, band.phase));
    }
    painter.end();

    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, 88);
    return bytes;
}

/// Writes pages of a heading and a text.
QByteArray pdf(const QString &title, const QList<QPair<QString, QString>> &pages)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setPageSize(QPageSize(QPageSize::A5));
    writer.setPageMargins(QMarginsF(14, 16, 14, 16), QPageLayout::Millimeter);
    writer.setResolution(144);
    QPainter painter(&writer);
    QFont heading(u"Inter"_s);
    heading.setPointSizeF(24);
    heading.setWeight(QFont::Bold);
    QFont body(u"Inter"_s);
    body.setPointSizeF(13);
    for (qsizetype i = 0; i < pages.size(); ++i) {
        if (i > 0)
            writer.newPage();
        QRectF area(QPointF(0, 0), QSizeF(painter.viewport().size()));
        QRectF used;
        painter.setFont(heading);
        painter.setPen(QColor(0xff1b3d61));
        painter.drawText(area, Qt::AlignLeft | Qt::TextWordWrap, pages.at(i).first, &used);
        area.setTop(used.bottom() + 18);
        painter.fillRect(QRectF(area.left(), area.top() - 10, area.width(), 1.5),
                         QColor(0xffd98a6a));
        painter.setFont(body);
        painter.setPen(Qt::black);
        painter.drawText(area.adjusted(0, 8, 0, 0), Qt::AlignLeft | Qt::TextWordWrap,
                         pages.at(i).second);
    }
    painter.end();
    return bytes;
}

QByteArray notes()
{
    return "Notes of the crossing\n"
           "=====================\n\n"
           "06:10  Cast off. Wind south-west, four. The ferry is behind us.\n"
           "08:45  Past the lighthouse; two seals on the sandbank.\n"
           "11:30  Tea and toast. Visibility eight miles.\n"
           "14:05  Harbour of Nor\xc3\xb0oyri in sight. \xe2\x9a\x93\n\n"
           "Depths along the way lie in soundings.zkd.\n"_ba;
}

/// Pairs of position and depth, in a format of the demo's own.
QByteArray soundings()
{
    constexpr int count = 512;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.writeRawData("ZKD\x01", 4);
    stream << quint32(count);
    for (int i = 0; i < count; ++i)
        stream << qint32(i * 25) << float(18.0 + 11.0 * std::sin(i / 37.0));
    return bytes;
}

} // namespace

std::optional<DemoFile> demoFile(const QString &name)
{
    if (name == u"coast.jpg")
        return DemoFile{drawn(coast, "JPEG"), "image/jpeg"_ba};
    if (name == u"dunes.jpg")
        return DemoFile{drawn(dunes, "JPEG"), "image/jpeg"_ba};
    if (name == u"night.png")
        return DemoFile{drawn(night, "PNG"), "image/png"_ba};
    if (name == u"notes.txt")
        return DemoFile{notes(), "text/plain;charset=utf-8"_ba};
    if (name == u"soundings.zkd")
        return DemoFile{soundings(), "application/octet-stream"_ba};
    if (name == u"report.pdf") {
        const QList<QPair<QString, QString>> pages{
            {u"Report of the crossing"_s,
             u"The crossing took eight hours at a mean speed of five knots, with the wind from the "
             "south-west throughout.\n\nThe depths were measured every twenty-five metres. They "
             "lie between seven and twenty-nine metres; the shallowest stretch is the sandbank "
             "east of the lighthouse, which has moved a good two hundred metres to the north "
             "since it was last charted."_s},
            {u"What is left to do"_s,
             u"Correct the chart of the sandbank.\n\nReplace the battery of the echo sounder "
             "before the next crossing.\n\nAsk the harbour for a berth in the second week."_s}};
        return DemoFile{pdf(u"Report of the crossing"_s, pages), "application/pdf"_ba};
    }
    return std::nullopt;
}

DemoFile demoReceipt(const QString &contentType, const QString &body)
{
    return {pdf(u"Receipt"_s,
                {{u"Receipt"_s, u"The server was sent\n\n%1\n\nas %2."_s.arg(body, contentType)}}),
            "application/pdf"_ba};
}

} // namespace zelkam
