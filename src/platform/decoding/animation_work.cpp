#include "platform/decoding/decode_work.h"
#include "platform/images/picture_kind.h"

#include <QBuffer>
#include <QImageReader>

namespace zelkam {

namespace {

using Outcome = DecodeReply::Outcome;

/// The frames of a GIF or a WebP, in their order; the first one follows the last.
class Animation : public OpenFile
{
public:
    Animation(FileMapping file, QByteArray format)
        : m_file(std::move(file)), m_format(std::move(format))
    {
        m_buffer.setData(QByteArray::fromRawData(m_file.bytes().data(), m_file.bytes().size()));
        m_buffer.open(QIODevice::ReadOnly);
        rewind();
    }

    DecodeOutcome perform(const DecodeWish &wish, const DecodeProgress &progress) override
    {
        if (wish.index < m_next)
            rewind();
        DecodeOutcome outcome;
        while (m_next <= wish.index) {
            if (!m_reader->read(&outcome.pixels)) {
                outcome.reply.outcome = Outcome::damaged;
                return outcome;
            }
            ++m_next;
            outcome.reply.outcome = Outcome::working;
            outcome.reply.ownWidth = outcome.pixels.width();
            outcome.reply.ownHeight = outcome.pixels.height();
            progress(outcome.reply);
        }
        outcome.reply.outcome = Outcome::done;
        outcome.reply.value = m_reader->nextImageDelay();
        return outcome;
    }

private:
    void rewind()
    {
        m_buffer.seek(0);
        m_reader = std::make_unique<QImageReader>(&m_buffer, m_format);
        m_reader->setAutoDetectImageFormat(false);
        m_next = 0;
    }

    FileMapping m_file;
    QByteArray m_format;
    QBuffer m_buffer;
    std::unique_ptr<QImageReader> m_reader;
    int m_next = 0; ///< the frame that is read next
};

QByteArray formatOf(QByteArrayView file)
{
    const QByteArray format =
        rasterFormat(file.first(qMin<qsizetype>(16, file.size())).toByteArray());
    return format == "gif" || format == "webp" ? format : QByteArray();
}

} // namespace

std::unique_ptr<OpenFile> openAnimation(const FileMapping &file)
{
    const QByteArray format = formatOf(file.bytes());
    return format.isEmpty() ? nullptr : std::make_unique<Animation>(file, format);
}

int playableFrames(const QByteArray &file)
{
    constexpr int longestEdge = 2048;
    const QByteArray format = formatOf(file);
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    const bool isPlayable = !format.isEmpty() && reader.supportsAnimation() &&
                            qMax(size.width(), size.height()) <= longestEdge;
    return isPlayable ? reader.imageCount() : 1;
}

} // namespace zelkam
