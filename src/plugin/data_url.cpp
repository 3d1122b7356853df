#include "plugin/data_url.h"

#include "platform/foundation/base64.h"
#include "platform/foundation/regular_file.h"

#include <algorithm>
#include <array>
#include <future>
#include <new>
#include <sys/mman.h>
#include <system_error>

namespace zelkam {

namespace {

/// A multiple of 3, so that only the last piece is padded; small enough for a processor's cache.
constexpr qint64 pieceSize = 3 * 32 * 1024;
/// Above this, the time that a thread takes to begin does not count.
constexpr qint64 twoThreadsSize = 4 * 1024 * 1024;

QByteArray head(const QString &mimeType)
{
    return "data:" + mimeType.toLatin1() + ";base64,";
}

/// Asks the system at once for the pages that a long text will take: one by one, as they are first
/// written to, they take longer than the encoding. (Large pages would be quicker still, but the
/// system may stop for most of a second to make them.)
void populate(char *text, qint64 size)
{
    constexpr quintptr page = 4096;
    const auto start = reinterpret_cast<quintptr>(text);
    const quintptr first = (start + page - 1) / page * page;
    const quintptr end = (start + static_cast<quintptr>(size)) / page * page;
    // Only advice: where it is not taken, nothing is lost but time.
    if (end > first + 256 * page)
        ::madvise(reinterpret_cast<void *>(first), end - first, MADV_POPULATE_WRITE);
}

/// Reads until the piece is full or the file ends; -1 on a failure.
qint64 readPiece(const RegularFile &file, qint64 place, char *piece, qint64 wanted)
{
    qint64 filled = 0;
    while (filled < wanted) {
        const qint64 got = file.readAt(place + filled, piece + filled, wanted - filled);
        if (got < 0)
            return -1;
        if (got == 0)
            break;
        filled += got;
    }
    return filled;
}

/// Encodes what the file has from one place to another. Gives the count of bytes, which is less
/// where the file ends before, and -1 on a failure.
qint64 encodeStretch(const RegularFile &file, qint64 from, qint64 to, char *text)
{
    std::array<char, pieceSize> piece;
    qint64 place = from;
    while (place < to) {
        const qint64 wanted = std::min(to - place, pieceSize);
        const qint64 got = readPiece(file, place, piece.data(), wanted);
        if (got < 0)
            return -1;
        base64Encode(piece.data(), got, text + base64Length(place - from));
        place += got;
        if (got < wanted)
            break;
    }
    return place - from;
}

/// The same with a thread for each half: memory and files are slower than the encoding, and two
/// processors wait for them together.
qint64 encodeHalves(const RegularFile &file, qint64 size, char *text)
{
    const qint64 middle = size / 2 / 3 * 3;
    const auto half = [&](qint64 from, qint64 to) {
        char *const its = text + base64Length(from);
        populate(its, base64Length(to - from));
        return encodeStretch(file, from, to, its);
    };
    auto second = std::async(std::launch::async, half, middle, size);
    const qint64 first = half(0, middle);
    const qint64 rest = second.get();
    if (first < 0 || rest < 0)
        return -1;
    return first < middle ? first : middle + rest;
}

} // namespace

std::optional<QByteArray> dataUrl(const QString &mimeType, const RegularFile &contentsOf)
try {
    QByteArray url = head(mimeType);
    const qsizetype start = url.size();
    const qint64 size = contentsOf.limit();
    url.resize(start + static_cast<qsizetype>(base64Length(size)));
    char *const text = url.data() + start;
    const qint64 encoded = size < twoThreadsSize || contentsOf.size() == 0
                               ? encodeStretch(contentsOf, 0, size, text)
                               : encodeHalves(contentsOf, size, text);
    if (encoded < 0)
        return std::nullopt;
    if (encoded < size) {
        url.truncate(start + static_cast<qsizetype>(base64Length(encoded)));
        url.squeeze();
    }
    return url;
} catch (const std::bad_alloc &) {
    // A person may well pick a file that is larger than the memory.
    return std::nullopt;
} catch (const std::system_error &) {
    return std::nullopt; // there is no thread to be had
}

QByteArray dataUrl(const QString &mimeType, const QByteArray &bytes)
{
    QByteArray url = head(mimeType);
    const qsizetype start = url.size();
    url.resize(start + static_cast<qsizetype>(base64Length(bytes.size())));
    base64Encode(bytes.constData(), bytes.size(), url.data() + start);
    return url;
}

} // namespace zelkam
