#include "platform/network/suggested_filename.h"

#include "platform/foundation/percent_encoding.h"

#include <QMimeDatabase>
#include <algorithm>

namespace zelkam {

namespace {

constexpr qsizetype maxNameBytes = 255;
// A longer piece after the last dot is part of a sentence, not an extension.
constexpr qsizetype maxExtensionBytes = 32;

// Marks, embeddings, overrides and isolates: they can make "gpj.exe" read as "exe.jpg".
bool changesDirection(char32_t c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool isHarmful(char32_t c)
{
    const QChar::Category category = QChar::category(c);
    return category == QChar::Other_Control || category == QChar::Other_Surrogate ||
           category == QChar::Separator_Line || category == QChar::Separator_Paragraph ||
           c == 0xFEFF || changesDirection(c);
}

QString cleaned(const QString &name)
{
    const auto lastSeparator = std::max(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\'));
    QString clean;
    const QList<uint> characters = name.mid(lastSeparator + 1).toUcs4();
    for (const char32_t c : characters) {
        if (!isHarmful(c))
            clean += QChar::fromUcs4(c);
    }
    clean = clean.trimmed();
    while (clean.endsWith(u'.') || clean.endsWith(u' '))
        clean.chop(1);
    return clean;
}

// Who saves the file percent-decodes its path, and makes URLs of the bare path and of its encoded
// form, in which these characters begin something else.
bool hasMeaningInUrl(QChar c)
{
    return c == u'%' || c == u'?' || c == u'#' || c == u'[' || c == u']';
}

QString harmless(const QString &name)
{
    QString clean = cleaned(name);
    if (const auto decoded = removingPercentEncoding(clean))
        clean = cleaned(*decoded);
    std::replace_if(clean.begin(), clean.end(), hasMeaningInUrl, u'_');
    return clean;
}

qsizetype utf8Size(QStringView text)
{
    return text.toUtf8().size();
}

/// Where the extension begins, its dot included; the end of the name when it has none.
qsizetype extensionStart(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0 || utf8Size(QStringView(name).mid(dot)) > maxExtensionBytes)
        return name.size();
    return dot;
}

// A type that only says "bytes" has no extension to give.
QString extensionOf(const QString &mimeType)
{
    if (mimeType.isEmpty() || mimeType == QLatin1String("application/octet-stream"))
        return {};
    return QMimeDatabase().mimeTypeForName(mimeType).preferredSuffix();
}

QString shortened(const QString &name)
{
    if (utf8Size(name) <= maxNameBytes)
        return name;
    const qsizetype start = extensionStart(name);
    const QString extension = name.mid(start);
    const QByteArray stem = name.left(start).toUtf8();
    qsizetype size = maxNameBytes - utf8Size(extension);
    while (size > 0 && (static_cast<unsigned char>(stem[size]) & 0xC0) == 0x80)
        --size;
    return cleaned(QString::fromUtf8(stem.left(size)) + extension);
}

} // namespace

std::optional<QString> harmlessFilename(const QStringList &names, const QString &mimeType)
{
    for (const QString &candidate : names) {
        QString name = harmless(candidate);
        if (name.isEmpty())
            continue;
        if (extensionStart(name) == name.size()) {
            if (const QString extension = extensionOf(mimeType); !extension.isEmpty())
                name += u'.' + extension;
        }
        return shortened(name);
    }
    return std::nullopt;
}

} // namespace zelkam
