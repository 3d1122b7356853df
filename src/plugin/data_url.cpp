#include "plugin/data_url.h"

#include "platform/foundation/base64.h"
#include "platform/foundation/regular_file.h"

#include <algorithm>
#include <memory>
#include <new>
#include <sys/mman.h>

namespace zelkam {

namespace {

/// A multiple of 3, so that only the last piece is padded; small enough for a processor's cache.
constexpr qint64 pieceSize = 3 * 64 * 1024;

QByteArray head(const QString &mimeType)
{
    return "data:" + mimeType.toLatin1() + ";base64,";
}

void append(QByteArray &url, const char *bytes, qint64 size)
{
    const qsizetype end = url.size();
    url.resize(end + static_cast<qsizetype>(base64Length(size)));
    base64Encode(bytes, size, url.data() + end);
}

/// Asks for room for a long text, in large pages where the system has them: the first touch of each
/// small page would take longer than the encoding.
void reserve(QByteArray &url, qint64 size)
{
    url.reserve(static_cast<qsizetype>(size));
    constexpr quintptr largePage = 2 * 1024 * 1024;
    const auto start = reinterpret_cast<quintptr>(url.constData());
    const quintptr first = (start + largePage - 1) / largePage * largePage;
    const quintptr end = (start + static_cast<quintptr>(size)) / largePage * largePage;
    // Only advice: where it is not taken, nothing is lost but time.
    if (first < end)
        ::madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
}

/// Reads until the piece is full or the file ends; -1 on a failure.
qint64 readPiece(const RegularFile &file, char *piece, qint64 wanted)
{
    qint64 filled = 0;
    while (filled < wanted) {
        const qint64 got = file.read(piece + filled, wanted - filled);
        if (got < 0)
            return -1;
        if (got == 0)
            break;
        filled += got;
    }
    return filled;
}

} // namespace

std::optional<QByteArray> dataUrl(const QString &mimeType, const RegularFile &contentsOf)
try {
    QByteArray url = head(mimeType);
    reserve(url, url.size() + base64Length(contentsOf.size()));
    const auto piece = std::make_unique_for_overwrite<char[]>(pieceSize);
    for (qint64 left = contentsOf.limit(); left > 0;) {
        const qint64 wanted = std::min(left, pieceSize);
        const qint64 got = readPiece(contentsOf, piece.get(), wanted);
        if (got < 0)
            return std::nullopt;
        append(url, piece.get(), got);
        if (got < wanted)
            break;
        left -= got;
    }
    return url;
} catch (const std::bad_alloc &) {
    // A person may well pick a file that is larger than the memory.
    return std::nullopt;
}

QByteArray dataUrl(const QString &mimeType, const QByteArray &bytes)
{
    QByteArray url = head(mimeType);
    reserve(url, url.size() + base64Length(bytes.size()));
    append(url, bytes.constData(), bytes.size());
    return url;
}

} // namespace zelkam
