#pragma once

#include "platform/photos/ph_asset.h"

#include <QFileSystemWatcher>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <optional>

namespace zelkam {

/// The pictures of the person: those of the pictures folder and of the folders below it, the
/// newest first, kept up to date for as long as somebody looks.
///
/// Folders are read on a background thread. Hidden files and folders are left out, links to
/// folders are not followed. A change in a folder shows within half a second.
///
/// Main thread only.
class PHPhotoLibrary : public QObject
{
    Q_OBJECT

public:
    /// The library of the pictures folder (picturesDirectory()).
    static PHPhotoLibrary &shared();

    explicit PHPhotoLibrary(QObject *parent = nullptr);
    ~PHPhotoLibrary() override;

    /// Begins to read and to watch, or reads again when the pictures folder was set to another
    /// one. Every screen that shows the library calls it; changed() follows.
    void open();

    /// Whether the folder was read since it was opened.
    bool isLoaded() const { return m_loaded; }
    /// Why the library cannot be shown: the folder is missing or may not be read.
    bool isUnavailable() const { return m_unavailable; }

    const QList<PHAsset> &assets() const { return m_assets; }

    /// Takes a file that was just added into the list without waiting for the next reading, and
    /// returns its asset; nothing when it is no picture of this library.
    std::optional<PHAsset> insert(const QString &filePath);

signals:
    /// The list was read, or is another one than before.
    void changed();

private:
    struct Contents
    {
        QList<PHAsset> assets;
        QStringList folders;
        bool unavailable = false;
    };
    static Contents read(const QString &folder);

    void reload();
    void show(const QString &folder, const Contents &contents);
    void watch(const QStringList &folders);

    QString m_folder;
    QList<PHAsset> m_assets;
    QFileSystemWatcher m_watcher;
    QTimer m_settling; ///< folders change in bursts
    bool m_loaded = false;
    bool m_unavailable = false;
    bool m_reading = false;
    bool m_readAgain = false;
};

} // namespace zelkam
