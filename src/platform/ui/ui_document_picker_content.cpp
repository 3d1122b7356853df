#include "platform/ui/ui_document_picker_content.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/images/image_decoding.h"
#include "platform/ui/background_work.h"
#include "platform/ui/ui_document_picker_reader.h"

#include <QPointer>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <optional>

namespace zelkam {

namespace {

using namespace std::chrono_literals;

QList<UTType> typesOf(std::initializer_list<std::optional<UTType>> known)
{
    QList<UTType> types;
    for (const auto &type : known) {
        if (type)
            types.append(*type);
    }
    return types;
}

/// The major brands of films, sounds and pictures in ISO's media container (ISO/IEC 14496-12).
/// Others, such as those of raw camera pictures, are not listed, and so say nothing.
bool isMediaBrand(const QByteArray &brand)
{
    static const QList<QByteArray> brands{"isom", "iso2", "iso3", "iso4", "iso5", "iso6", "mp41",
                                          "mp42", "avc1", "dash", "qt  ", "M4A ", "M4B ", "M4V ",
                                          "heic", "heix", "hevc", "mif1", "msf1", "avif"};
    return brands.contains(brand) || brand.startsWith("3gp");
}

/// The types that a file can be of, by a signature that nothing else begins with; empty when it
/// has none.
QList<UTType> certainTypes(const QByteArray &head)
{
    const QByteArray form = head.mid(8, 4);
    // Not every kind of picture: raw ones of cameras begin as a TIFF does.
    static const QByteArrayList certainPictures{"jpeg", "png", "gif", "webp"};
    if (const QByteArray format = rasterFormat(head); certainPictures.contains(format))
        return typesOf({UTType::fromMIMEType(QLatin1String("image/") + QLatin1String(format))});
    if (head.startsWith("%PDF-"))
        return {UTType::pdf};
    if (head.startsWith("RIFF") && form == "AVI ")
        return {UTType::avi};
    if (head.startsWith("\x7f"
                        "ELF"))
        return typesOf({UTType::fromMIMEType(QStringLiteral("application/x-executable"))});
    // The brand alone does not tell a film from a sound, nor every HEIF from another.
    if (head.mid(4, 4) == "ftyp" && isMediaBrand(form))
        return typesOf({UTType::heif, UTType::heic, UTType::mpeg4Movie, UTType::movie,
                        UTType::audio, UTType::fromMIMEType(QStringLiteral("image/avif"))});
    return {};
}

} // namespace

bool isOfAnotherType(const QByteArray &head, const QList<UTType> &allowedTypes)
{
    const QList<UTType> certain = certainTypes(head);
    const auto mayBe = [&certain](UTType allowed) {
        return std::any_of(certain.cbegin(), certain.cend(), [allowed](UTType type) {
            return type.conforms(allowed) || allowed.conforms(type);
        });
    };
    return !certain.isEmpty() && std::none_of(allowedTypes.cbegin(), allowedTypes.cend(), mayBe);
}

DocumentChecks::DocumentChecks(QList<UTType> allowedTypes, QObject *parent)
    : QObject(parent), m_allowedTypes(std::move(allowedTypes))
{
}

void DocumentChecks::start(const QString &path, DocumentChoice byName)
{
    if (m_running.contains(path))
        return;
    const int check = ++m_last;
    m_running.insert(path, check);
    runInBackground([checks = QPointer(this), path, check, types = m_allowedTypes] {
        const DocumentChoice choice = DocumentFolderReader::choiceOf(path, types);
        DispatchQueue::main().async([checks, path, check, choice] {
            if (checks)
                checks->finish(path, check, choice);
        });
    });
    const DocumentChoice late =
        byName == DocumentChoice::unknown ? DocumentChoice::unreadable : byName;
    QTimer::singleShot(2s, this, [this, path, check, late] { finish(path, check, late); });
}

void DocumentChecks::finish(const QString &path, int check, DocumentChoice choice)
{
    const auto running = m_running.constFind(path);
    if (running == m_running.cend() || *running != check)
        return;
    m_running.erase(running);
    emit checked(path, choice);
    if (!isRunning())
        emit settled();
}

} // namespace zelkam
