#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace zelkam {

struct UTTypeRecord;

/// A kind of data: the type registry's handle. It is as cheap to copy as a pointer and stays valid
/// for the life of the process.
///
/// A type has an identifier ("com.adobe.pdf") and conforms to the types above it: `png` conforms
/// to `image`, which conforms to `content` and to `data`, which conforms to `item`. What an
/// application may ask for by name is declared here; every other kind that Qt's MIME database
/// knows gets an identifier that begins with "dyn." and its place in the tree by what the database
/// says of it.
///
/// Lookups are remembered, so that asking again costs no more than a table lookup; what is
/// remembered is bounded. All operations may be called from any thread.
class UTType
{
public:
    static const UTType item;    ///< everything: files and folders
    static const UTType content; ///< what a person reads, watches or listens to
    static const UTType data;    ///< everything that is a stream of bytes
    static const UTType compositeContent;
    static const UTType directory;
    static const UTType folder;
    static const UTType archive;
    static const UTType zip;
    static const UTType image;
    static const UTType png;
    static const UTType jpeg;
    static const UTType gif;
    static const UTType heif;
    static const UTType heic;
    static const UTType svg;
    static const UTType pdf;
    static const UTType text;
    static const UTType plainText;
    static const UTType html;
    static const UTType xml;
    static const UTType yaml;
    static const UTType json;
    static const UTType javaScript;
    static const UTType audiovisualContent;
    static const UTType movie;
    static const UTType audio;
    static const UTType mpeg4Movie;
    static const UTType mpeg2TransportStream;
    static const UTType avi;
    static const UTType mp3;

    /// The type that files with this extension have, without the dot and in any case. Where the
    /// extension stands for several kinds, the first that conforms counts. Nothing for an
    /// extension that no one knows, and for an empty one.
    static std::optional<UTType> fromFilenameExtension(QStringView filenameExtension,
                                                       UTType conformingTo = data);

    /// The type of an identifier, one of those that were used before the constants included.
    /// Identifiers are compared without regard to case, as the platform does.
    static std::optional<UTType> fromIdentifier(const QString &identifier);

    /// The type of a MIME type, or of another name of it; parameters are not understood.
    static std::optional<UTType> fromMIMEType(const QString &mimeType);

    /// The type of a regular file: by its extension, and by its first bytes where the extension
    /// says nothing. Nothing for what is no regular file; `data` for a file that cannot be read
    /// or whose kind nobody knows. Reads from the disk, and never waits for a pipe.
    static std::optional<UTType> fromFile(const QString &path);

    QString identifier() const;

    /// The MIME type to send such data under; nothing for a type that is no certain format.
    std::optional<QString> preferredMIMEType() const;

    /// Whether this is the type or below it.
    bool conforms(UTType to) const;

    friend bool operator==(UTType a, UTType b) { return a.m_record == b.m_record; }

private:
    friend class UTTypeRegistry;
    constexpr explicit UTType(const UTTypeRecord *record) : m_record(record) {}

    const UTTypeRecord *m_record;
};

// The identifiers that came before the type objects, for systems before 14.0.
inline const QString kUTTypeItem = QStringLiteral("public.item");
inline const QString kUTTypeContent = QStringLiteral("public.content");
inline const QString kUTTypeText = QStringLiteral("public.text");
inline const QString kUTTypePDF = QStringLiteral("com.adobe.pdf");
inline const QString kUTTypePNG = QStringLiteral("public.png");
inline const QString kUTTypeJPEG = QStringLiteral("public.jpeg");
inline const QString kUTTypeGIF = QStringLiteral("com.compuserve.gif");
inline const QString kUTTypeZipArchive = QStringLiteral("com.pkware.zip-archive");
inline const QString kUTTypeHTML = QStringLiteral("public.html");
inline const QString kUTTypeXML = QStringLiteral("public.xml");
inline const QString kUTTypeMPEG4 = QStringLiteral("public.mpeg-4");
inline const QString kUTTypeMP3 = QStringLiteral("public.mp3");

} // namespace zelkam
