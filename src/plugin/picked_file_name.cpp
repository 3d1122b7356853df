#include "plugin/picked_file_name.h"

#include "platform/foundation/percent_encoding.h"

#include <QCryptographicHash>
#include <QFile>

namespace zelkam {

namespace {

qsizetype sizeOf(const QString &name)
{
    return QFile::encodeName(name).size();
}

QString encodingPercentSigns(QString name)
{
    return name.replace(u'%', QStringLiteral("%25"));
}

} // namespace

QString encodedFileName(const URL &url)
{
    return url.absoluteString().section(u'/', -1, -1, QString::SectionSkipEmpty);
}

QString nameOfCopy(const QString &encodedName, qsizetype maxSize)
{
    if (sizeOf(encodedName) <= maxSize)
        return encodedName;
    QString name = removingPercentEncoding(encodedName).value_or(encodedName);
    if (name.contains(u'/') || name.contains(QChar(u'\0')))
        name = encodedName;
    if (const QString whole = encodingPercentSigns(name); sizeOf(whole) <= maxSize)
        return whole;

    constexpr qsizetype longestExtension = 16;
    constexpr qsizetype markSize = 16;
    qsizetype dot = name.lastIndexOf(u'.');
    if (dot < 0 || name.size() - dot > longestExtension)
        dot = name.size();
    const QByteArray mark =
        QCryptographicHash::hash(encodedName.toUtf8(), QCryptographicHash::Sha256).toHex();
    const QString end =
        u'~' + QString::fromLatin1(mark.first(markSize)) + encodingPercentSigns(name.mid(dot));
    QString start = name.first(dot);
    while (!start.isEmpty() && sizeOf(encodingPercentSigns(start) + end) > maxSize)
        start.chop(start.back().isLowSurrogate() ? 2 : 1);
    return encodingPercentSigns(start) + end;
}

} // namespace zelkam
