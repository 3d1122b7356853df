#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>
#include <QtEndian>

/// Real files for the tests, and the hostile ones that no program writes.
namespace sample {

inline QByteArray image(const QSize &size, const char *format, QColor color = Qt::red,
                        bool progressive = false)
{
    QImage image(size, color.alpha() < 255 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    image.fill(color);
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    writer.setText(QStringLiteral("Comment"), QStringLiteral("made at home"));
    return writer.write(image) ? buffer.data() : QByteArray();
}

/// A valid PNG header of any size, and behind it the beginning of pixels that it has not.
inline QByteArray pngHeader(quint32 width, quint32 height)
{
    QByteArray chunk("IHDR");
    const quint32 edges[] = {qToBigEndian(width), qToBigEndian(height)};
    chunk.append(reinterpret_cast<const char *>(edges), sizeof edges);
    chunk.append("\x08\x02\0\0\0", 5);
    quint32 crc = 0xffffffff;
    for (const char byte : chunk) {
        crc ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xedb88320 : 0);
    }
    const quint32 sum = qToBigEndian(~crc);
    return "\x89PNG\r\n\x1a\n" + QByteArray("\0\0\0\x0d", 4) + chunk +
           QByteArray(reinterpret_cast<const char *>(&sum), sizeof sum) +
           QByteArray("\0\0\x10\0IDAT\x78\x9c", 10);
}

inline QByteArray pdf(int pages)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        QPainter painter(&writer);
        for (int page = 0; page < pages; ++page) {
            if (page > 0)
                writer.newPage();
            painter.fillRect(0, 0, writer.width(), writer.height(), Qt::blue);
        }
    }
    return buffer.data();
}

inline bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace sample
