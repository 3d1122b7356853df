#pragma once

#include <QFile>
#include <QString>
#include <QUrl>
#include <memory>

namespace zelkam {

/// A page that lies in a local file, with what it refers to beside and below it.
///
/// The host serves it as "zelkam://app/<file>" from the page's folder, rather than as a file URL:
/// every file page has the same opaque origin, so nothing could tell this page from a downloaded
/// one, while "zelkam://app" is an origin that only these files have. What lies in the container
/// (downloads) is never part of it.
class LocalPage
{
public:
    /// @param file  the page; absolute, without symbolic links
    explicit LocalPage(const QString &file);

    QUrl address() const;

    /// Opens the file for an address of this page's origin; null when there is none. Neither an
    /// address nor a symbolic link leads out of the folder: links are not followed at all.
    std::unique_ptr<QFile> open(const QUrl &address) const;

private:
    QString m_folder; ///< with a "/" at its end
    QString m_name;
};

} // namespace zelkam
