#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace zelkam {

/// A file that the demo's server gives.
struct DemoFile
{
    QByteArray contents;
    QByteArray mimeType;
};

/// The demo's file of a name, made when it is asked for; nothing for any other name.
/// "coast.jpg", "dunes.jpg" and "night.png" (drawn landscapes), "report.pdf" (two pages),
/// "notes.txt", and "soundings.zkd", a kind that no device knows. Main thread, as some are drawn.
std::optional<DemoFile> demoFile(const QString &name);

/// A receipt (PDF) over what was sent to the demo's server.
DemoFile demoReceipt(const QString &contentType, const QString &body);

} // namespace zelkam
