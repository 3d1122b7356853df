#pragma once

#include <QMetaType>
#include <QString>
#include <QUrl>
#include <optional>

namespace zelkam {

/// A URL as the platform's applications know it: an absolute or relative reference by RFC 3986
/// that remembers its text. A bare path such as "/tmp/a.pdf" is a URL without a scheme.
class URL
{
public:
    /// Parses a text. Fails for an empty text and for one that RFC 3986 does not allow.
    /// From system version 17.0 on, characters that may not stand in a URL (a blank, say, or a
    /// "%" without two digits) are percent-encoded first; before that they are a failure.
    static std::optional<URL> fromString(const QString &string);

    /// The file URL of a path, which may hold bytes that are no UTF-8 (decodeFileName()). A
    /// relative path is taken below the root.
    static URL fromFilePath(const QString &path);

    /// The URL of an absolute path without a scheme: its text is the path as it is, whatever
    /// characters that has.
    static URL fromBarePath(const QString &path);

    static std::optional<URL> fromQUrl(const QUrl &url);

    const QString &absoluteString() const { return m_string; }
    /// The parsed form; its FullyEncoded text is what goes on the wire.
    const QUrl &toQUrl() const { return m_url; }

    std::optional<QString> scheme() const; ///< lower case; absent in a relative reference
    std::optional<QString> host() const;   ///< decoded (not punycode); absent when empty
    std::optional<int> port() const;       ///< only when it is written out
    QString path() const;              ///< percent-decoded; that of a file URL by decodeFileName()
    QString lastPathComponent() const; ///< of the decoded path; trailing slashes do not count
    bool isFileURL() const;
    /// The text of an absolute path without a scheme, as it was given: nothing in it was encoded,
    /// and nothing is decoded. Absent in any other URL.
    std::optional<QString> barePath() const;

    friend bool operator==(const URL &a, const URL &b) { return a.m_string == b.m_string; }

private:
    URL(QString string, QUrl url, QString given = {})
        : m_string(std::move(string)), m_given(std::move(given)), m_url(std::move(url))
    {
    }

    QString m_string;
    QString m_given; ///< the text before anything in it was encoded
    QUrl m_url;
};

} // namespace zelkam
