#pragma once

#include <QByteArrayView>
#include <QtEndian>

namespace zelkam {

/// Reads big-endian numbers from bytes that cannot be trusted. A read beyond the end gives zero
/// and spoils the reader for good, so that a parser may check once, after a group of reads.
class ByteReader
{
public:
    explicit ByteReader(QByteArrayView bytes) : m_bytes(bytes) {}

    bool isValid() const { return m_valid; }
    bool atEnd() const { return !m_valid || m_at >= m_bytes.size(); }
    qsizetype remaining() const { return m_valid ? m_bytes.size() - m_at : 0; }

    quint8 u8() { return number<quint8>(); }
    quint16 u16() { return number<quint16>(); }
    quint32 u32() { return number<quint32>(); }
    quint64 u64() { return number<quint64>(); }

    /// A number of 0, 1, 2, 4 or 8 bytes, as a box's header declares it; zero bytes give zero.
    quint64 sized(int bytes)
    {
        switch (bytes) {
        case 0:
            return 0;
        case 1:
            return u8();
        case 2:
            return u16();
        case 4:
            return u32();
        case 8:
            return u64();
        default:
            m_valid = false;
            return 0;
        }
    }

    QByteArrayView take(quint64 length)
    {
        if (!m_valid || length > quint64(m_bytes.size() - m_at)) {
            m_valid = false;
            return {};
        }
        const auto part = m_bytes.sliced(m_at, qsizetype(length));
        m_at += qsizetype(length);
        return part;
    }

    QByteArrayView rest() { return take(quint64(remaining())); }

private:
    template<typename T>
    T number()
    {
        const auto part = take(sizeof(T));
        return part.size() == qsizetype(sizeof(T)) ? qFromBigEndian<T>(part.data()) : T(0);
    }

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    bool m_valid = true;
};

} // namespace zelkam
