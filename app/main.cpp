#include "app/command_line.h"
#include "app/container_address.h"
#include "app/demo_server.h"
#include "app/host_application.h"
#include "app/host_scheme_handler.h"
#include "app/local_page.h"
#include "app/picker_answers.h"
#include "app/tour.h"
#include "app/unix_signals.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/console.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "platform/foundation/system_version.h"
#include "platform/network/url_session.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos_ui/camera_device.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_device.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace {

using namespace zelkam;

constexpr int usageStatus = 2;

int usageError(const QString &message)
{
    std::fprintf(stderr, "zelkam-mobile: %s\n", qUtf8Printable(message));
    return usageStatus;
}

/// What must be set before there is an application object.
void prepareEnvironment(const HostOptions &options)
{
    if (options.offscreen)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The web engine's sandbox cannot be set up for the super-user; nobody else goes without it.
    if (::geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    if (options.remoteDebuggingPort != 0)
        qputenv("QTWEBENGINE_REMOTE_DEBUGGING", QByteArray::number(options.remoteDebuggingPort));
}

/// What the web engine is told when it starts, which is with the first profile. The page gets the
/// colour scheme that the screens have, and scroll bars that lie over it as on a device of this
/// kind. The user's own flags come last, so that they win.
void prepareWebEngine()
{
    const bool dark = isDark(QApplication::palette());
    const QByteArray flags = QByteArrayLiteral("--enable-features=OverlayScrollbar "
                                               "--blink-settings=preferredColorScheme=") +
                             (dark ? '0' : '1');
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags + ' ' + qgetenv("QTWEBENGINE_CHROMIUM_FLAGS"));
    QLoggingCategory::setFilterRules(QStringLiteral("qt.webenginecontext*=false"));
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const CommandLine commandLine = parseCommandLine(arguments);
    if (const auto *text = std::get_if<PrintAndQuit>(&commandLine)) {
        print(text->text);
        return 0;
    }
    if (const auto *error = std::get_if<UsageError>(&commandLine))
        return usageError(error->message);
    const auto &options = std::get<HostOptions>(commandLine);

    prepareEnvironment(options);
    HostSchemeHandler::registerScheme();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zelkam-mobile"));
    QApplication::setApplicationVersion(QStringLiteral(ZELKAM_VERSION));
    installTranslations(options.language.value_or(QLocale::system()));
    applyTheme(options.colorScheme);
    prepareWebEngine();
    UIDevice::current().setUserInterfaceIdiom(options.idiom);
    if (options.systemVersion)
        setSystemVersion(*options.systemVersion);
    if (!options.temporaryDirectory.isEmpty()) {
        if (const auto error = setTemporaryDirectory(options.temporaryDirectory))
            return usageError(
                QStringLiteral("--temp-dir cannot be used: %1: %2")
                    .arg(options.temporaryDirectory, QString::fromStdString(error.message())));
    }
    if (const QString &folder = options.screenshotsDirectory; !folder.isEmpty()) {
        if (!QDir().mkpath(folder) || !QFileInfo(folder).isWritable())
            return usageError(QStringLiteral("--screenshots cannot be used: %1").arg(folder));
    }
    auto downloads = URLSessionConfiguration::defaultConfiguration();
    downloads.allowsUnsafeRedirects = options.allowUnsafeRedirects;
    downloads.maximumBodySize = options.maximumDownload.value_or(downloads.maximumBodySize);
    downloads.maximumDecodedSize = options.maximumDownload.value_or(downloads.maximumDecodedSize);
    URLSessionConfiguration::setDefaultConfiguration(downloads);
    if (!options.picturesDirectory.isEmpty())
        setPicturesDirectory(options.picturesDirectory);
    setVirtualCameraImage(options.cameraImage);
    setAddressResolver([](const URL &url) { return containerPath(url.toQUrl()); });

    std::optional<LocalPage> localPage;
    std::optional<DemoServer> demo;
    QUrl page = options.page;
    if (!options.localPage.isEmpty()) {
        localPage.emplace(options.localPage);
        page = localPage->address();
    } else if (page.isEmpty()) {
        demo.emplace();
        page = demo->start();
        if (page.isEmpty()) {
            std::fputs("zelkam-mobile: the demo found no free port on the loopback address\n",
                       stderr);
            return 1;
        }
    }
    HostApplication host(options, page, localPage);
    QObject::connect(&host, &HostApplication::closeRequested, &application, &QApplication::quit);
    const UnixSignals signals_;
    QObject::connect(&signals_, &UnixSignals::quitRequested, &application, &QApplication::quit);
    PickerAnswers answers(host.window(), host.screenshots());
    for (const PickerAnswer &answer : options.pickerAnswers)
        answers.append(answer);
    std::optional<Tour> tour;
    if (options.tour) {
        tour.emplace(host, answers, options);
        QObject::connect(&*tour, &Tour::finished, &application,
                         [](int faults) { QApplication::exit(faults == 0 ? 0 : 1); });
    }
    host.start();
    const int status = QApplication::exec();
    // An image that was handed to the album before the end is still written.
    using namespace std::chrono_literals;
    waitForAlbumWrites(5s);
    return status;
}
