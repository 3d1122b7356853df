#include "platform/decoding/decode_work.h"

#include "platform/decoding/heif/hevc_decoder.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QImageReader>
#include <QPdfDocument>
#include <QStringDecoder>
#include <algorithm>

namespace zelkam {

namespace {

using Outcome = DecodeReply::Outcome;

/// A picture of the thumbnail cache: another program may have written it, about another file.
DecodeOutcome thumbnail(const DecodeWish &wish, const QByteArray &file)
{
    DecodeOutcome outcome;
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size();
    if (size.isEmpty() || qMax(size.width(), size.height()) > wish.width ||
        !reader.read(&outcome.pixels))
        return outcome;
    // The reader itself would take these keys apart at their colons.
    const QString about = outcome.pixels.text(QStringLiteral("Thumb::URI")) + u'\n' +
                          outcome.pixels.text(QStringLiteral("Thumb::MTime"));
    const QByteArray key = QCryptographicHash::hash(about.toUtf8(), QCryptographicHash::Sha256);
    outcome.reply.outcome = std::equal(key.cbegin(), key.cend(), wish.key.cbegin(), wish.key.cend())
                                ? Outcome::done
                                : Outcome::unknown;
    return outcome;
}

} // namespace

DecodeWork::DecodeWork()
{
    QImageReader::setAllocationLimit(0); // the process has one for all that it does
    // Each reader loads its plug-in, and each of the others what it reads only once.
    for (const char *format : {"jpeg", "png", "gif", "bmp", "webp", "tiff", "ico"}) {
        QBuffer nothing;
        nothing.open(QIODevice::ReadOnly);
        QImageReader(&nothing, format).canRead();
    }
    registerHevcDecoder();
    QFontMetrics(QFont()).horizontalAdvance(QStringLiteral("Aa"));
    QPdfDocument();
    QString(QStringDecoder("windows-1252").decode(QByteArrayView("a")));
}

DecodeOutcome DecodeWork::perform(const DecodeWish &wish, const FileMapping &file,
                                  const DecodeProgress &progress)
{
    using Task = DecodeWish::Task;
    const QByteArray bytes = QByteArray::fromRawData(file.bytes().data(), file.bytes().size());
    if (wish.document == 0 || wish.document != m_document)
        m_open.reset();
    m_document = wish.document;
    switch (wish.task) {
    case Task::picture:
        return decodePictureWish(wish, bytes, progress);
    case Task::thumbnail:
        return thumbnail(wish, bytes);
    case Task::text:
        return decodeTextWish(bytes);
    case Task::frame:
    case Task::document:
    case Task::page:
        break;
    }
    if (!m_open)
        m_open = wish.task == Task::frame ? openAnimation(file) : openDocument(file);
    return m_open ? m_open->perform(wish, progress) : DecodeOutcome();
}

} // namespace zelkam
