#pragma once

#include "platform/foundation/url.h"

#include <QFile>
#include <QMimeType>
#include <QString>
#include <memory>
#include <optional>

namespace zelkam {

/// What is known of a file that is to be shown, without reading more than its beginning.
struct PreviewFile
{
    enum class State { readable, missing, denied, notAFile };

    State state = State::missing;
    QString path;
    QString name;
    qint64 size = 0;
    QMimeType type;                ///< by name and content together
    QByteArray head;               ///< the first bytes, at most 16 KiB
    std::shared_ptr<QFile> device; ///< open at its beginning when readable
};

/// Opens a local file. Folders, pipes and devices are refused without waiting for them; a URL that
/// names no local file counts as missing. Any thread.
PreviewFile openPreviewFile(const std::optional<URL> &url);

/// Whether bytes read like text in some encoding: no zero bytes but those of UTF-16, hardly
/// any control characters.
bool looksLikeText(const QByteArray &head);

/// Text of unknown encoding: by its byte order mark, otherwise UTF-8 when it is valid, UTF-16
/// when every other byte is zero, else Windows-1252. Lines that are longer than a text view can
/// lay out in reasonable time are broken.
QString decodeText(const QByteArray &bytes);

} // namespace zelkam
