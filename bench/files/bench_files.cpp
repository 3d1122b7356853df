// What each file of a folder costs: what comes of it, how long that takes, the memory that the
// application gains and that the decoder process has at most, and the longest turn of the main
// thread.
//
//     bench_files FOLDER [own|stretched|thumbnail|jpeg|preview]...

#include "platform/images/decoder.h"
#include "platform/images/picture.h"
#include "platform/ui/pdf_view.h"
#include "platform/ui/preview_pane.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>

using namespace zelkam;

namespace {

QByteArray field(const QString &process, const char *name)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(line.indexOf('\t')).simplified();
    }
    return {};
}

qint64 mebibytes(const QString &process, const char *name)
{
    return field(process, name).split(' ').first().toLongLong() / 1024;
}

void forgetPeak(const QString &process)
{
    QFile file(QStringLiteral("/proc/%1/clear_refs").arg(process));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

const QString self = QStringLiteral("self");

QStringList decoders()
{
    QStringList found;
    const QByteArray application = QByteArray::number(QCoreApplication::applicationPid());
    for (const QString &process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        if (process.at(0).isDigit() && field(process, "PPid:") == application)
            found.append(process);
    }
    return found;
}

qint64 processorTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1000 + time.tv_nsec / 1'000'000;
}

/// Notes the longest event, by the clock and by the processor.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        const bool isOuter = m_depth++ == 0;
        QElapsedTimer timer;
        timer.start();
        const qint64 processorBefore = processorTime();
        const bool result = QApplication::notify(receiver, event);
        --m_depth;
        if (isOuter) {
            longest = std::max(longest, timer.elapsed());
            longestWork = std::max(longestWork, processorTime() - processorBefore);
        }
        return result;
    }

    qint64 longest = 0;
    qint64 longestWork = 0;

private:
    int m_depth = 0;
};

void spin(
    int milliseconds, const std::function<bool()> &isEnough = [] { return false; })
{
    QTimer tick;
    tick.start(10);
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < milliseconds && !isEnough())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

QString inBackground(const std::function<QString()> &work)
{
    QString result;
    std::atomic_bool isDone = false;
    std::thread thread([&] {
        result = work();
        isDone = true;
    });
    spin(300'000, [&] { return isDone.load(); });
    thread.join();
    return result;
}

QString sizeOf(const QImage &image)
{
    return image.isNull() ? QStringLiteral("none")
                          : QStringLiteral("%1x%2").arg(image.width()).arg(image.height());
}

QString decoded(const QString &path, const QString &kind)
{
    if (kind == QLatin1String("thumbnail")) {
        const auto thumbnail = thumbnailOfPicture(path, 240);
        return sizeOf(thumbnail ? thumbnail->image : QImage());
    }
    const auto file = readPictureFile(path);
    if (!file)
        return QStringLiteral("not read");
    if (kind == QLatin1String("jpeg")) {
        const auto jpeg = pictureAsJpeg(*file, std::nullopt, 0.8);
        return jpeg ? QStringLiteral("%1 bytes").arg(jpeg->size()) : QStringLiteral("none");
    }
    const bool isOwn = kind == QLatin1String("own");
    const auto image = decodePicture(*file, isOwn ? std::nullopt : std::optional(QSize(1024, 768)));
    return sizeOf(image ? image->toQImage() : QImage());
}

QWidget *shownIn(const PreviewPane &pane)
{
    for (QObject *child : pane.children()) {
        auto *const widget = qobject_cast<QWidget *>(child);
        if (widget && widget->isVisible() &&
            !widget->testAttribute(Qt::WA_TransparentForMouseEvents))
            return widget;
    }
    return nullptr;
}

QString previewed(PreviewPane &pane, const QString &path)
{
    bool isReady = false;
    QObject::connect(&pane, &PreviewPane::ready, &pane, [&] { isReady = true; });
    QElapsedTimer time;
    time.start();
    pane.showFile(URL::fromFilePath(path), std::nullopt);
    spin(60'000, [&] { return isReady; });
    const qint64 ready = time.elapsed();
    pane.disconnect(&pane);
    QWidget *const view = shownIn(pane);
    if (!view)
        return QStringLiteral("nothing");
    const auto *const pages = qobject_cast<PdfView *>(view);
    spin(pages ? 6000 : 600, [&] { return pages && pages->isSharp(); });
    const QString sharp =
        pages ? QStringLiteral(", page %1").arg(pages->isSharp() ? time.elapsed() : -1) : QString();
    for (const int key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home}) {
        QKeyEvent press(QEvent::KeyPress, key, {});
        QCoreApplication::sendEvent(view, &press);
        spin(200);
    }
    pane.resize(844, 390);
    spin(200);
    pane.resize(390, 844);
    spin(200);
    return QStringLiteral("%1 after %2%3 %4")
        .arg(QString::fromLatin1(view->metaObject()->className()).section(u':', -1))
        .arg(ready)
        .arg(sharp, view->accessibleDescription());
}

} // namespace

int main(int argc, char **argv)
{
    Application application(argc, argv);
    QStringList kinds = application.arguments().mid(2);
    if (argc < 2)
        return 1;
    if (kinds.isEmpty())
        kinds = QStringLiteral("own stretched thumbnail jpeg preview").split(u' ');
    PreviewPane pane;
    pane.resize(390, 844);
    pane.show();
    QByteArray sound;
    QBuffer buffer(&sound);
    buffer.open(QIODevice::WriteOnly);
    QImage(20, 20, QImage::Format_RGB32).save(&buffer, "png");
    spin(500);
    std::printf("| file | kind | what comes of it | ms | application +MiB | decoder MiB | turn ms "
                "| of it worked |\n"
                "|---|---|---|---|---|---|---|---|\n");
    const QDir folder(QDir(QFile::decodeName(argv[1])).absolutePath());
    for (const QString &name : folder.entryList(QDir::Files, QDir::Name)) {
        for (const QString &kind : std::as_const(kinds)) {
            const QString path = folder.filePath(name);
            const qint64 before = mebibytes(self, "VmRSS:");
            forgetPeak(self);
            for (const QString &process : decoders())
                forgetPeak(process);
            std::atomic_bool isDone = false;
            qint64 peak = 0;
            std::thread watcher([&] {
                while (!isDone) {
                    for (const QString &process : decoders())
                        peak = std::max(peak, mebibytes(process, "VmHWM:"));
                    QThread::msleep(25);
                }
            });
            application.longest = application.longestWork = 0;
            QElapsedTimer time;
            time.start();
            const QString outcome = kind == QLatin1String("preview")
                                        ? previewed(pane, path)
                                        : inBackground([&] { return decoded(path, kind); });
            const qint64 taken = time.elapsed();
            isDone = true;
            watcher.join();
            const qint64 turn = application.longest;
            const qint64 gain = mebibytes(self, "VmHWM:") - before;
            const QString next = inBackground([&] {
                return UIImage::fromData(sound) ? QString() : QStringLiteral(" THE NEXT FAILS");
            });
            std::printf("| %s | %s | %s%s | %lld | %lld | %lld | %lld | %lld |\n", qPrintable(name),
                        qPrintable(kind), qPrintable(outcome), qPrintable(next), taken, gain, peak,
                        turn, application.longestWork);
            std::fflush(stdout);
        }
    }
    return 0;
}
