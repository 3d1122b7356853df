#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <system_error>

namespace zelkam {

/// Whether a person may pick an item, or why not.
enum class DocumentChoice : quint8 {
    unknown, ///< only its content can tell, and that has not been read yet
    allowed,
    wrongType,
    unreadable,
    notAFile, ///< a pipe, a device, a link that leads nowhere
};

/// How many documents a person can pick. Where that is none, they are only looked at.
enum class DocumentSelection : quint8 { none, one, several };

/// One item of a folder. A link stands for what it leads to.
struct DocumentEntry
{
    QString name;   ///< by decodeFileName()
    QString shown;  ///< the name as it is drawn, by displayName()
    QString folded; ///< what is drawn, as searches compare it
    qint64 size = 0;
    qint64 modified = 0; ///< seconds since 1970
    bool isFolder = false;
    bool isHidden = false;
    DocumentChoice choice = DocumentChoice::unknown; ///< of a folder: whether it can be opened
};

/// What a folder held when it was read: folders first, by name as people sort it.
struct DocumentListing
{
    QString path;
    std::error_code error;
    QList<DocumentEntry> entries;
};

/// Text as searches compare it: without case and accents, however they are encoded.
QString foldedForSearch(const QString &text);

} // namespace zelkam
