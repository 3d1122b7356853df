#pragma once

#include <QByteArray>
#include <cstddef>
#include <functional>
#include <memory>

namespace zelkam {

/// Undoes the Content-Encoding of a body, piece by piece.
///
/// curl could do this, but takes a gzip stream that stops in the middle for a whole one; here
/// that is found. gzip is all that is offered to servers. Other codings that exist are a failure;
/// words that name none (some servers write "utf-8" or "none") mean nothing.
class ContentDecoder
{
public:
    using Sink = std::function<bool(const char *data, std::size_t size)>;

    /// The codings are the value of the Content-Encoding field.
    explicit ContentDecoder(const QByteArray &codings);
    ~ContentDecoder();
    ContentDecoder(const ContentDecoder &) = delete;
    ContentDecoder &operator=(const ContentDecoder &) = delete;

    /// Whether the bytes that come out are others than those that go in.
    bool isDecoding() const { return m_gzip != nullptr; }

    /// Hands the decoded bytes to the sink. False when the data is damaged or the sink fails.
    bool decode(const char *data, std::size_t size, const Sink &sink);

    /// Whether no error has been found and the data did not stop in the middle. A body without
    /// a single byte is whole, as that of an answer to HEAD.
    bool isWhole() const;

    /// Whether the data itself is to blame for a failure.
    bool isDamaged() const { return m_damaged; }

private:
    struct Gzip;

    std::unique_ptr<Gzip> m_gzip; // absent when the bytes go through as they are
    bool m_isUnknown = false;
    bool m_damaged = false;
};

} // namespace zelkam
