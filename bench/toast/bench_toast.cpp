// Prints a table of what toasts cost: making one beside the three bare widgets that it consists
// of, the area that a fade repaints, a long queue in time and memory, and how long the main thread
// goes without a turn while there are thousands.

#include "toast/toast.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <vector>

using namespace zelkam;
using namespace std::chrono_literals;

namespace {

const QString titleText = QStringLiteral("report.pdf");
const QString messageText =
    QStringLiteral("The report has been saved in the folder Download. It has twelve pages.");

QImage picture()
{
    QImage image(160, 120, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

void spin(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The median of several rounds, in microseconds for one repetition.
double medianMicroseconds(const std::function<void()> &once, const std::function<void()> &tidy)
{
    constexpr int rounds = 31;
    constexpr int repetitions = 100;
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < repetitions; ++i)
            once();
        times.push_back(double(timer.nsecsElapsed()) / 1000.0 / repetitions);
        tidy();
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[rounds / 2];
}

void benchMaking()
{
    auto host = std::make_unique<QWidget>();
    const auto renew = [&host] {
        host = std::make_unique<QWidget>();
        host->resize(390, 844);
        host->show();
        QCoreApplication::processEvents();
    };
    const QImage image = picture();
    const ToastStyle style;

    renew();
    const double toast = medianMicroseconds(
        [&] {
            makeToast(host.get(), messageText, 1h, ToastPosition::bottom, titleText, image, style);
        },
        renew);

    // The same contents at the same places, with nothing of a toast about them.
    const double bare = medianMicroseconds(
        [&] {
            auto *title = new QLabel(titleText, host.get());
            title->setFont(style.titleFont);
            auto *message = new QLabel(messageText, host.get());
            message->setFont(style.messageFont);
            message->setWordWrap(true);
            auto *view = new QLabel(host.get());
            view->setPixmap(QPixmap::fromImage(image.scaled(80, 60)));
            const int wide = 232;
            title->setGeometry(100, 700, wide, title->sizeHint().height());
            message->setGeometry(100, 730, wide, message->heightForWidth(wide));
            view->setGeometry(10, 700, 80, 80);
            for (QLabel *label : {title, message, view})
                label->show();
        },
        renew);
    std::printf(
        "| make and place: title, message, image | %.0f µs | 3 bare widgets: %.0f µs | %.2f |\n",
        toast, bare, toast / bare);
}

/// Adds up what is painted of it.
class CountingHost : public QWidget
{
public:
    qint64 area = 0;
    int paints = 0;
    QRegion touched;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        touched += event->region();
        for (const QRect &rect : event->region())
            area += qint64(rect.width()) * rect.height();
        QPainter(this).fillRect(event->rect(), Qt::white);
    }
};

void benchFade()
{
    CountingHost host;
    host.resize(390, 844);
    host.show();
    spin(200ms);
    host.area = 0;
    host.paints = 0;
    host.touched = {};
    makeToast(&host, messageText, 1h, ToastPosition::bottom, titleText, picture());
    const QWidget *toast =
        host.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).last();
    const QRect bubble = toast->geometry();
    spin(400ms);
    const double perPaint = double(host.area) / host.paints;
    const double own = double(bubble.width()) * bubble.height();
    std::printf("| a fade repaints, each time | %.0f points² | the bubble: %.0f points² | %.2f |\n",
                perPaint, own, perPaint / own);
    std::printf("| rectangle of all repaints (%d) | %dx%d | the bubble: %dx%d | %s |\n",
                host.paints, host.touched.boundingRect().width(),
                host.touched.boundingRect().height(), bubble.width(), bubble.height(),
                host.touched.boundingRect() == bubble ? "equal" : "differ");
}

/// Bytes that are allocated and in use.
size_t bytesInUse()
{
    return mallinfo2().uordblks;
}

double runQueue(int count)
{
    QWidget host;
    host.resize(390, 844);
    host.show();
    spin(50ms);
    QElapsedTimer timer;
    timer.start();
    QEventLoop loop;
    int done = 0;
    for (int i = 0; i < count; ++i) {
        makeToast(&host, messageText, 0s, ToastPosition::bottom, titleText, std::nullopt,
                  ToastManager::shared().style, [&](bool) {
                      if (++done == count)
                          loop.quit();
                  });
    }
    loop.exec();
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    spin(50ms);
    return milliseconds;
}

void benchQueue()
{
    ToastManager::shared().isQueueEnabled = true;
    ToastManager::shared().style.fadeDuration = 0s;
    // Qt's table of all widgets keeps the room that it once needed: measure after the largest run.
    runQueue(10'000);
    double perToastAtFirst = 0.0;
    for (const int count : {1000, 5000, 10'000}) {
        const size_t before = bytesInUse();
        const double milliseconds = runQueue(count);
        const double left = (double(bytesInUse()) - double(before)) / 1024.0;
        const double perToast = milliseconds * 1000.0 / count;
        if (perToastAtFirst == 0.0)
            perToastAtFirst = perToast;
        std::printf("| %d toasts through one queue, no fade | %.0f ms, %+.0f KiB at the end | "
                    "%.0f µs each | %.2f |\n",
                    count, milliseconds, left, perToast, perToast / perToastAtFirst);
    }
}

/// How long the main thread goes without a turn from when so many toasts have been made until they
/// have gone, in milliseconds.
double longestTurn(int count, ToastDuration duration, const std::function<void(QWidget *)> &then)
{
    QWidget host;
    host.resize(390, 844);
    host.show();
    spin(50ms);
    int done = 0;
    for (int i = 0; i < count; ++i) {
        makeToast(&host, messageText, duration, ToastPosition::bottom, titleText, std::nullopt,
                  ToastManager::shared().style, [&done](bool) { ++done; });
    }
    bool isLater = false;
    QTimer::singleShot(1s, &host, [&] {
        isLater = true;
        then(&host);
    });
    double longest = 0.0;
    while (done < count || !isLater) {
        QElapsedTimer turn;
        turn.start();
        QCoreApplication::processEvents();
        longest = std::max(longest, double(turn.nsecsElapsed()) / 1e6);
    }
    return longest;
}

void benchTurns()
{
    constexpr int count = 10'000;
    constexpr double allowed = 50.0;
    const auto row = [](const char *what, double longest) {
        std::printf("| longest turn, %d toasts %s | %.0f ms | allowed: %.0f ms | %.2f |\n", count,
                    what, longest, allowed, longest / allowed);
    };
    const auto nothing = [](QWidget *) {};
    row("through one queue", longestTurn(count, 0s, nothing));
    ToastManager::shared().isQueueEnabled = false;
    ToastManager::shared().style.fadeDuration = 200ms;
    row("at once", longestTurn(count, 2s, nothing));
    row("at once, all hidden", longestTurn(count, 1h, [](QWidget *host) { hideAllToasts(host); }));
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    std::printf("| what | toast | beside | ratio |\n|---|---|---|---|\n");
    benchMaking();
    benchFade();
    benchQueue();
    benchTurns();
    return 0;
}
