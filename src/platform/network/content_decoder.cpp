#include "platform/network/content_decoder.h"

#include <QList>
#include <array>
#include <zlib.h>

namespace zelkam {

struct ContentDecoder::Gzip
{
    // 16 asks zlib for the gzip format, with its checksum and length.
    Gzip() { isReady = inflateInit2(&stream, 16 + MAX_WBITS) == Z_OK; }
    ~Gzip() { inflateEnd(&stream); }
    Gzip(const Gzip &) = delete;
    Gzip &operator=(const Gzip &) = delete;

    z_stream stream{};
    bool isReady = false;
    bool hasStarted = false;
    bool hasEnded = false;
    bool isPadding = false; // all that is still to come
    std::array<unsigned char, 64 * 1024> output;
};

ContentDecoder::ContentDecoder(const QByteArray &codings)
{
    for (const QByteArray &coding : codings.toLower().split(',')) {
        const QByteArray name = coding.trimmed();
        const bool isGzip = name == "gzip" || name == "x-gzip";
        if (isGzip && !m_gzip)
            m_gzip = std::make_unique<Gzip>();
        else if (isGzip || name == "br" || name == "zstd" || name == "deflate" ||
                 name == "compress" || name == "x-compress")
            m_isUnknown = true;
    }
}

ContentDecoder::~ContentDecoder() = default;

bool ContentDecoder::decode(const char *data, std::size_t size, const Sink &sink)
{
    m_damaged = m_damaged || m_isUnknown || (m_gzip && !m_gzip->isReady);
    if (m_damaged)
        return false;
    if (!m_gzip)
        return sink(data, size);
    z_stream &stream = m_gzip->stream;
    // zlib does not write to its input, but its interface is older than const.
    stream.next_in = reinterpret_cast<unsigned char *>(const_cast<char *>(data));
    stream.avail_in = static_cast<unsigned int>(size);
    while (stream.avail_in > 0 || stream.avail_out == 0) {
        if (m_gzip->hasEnded) {
            // Another member may follow. Anything else is padding, which everybody ignores.
            m_gzip->isPadding =
                m_gzip->isPadding || (stream.avail_in > 0 && *stream.next_in != 0x1F);
            if (stream.avail_in == 0 || m_gzip->isPadding)
                return true;
            inflateReset(&stream);
            m_gzip->hasEnded = false;
        }
        m_gzip->hasStarted = true;
        stream.next_out = m_gzip->output.data();
        stream.avail_out = static_cast<unsigned int>(m_gzip->output.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        m_gzip->hasEnded = result == Z_STREAM_END;
        // Z_BUF_ERROR: the input was used up just when the output was full.
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
            m_damaged = true;
            return false;
        }
        const std::size_t produced = m_gzip->output.size() - stream.avail_out;
        if (produced > 0 && !sink(reinterpret_cast<const char *>(m_gzip->output.data()), produced))
            return false;
    }
    return true;
}

bool ContentDecoder::isWhole() const
{
    return !m_damaged && (!m_gzip || !m_gzip->hasStarted || m_gzip->hasEnded);
}

} // namespace zelkam
