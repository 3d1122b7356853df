#include "gallery_window.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QStyleFactory>
#include <QTextStream>
#include <QTimer>

namespace {

struct Device
{
    const char *name;
    QSize size;
};

constexpr int settleMilliseconds = 150;

/// Lets the window paint itself and the last scene go.
void settle()
{
    QEventLoop loop;
    QTimer::singleShot(settleMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

bool save(QWidget *widget, const QDir &folder, const QString &name)
{
    const QString path = folder.filePath(name + QStringLiteral(".png"));
    const bool saved = widget->grab().save(path);
    QTextStream(stdout) << (saved ? "saved " : "could not save ") << path << '\n';
    return saved;
}

/// Every scene on a phone and a tablet, light and dark; the controls; and the stage alone, small,
/// as the documentation shows it.
bool saveScreenshots(GalleryWindow &window, const QDir &folder)
{
    zelkam::ToastManager::shared().style.fadeDuration = std::chrono::seconds(0);
    bool saved = true;
    for (const Device &device : {Device{"phone", {390, 844}}, Device{"tablet", {1024, 1366}}}) {
        for (const bool isDark : {false, true}) {
            window.resize(device.size);
            window.setDark(isDark);
            window.show();
            const QString suffix = QStringLiteral("-%1-%2").arg(QString::fromLatin1(device.name),
                                                                isDark ? QStringLiteral("dark")
                                                                       : QStringLiteral("light"));
            for (const Scene &scene : scenes()) {
                window.play(scene);
                settle();
                saved &= save(&window, folder, scene.name + suffix);
            }
            for (const int page : {1, 2, 3}) {
                window.scrollTo(page / 3.0);
                saved &= save(&window, folder, QStringLiteral("controls-%1").arg(page) + suffix);
            }
            window.scrollTo(0.0);
        }
    }

    Stage stage;
    stage.resize(400, 260);
    stage.show();
    for (const Scene &scene : scenes()) {
        zelkam::hideAllToasts(&stage, true, true);
        settle();
        scene.show(&stage);
        settle();
        saved &= save(&stage, folder, scene.name);
    }
    return saved;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("toast-gallery"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringList{QStringLiteral("Inter"), QStringLiteral("Noto Sans")});
    font.setPixelSize(16);
    QApplication::setFont(font);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Tries out the toast library, on a light and a dark host."));
    parser.addHelpOption();
    const QCommandLineOption screenshots(QStringLiteral("screenshots"),
                                         QStringLiteral("Save pictures to <DIR> and quit."),
                                         QStringLiteral("DIR"));
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Start dark."));
    parser.addOptions({screenshots, dark});
    parser.process(application);

    GalleryWindow window;
    window.setDark(parser.isSet(dark));
    if (parser.isSet(screenshots)) {
        const QDir folder(parser.value(screenshots));
        if (!folder.mkpath(QStringLiteral("."))) {
            QTextStream(stderr) << "Cannot make the folder " << folder.path() << '\n';
            return 1;
        }
        return saveScreenshots(window, folder) ? 0 : 1;
    }
    window.resize(390, 844);
    window.show();
    return QApplication::exec();
}
