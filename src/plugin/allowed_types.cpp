// From the extensions that a page allows to the types that a picker takes.

#include "plugin/zelkam_mobile_contents_plugin.h"

#include <QHash>

namespace zelkam {

namespace {

/// The types of each extension, one after another; nothing for an extension that the table lacks.
template<typename Type>
QList<Type> allowedTypes(const QStringList &extensions, const QHash<QString, QList<Type>> &table)
{
    QList<Type> types;
    for (const QString &extension : extensions)
        types += table.value(extension.toLower());
    return types;
}

/// Adds rows that are all alike.
template<typename Type>
void insertAll(QHash<QString, QList<Type>> &table, const QStringList &extensions,
               const QList<Type> &types)
{
    for (const QString &extension : extensions)
        table.insert(extension, types);
}

/// Types of their own would leave out what other programs save office documents as.
QStringList officeExtensions()
{
    return {QStringLiteral("doc"),  QStringLiteral("docx"), QStringLiteral("xls"),
            QStringLiteral("xlsx"), QStringLiteral("ppt"),  QStringLiteral("pptx")};
}

} // namespace

QList<UTType> ZelkamMobileContentsPlugin::getAllowUTType() const
{
    static const QHash<QString, QList<UTType>> table = [] {
        QHash<QString, QList<UTType>> rows{
            {QStringLiteral("pdf"), {UTType::pdf}},        {QStringLiteral("png"), {UTType::png}},
            {QStringLiteral("jpeg"), {UTType::jpeg}},      {QStringLiteral("jpg"), {UTType::jpeg}},
            {QStringLiteral("gif"), {UTType::gif}},        {QStringLiteral("heic"), {UTType::heic}},
            {QStringLiteral("heif"), {UTType::heif}},      {QStringLiteral("zip"), {UTType::zip}},
            {QStringLiteral("html"), {UTType::html}},      {QStringLiteral("svg"), {UTType::svg}},
            {QStringLiteral("xml"), {UTType::xml}},        {QStringLiteral("yaml"), {UTType::yaml}},
            {QStringLiteral("mp4"), {UTType::mpeg4Movie}}, {QStringLiteral("avi"), {UTType::avi}},
            {QStringLiteral("mp3"), {UTType::mp3}},
        };
        insertAll(rows, officeExtensions(), {UTType::content, UTType::text});
        return rows;
    }();
    return allowedTypes(m_allowExtensionArr, table);
}

QStringList ZelkamMobileContentsPlugin::getAllowDocumentTypes() const
{
    // Systems before 14.0 have no constants for HEIC, HEIF, SVG and AVI.
    static const QHash<QString, QList<QString>> table = [] {
        QHash<QString, QList<QString>> rows{
            {QStringLiteral("pdf"), {kUTTypePDF}},
            {QStringLiteral("png"), {kUTTypePNG}},
            {QStringLiteral("jpeg"), {kUTTypeJPEG}},
            {QStringLiteral("jpg"), {kUTTypeJPEG}},
            {QStringLiteral("gif"), {kUTTypeGIF}},
            {QStringLiteral("zip"), {kUTTypeZipArchive}},
            {QStringLiteral("html"), {kUTTypeHTML}},
            {QStringLiteral("xml"), {kUTTypeXML}},
            {QStringLiteral("yaml"), {kUTTypeContent}},
            {QStringLiteral("mp4"), {kUTTypeMPEG4}},
            {QStringLiteral("mp3"), {kUTTypeMP3}},
        };
        insertAll(rows, officeExtensions(), QList<QString>{kUTTypeContent, kUTTypeText});
        return rows;
    }();
    return allowedTypes(m_allowExtensionArr, table);
}

} // namespace zelkam
