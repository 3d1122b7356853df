#include "platform/decoding/decode_work.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfDocument>

namespace zelkam {

namespace {

using Outcome = DecodeReply::Outcome;

constexpr int mostPages = 5000;

/// A PDF, over the bytes of its file.
class Document : public OpenFile
{
public:
    explicit Document(FileMapping file) : m_file(std::move(file))
    {
        m_buffer.setData(QByteArray::fromRawData(m_file.bytes().data(), m_file.bytes().size()));
        m_buffer.open(QIODevice::ReadOnly);
        m_document.load(&m_buffer);
    }

    DecodeOutcome perform(const DecodeWish &wish, const DecodeProgress &) override
    {
        if (m_document.status() != QPdfDocument::Status::Ready || m_document.pageCount() < 1) {
            const bool isLocked =
                m_document.error() == QPdfDocument::Error::IncorrectPassword ||
                m_document.error() == QPdfDocument::Error::UnsupportedSecurityScheme;
            DecodeOutcome outcome;
            outcome.reply.outcome = isLocked ? Outcome::locked : Outcome::damaged;
            return outcome;
        }
        return wish.task == DecodeWish::Task::page ? page(wish) : sizes();
    }

private:
    DecodeOutcome sizes()
    {
        QList<double> sizes;
        const int count = qMin(m_document.pageCount(), mostPages);
        for (int page = 0; page < count; ++page) {
            const QSizeF size = m_document.pagePointSize(page);
            sizes << size.width() << size.height();
        }
        DecodeOutcome outcome;
        outcome.reply.outcome = Outcome::done;
        outcome.bytes = QByteArray(reinterpret_cast<const char *>(sizes.constData()),
                                   sizes.size() * qsizetype(sizeof(double)));
        return outcome;
    }

    DecodeOutcome page(const DecodeWish &wish)
    {
        const QSize size(wish.width, wish.height);
        DecodeOutcome outcome;
        outcome.pixels = QImage(size, QImage::Format_RGB32);
        outcome.pixels.fill(Qt::white); // paper is not see-through
        const QImage page = m_document.render(wish.index, size);
        if (!outcome.pixels.isNull() && !page.isNull()) {
            QPainter(&outcome.pixels).drawImage(0, 0, page);
            outcome.reply.outcome = Outcome::done;
        }
        return outcome;
    }

    FileMapping m_file;
    QBuffer m_buffer;
    QPdfDocument m_document;
};

} // namespace

std::unique_ptr<OpenFile> openDocument(const FileMapping &file)
{
    return std::make_unique<Document>(file);
}

} // namespace zelkam
