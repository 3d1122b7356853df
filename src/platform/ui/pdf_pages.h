#pragma once

#include "platform/images/decoder.h"

#include <QImage>
#include <QList>
#include <QSize>
#include <QSizeF>
#include <functional>
#include <memory>

namespace zelkam {

/// A PDF document. Its pages are drawn by a decoder, one after another beside the main thread, so
/// that one that takes long never holds up the screen. What is still drawn ends with its last
/// owner, and at once.
class PdfPages : public std::enable_shared_from_this<PdfPages>
{
public:
    struct Request
    {
        int page = 0;
        QSize size; ///< in pixels
        friend bool operator==(const Request &, const Request &) = default;
    };
    /// Runs on the main thread.
    using Rendered = std::function<void(const Request &request, const QImage &image)>;

    /// Opens a document and waits until it is known whether that works. Not on the main thread.
    static std::shared_ptr<PdfPages> open(std::shared_ptr<const RegularFile> file,
                                          const DecodeCancel &cancel,
                                          DecodeReply::Outcome &outcome);
    ~PdfPages();
    PdfPages(const PdfPages &) = delete;
    PdfPages &operator=(const PdfPages &) = delete;

    /// The sizes of the pages, in points; at most some thousands of pages.
    const QList<QSizeF> &sizes() const { return m_sizes; }

    /// Asks for pages, the most urgent first, in place of those asked for before and not begun.
    /// Main thread only.
    void request(const QList<Request> &wanted, Rendered rendered);

private:
    explicit PdfPages(std::shared_ptr<const RegularFile> file)
        : m_source{std::move(file), newDecodedDocument(), {}}
    {
    }
    void drawNext();

    /// What the threads that draw hold of a document.
    struct Source
    {
        std::shared_ptr<const RegularFile> file;
        quint64 document;
        DecodeCancel cancel;

        Decoded ask(DecodeWish wish, const DecodeCancel &canceller) const;
    };
    const Source m_source;
    QList<QSizeF> m_sizes;
    QList<Request> m_wanted;
    Rendered m_rendered;
    bool m_isDrawing = false;
};

} // namespace zelkam
