// From the accepted pick of photos to the resolved promise in the page, each scaled and encoded,
// beside what the page itself takes for the same (createImageBitmap, a canvas, toDataURL) in the
// same web view, and beside vipsthumbnail for the same files.
//
//     bench_picked_images FILE...

#include "app/container_address.h"
#include "app/host_application.h"
#include "app/host_scheme_handler.h"
#include "app/local_page.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos_ui/image_grid_picker_controller.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "platform/ui/ui_window.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 7;
constexpr double allowedOfPage = 0.5;
constexpr double allowedOfVips = 0.6;
constexpr double allowedOfVipsForHeic = 0.8;

/// The title tells the host that the page has come to an end, with the page's own time.
const QByteArray html = R"(<!doctype html><meta charset="utf-8"><title>page</title><script>
const now = () => performance.timeOrigin + performance.now();
const tell = (what, value) => { document.title = what + ' ' + value; };
const load = (address) => new Promise((resolve) => {
  const request = new XMLHttpRequest();
  request.open('GET', address);
  request.responseType = 'blob';
  request.onload = () => resolve(request.response);
  request.send();
});
let blobs = [];
async function images() {
  const data = await ZelkamMobile.exec('imagePicker',
    { multiselect: true, resizeWidth: 1024, resizeHeight: 768, resizeQuality: 0.8 });
  const end = now();
  tell('images', end + ' ' + (Array.isArray(data) ? data : [data.image]).length);
}
async function bytes() {
  const data = await ZelkamMobile.exec('filePicker',
    { extension: '', multiselect: true, maxcount: 99, type: 1 });
  blobs = await Promise.all([data].flat().map((item) => load(item.fileUri || item)));
  tell('bytes', blobs.length);
}
async function canvas() {
  const start = now();
  const urls = await Promise.all(blobs.map(async (blob) => {
    const bitmap = await createImageBitmap(blob);
    const canvas = document.createElement('canvas');
    canvas.width = 1024;
    canvas.height = 768;
    canvas.getContext('2d').drawImage(bitmap, 0, 0, 1024, 768);
    bitmap.close();
    return canvas.toDataURL('image/jpeg', 0.8);
  }));
  tell('canvas', (now() - start) + ' ' + urls.filter((url) => url.length > 10000).length);
}
</script>)";

class Bench
{
public:
    Bench(HostApplication &host, QStringList files) : m_host(host), m_files(std::move(files)) {}

    /// Runs a function of the page and gives the words of the title that it ends with.
    QStringList run(const QString &function)
    {
        m_host.page().runJavaScript(u"document.title = ''; %1()"_s.arg(function));
        if (function == u"images")
            answer<ImageGridPickerController>();
        else if (function == u"bytes")
            answer<UIDocumentPickerViewController>();
        waitUntil([&] { return m_host.page().title().startsWith(function + u' '); });
        return m_host.page().title().split(u' ');
    }

    double vipsthumbnail() const
    {
        const QTemporaryDir out;
        QElapsedTimer timer;
        timer.start();
        QProcess vips;
        vips.start(u"vipsthumbnail"_s, m_files + QStringList{u"--size"_s, u"1024x768!"_s, u"-o"_s,
                                                             out.filePath(u"%s.jpg[Q=80]"_s)});
        if (!vips.waitForFinished(120'000) || vips.exitCode() != 0)
            qFatal("vipsthumbnail failed");
        return double(timer.nsecsElapsed()) / 1e6;
    }

    double acceptedAt = 0; ///< milliseconds since 1970

    void waitUntil(const std::function<bool()> &holds)
    {
        QElapsedTimer patience;
        patience.start();
        while (!holds()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
            if (patience.hasExpired(60'000))
                qFatal("The page did not come to an end.");
        }
    }

private:
    template<typename Picker>
    void answer()
    {
        Picker *picker = nullptr;
        waitUntil([&] {
            picker = qobject_cast<Picker *>(m_host.window().topMostViewController());
            return picker && picker->isVisible() && !m_host.window().isInTransition();
        });
        picker->showSelection(m_files);
        waitUntil([&] { return picker->selection().size() == m_files.size(); });
        // What the grid asked for is done: a person looks at it before the pick.
        const QDeadlineTimer quiet(1500);
        while (!quiet.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        const std::chrono::duration<double, std::milli> time =
            std::chrono::system_clock::now().time_since_epoch();
        acceptedAt = time.count();
        picker->accept();
    }

    HostApplication &m_host;
    QStringList m_files;
};

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

} // namespace

int main(int argc, char **argv)
{
    HostSchemeHandler::registerScheme();
    QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    applyTheme(ColorScheme::light);
    const QStringList files = QApplication::arguments().mid(1);
    if (files.isEmpty())
        return 1;
    const bool heic = files.first().endsWith(u"heic");
    const QTemporaryDir folder;
    QFile page(folder.filePath(u"page.html"_s));
    if (!page.open(QIODevice::WriteOnly) || page.write(html) != html.size() ||
        setTemporaryDirectory(folder.filePath(u"container"_s)))
        return 1;
    page.close();
    setPicturesDirectory(QFileInfo(files.first()).absolutePath());
    setAddressResolver([](const URL &url) { return containerPath(url.toQUrl()); });

    const LocalPage local(page.fileName());
    HostOptions options;
    options.offscreen = true;
    HostApplication host(options, local.address(), local);
    host.start();
    QTimer ticks; // the wait looks again now and then
    ticks.start(5);
    Bench bench(host, files);
    bench.waitUntil([&] { return host.page().title() == u"page"; });
    if (!heic)
        bench.run(u"bytes"_s);

    std::vector<double> ours;
    std::vector<double> pages;
    std::vector<double> vips;
    for (int round = 0; round < rounds; ++round) {
        const QStringList images = bench.run(u"images"_s);
        ours.push_back(images.at(1).toDouble() - bench.acceptedAt);
        if (images.at(2).toInt() != files.size())
            qFatal("Images are missing.");
        vips.push_back(bench.vipsthumbnail());
        if (heic)
            continue; // the web view cannot read it
        const QStringList canvas = bench.run(u"canvas"_s);
        pages.push_back(canvas.at(1).toDouble());
        if (canvas.at(2).toInt() != files.size())
            qFatal("The page's images are missing.");
    }
    const double here = median(ours);
    const double ofVips = here / median(vips);
    const double allowed = heic ? allowedOfVipsForHeic : allowedOfVips;
    bool good = ofVips <= allowed;
    const char *what = heic ? "one HEIC" : "ten JPEGs";
    std::printf("| %s beside vipsthumbnail | %.0f ms | %.0f ms | %.2f | %.1f |\n", what, here,
                median(vips), ofVips, allowed);
    if (!heic) {
        const double ofPage = here / median(pages);
        good = good && ofPage <= allowedOfPage;
        std::printf("| %s beside the page's canvas | %.0f ms | %.0f ms | %.2f | %.1f |\n", what,
                    here, median(pages), ofPage, allowedOfPage);
    }
    return good ? 0 : 2;
}
