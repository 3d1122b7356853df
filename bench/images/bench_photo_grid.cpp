// The several-images picker over a large library: how soon its first screen is there, how long the
// main thread is held while it scrolls, and what memory it takes.
//
//     bench_photo_grid PHOTOS

#include "platform/photos/saved_photos_album.h"
#include "platform/photos_ui/image_grid_picker_controller.h"
#include "platform/photos_ui/photo_grid_view.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_window.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <cstdio>

using namespace zelkam;

namespace {

qint64 memory(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.simplified().split(' ').at(1).toLongLong() * 1024;
    }
    return 0;
}

/// Notes the longest event of each frame.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (m_depth++ > 0) {
            const bool result = QApplication::notify(receiver, event);
            --m_depth;
            return result;
        }
        QElapsedTimer timer;
        timer.start();
        const bool result = QApplication::notify(receiver, event);
        --m_depth;
        longest = std::max(longest, double(timer.nsecsElapsed()) / 1e6);
        return result;
    }

    double longest = 0;

private:
    int m_depth = 0;
};

bool check(const char *what, double value, const char *unit, double allowed)
{
    std::printf("| %s | %.2f %s | %.2f %s |\n", what, value, unit, allowed, unit);
    return value <= allowed;
}

} // namespace

int main(int argc, char **argv)
{
    Application application(argc, argv);
    if (argc != 3)
        return 1;
    const bool warm = QByteArray(argv[2]) == "warm";
    applyTheme(ColorScheme::light);
    setPicturesDirectory(QFile::decodeName(argv[1]));
    UIWindow window;
    const auto page = std::make_shared<UIViewController>();
    window.setRootViewController(page);
    window.resize(390, 844);
    window.makeKeyAndVisible();
    QApplication::processEvents();
    const qint64 idle = memory("VmRSS");

    QElapsedTimer timer;
    timer.start();
    const auto picker = std::make_shared<ImageGridPickerController>();
    auto *grid = picker->view()->findChild<PhotoGridView *>();
    double firstScreen = 0;
    QObject::connect(grid, &PhotoGridView::filled, &application, [&] {
        if (firstScreen == 0)
            firstScreen = double(timer.nsecsElapsed()) / 1e9;
    });
    setMotionReduced(true); // the time is the grid's, not that of the screen's coming
    picker->presentFrom(*page, true, {});
    while (firstScreen == 0 && !timer.hasExpired(60'000))
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    bool good = check(warm ? "first screen, warm cache" : "first screen, cold cache", firstScreen,
                      "s", warm ? 0.3 : 1.5);
    if (!warm)
        return good ? 0 : 2;

    // Ten seconds at 7,500 points a second, which no thumb keeps up.
    constexpr int frames = 600;
    std::vector<double> longest;
    application.longest = 0;
    QTimer frame;
    frame.setTimerType(Qt::PreciseTimer);
    QObject::connect(&frame, &QTimer::timeout, &application, [&] {
        longest.push_back(application.longest);
        application.longest = 0;
        QScrollBar *bar = grid->verticalScrollBar();
        bar->setValue(bar->value() + 125);
        if (longest.size() == frames)
            QApplication::exit();
    });
    frame.start(16);
    QApplication::exec();
    std::sort(longest.begin(), longest.end());
    good = check("longest event of a frame while scrolling, 99th percentile",
                 longest.at(frames * 99 / 100), "ms", 16) &&
           good;
    good = check("memory over idle, at its highest", double(memory("VmHWM") - idle) / (1 << 20),
                 "MiB", 150) &&
           good;
    return good ? 0 : 2;
}
