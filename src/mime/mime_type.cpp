#include "mime/mime_type.h"

#include "mime/mime_types.h"
#include "platform/foundation/system_version.h"
#include "platform/foundation/url.h"
#include "platform/foundation/ut_type.h"

#include <QUrl>

namespace zelkam {

namespace {

QString typeOfExtension(QStringView extension)
{
    if (!isSystemVersionAtLeast(14, 0)) {
        const QStringView found = mimeTypesValue(extension);
        return QString::fromRawData(found.data(), found.size());
    }
    const auto type = UTType::fromFilenameExtension(extension, UTType::data);
    return type ? type->preferredMIMEType().value_or(QString()) : QString();
}

} // namespace

QStringView pathExtension(QStringView path)
{
    while (path.endsWith(u'/'))
        path.chop(1);
    const QStringView name = path.mid(path.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    // A dot in front hides a file and begins no extension; this is also what "." and ".." are.
    return dot > 0 ? name.mid(dot + 1) : QStringView();
}

QString mimeType(QStringView path)
{
    const QString type = typeOfExtension(pathExtension(path));
    return type.isEmpty() ? QStringLiteral("application/octet-stream") : type;
}

QString mimeType(const QString &path)
{
    return mimeType(QStringView(path));
}

QString mimeType(const URL &url)
{
    return mimeType(url.path());
}

QString mimeType(const QUrl &url)
{
    return mimeType(url.path(QUrl::FullyDecoded));
}

} // namespace zelkam
