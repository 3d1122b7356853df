#pragma once

#include "app/picker_answers.h"
#include "app/web_origin.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_device.h"

#include <QLocale>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVersionNumber>
#include <optional>
#include <variant>

namespace zelkam {

/// What the program was asked to do.
struct HostOptions
{
    QUrl page;         ///< an http or https address; empty for the demo or a local page
    QString localPage; ///< an absolute path without symbolic links; empty for no local page

    QString realServerUrl; ///< as it was written; empty for the page's origin
    AllowedOrigins allowedOrigins;
    QString temporaryDirectory; ///< absolute; empty for the default
    QString picturesDirectory;  ///< absolute; empty for the default
    QString cameraImage;        ///< absolute; empty for the device's camera
    UIUserInterfaceIdiom idiom = UIUserInterfaceIdiom::phone;
    QSize size{390, 844}; ///< of the window, in points
    ColorScheme colorScheme = ColorScheme::system;
    std::optional<QVersionNumber> systemVersion;
    bool urlTransformer = true;
    std::optional<QLocale> language;
    bool offscreen = false;
    QString screenshotsDirectory; ///< absolute; empty for none
    bool tour = false;
    bool allowUnsafeRedirects = false;
    std::optional<qint64> maximumDownload; ///< in bytes
    QList<PickerAnswer> pickerAnswers;     ///< for the pickers that come, in order
    quint16 remoteDebuggingPort = 0;
};

/// The command line asks for a text to be printed and nothing else.
struct PrintAndQuit
{
    QString text;
};

/// The command line cannot be followed: why, in one line.
struct UsageError
{
    QString message;
};

using CommandLine = std::variant<HostOptions, PrintAndQuit, UsageError>;

/// Reads the arguments, the program's name first. Needs no application object, as some options
/// must act before there is one.
CommandLine parseCommandLine(const QStringList &arguments);

} // namespace zelkam
