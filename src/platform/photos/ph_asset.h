#pragma once

#include <QMetaType>
#include <QSize>
#include <QString>

namespace zelkam {

/// A picture of the photo library: a handle, as cheap to copy as its text. The file may be gone.
class PHAsset
{
public:
    PHAsset() = default;
    /// @param modified  milliseconds since the epoch
    PHAsset(QString filePath, qint64 modified, qint64 fileSize)
        : m_path(std::move(filePath)), m_modified(modified), m_size(fileSize)
    {
    }

    /// Identifies the asset for as long as the file keeps its place.
    const QString &localIdentifier() const { return m_path; }
    const QString &filePath() const { return m_path; }
    QString fileName() const { return m_path.mid(m_path.lastIndexOf(u'/') + 1); }
    qint64 modificationDate() const { return m_modified; }
    qint64 fileSize() const { return m_size; }

    /// The same content of the same file, as far as can be told without reading it.
    friend bool operator==(const PHAsset &a, const PHAsset &b)
    {
        return a.m_modified == b.m_modified && a.m_size == b.m_size && a.m_path == b.m_path;
    }

private:
    QString m_path;
    qint64 m_modified = 0;
    qint64 m_size = 0;
};

} // namespace zelkam

Q_DECLARE_METATYPE(zelkam::PHAsset)
