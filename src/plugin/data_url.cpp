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

/// Room for a long text. The system is asked for its pages at once: one by one, as they are first
/// written to, they take longer than the encoding. (Large pages would be quicker still, but the
/// system may stop for most of a second to make them.)
void reserve(QByteArray &url, qint64 size)
{
    url.reserve(static_cast<qsizetype>(size));
    constexpr quintptr page = 4096;
    const auto start = reinterpret_cast<quintptr>(url.constData());
    const quintptr first = (start + page - 1) / page * page;
    const quintptr end = (start + static_cast<quintptr>(size)) / page * page;
    // Only advice: where it is not taken, nothing is lost but time.
    if (end > first + 256 * page)
        ::madvise(reinterpret_cast<void *>(first), end - first, MADV_POPULATE_WRITE);
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
    url.reserve(url.size() + static_cast<qsizetype>(base64Length(bytes.size())));
    append(url, bytes.constData(), bytes.size());
    return url;
}

} // namespace zelkam
