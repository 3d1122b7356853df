// From the accepted pick of a file to the resolved promise in the page, beside what FileReader
// takes to make the same text of the same bytes in the same web view.
//
//     bench_picked_content FILE

#include "app/container_address.h"
#include "app/host_application.h"
#include "app/host_scheme_handler.h"
#include "app/local_page.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "platform/ui/ui_window.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 7;
constexpr double allowed = 0.7;

/// The title tells the host what the page has got, with the page's own time.
const QByteArray html = R"(<!doctype html><meta charset="utf-8"><title>page</title><script>
const now = () => performance.timeOrigin + performance.now();
const tell = (what, value) => { document.title = what + ' ' + value; };
const pick = (type) => ZelkamMobile.exec('filePicker',
  { extension: '', multiselect: false, maxcount: 1, type });
let buffer, text;
async function content() {
  const { data } = await pick(0);
  tell('content', now());
  text = data;
}
async function bytes() {
  const { fileUri } = await pick(1);
  const request = new XMLHttpRequest();
  request.open('GET', fileUri);
  request.responseType = 'arraybuffer';
  request.onload = () => {
    buffer = request.response;
    tell('bytes', buffer.byteLength);
  };
  request.send();
}
// The text is made when it is asked for, not when it is said to be loaded. Each round reads a blob
// that was never read before, as a file is that a person has just chosen.
function reader() {
  const blob = new Blob([buffer], { type: 'application/octet-stream' });
  const start = now();
  const reader = new FileReader();
  reader.onload = () => {
    const result = reader.result;
    const time = now() - start;
    tell('reader', time + ' ' + (text === undefined || text === result));
  };
  reader.readAsDataURL(blob);
}
</script>)";

class Bench
{
public:
    explicit Bench(HostApplication &host, QString file) : m_host(host), m_file(std::move(file)) {}

    /// Runs a function of the page and gives the words of the title that it ends with.
    QStringList run(const QString &function, bool picks)
    {
        m_host.page().runJavaScript(u"document.title = ''; %1()"_s.arg(function));
        if (picks)
            answerPicker();
        waitUntil([&] { return m_host.page().title().startsWith(function + u' '); });
        return m_host.page().title().split(u' ');
    }

    double acceptedAt = 0; ///< milliseconds since 1970

    /// Sleeps in between, as an application does: what the web engine does takes another time when
    /// a processor is kept awake for it.
    void waitUntil(const std::function<bool()> &holds)
    {
        QElapsedTimer patience;
        patience.start();
        while (!holds()) {
            QEventLoop loop;
            QTimer::singleShot(20, &loop, &QEventLoop::quit);
            loop.exec();
            if (patience.hasExpired(60'000))
                qFatal("The page did not come to an end.");
        }
    }

private:
    void answerPicker()
    {
        UIDocumentPickerViewController *picker = nullptr;
        waitUntil([&] {
            picker = qobject_cast<UIDocumentPickerViewController *>(
                m_host.window().topMostViewController());
            return picker && picker->isVisible() && !m_host.window().isInTransition();
        });
        picker->showSelection({m_file});
        waitUntil([&] { return !picker->selection().isEmpty(); });
        const std::chrono::duration<double, std::milli> time =
            std::chrono::system_clock::now().time_since_epoch();
        acceptedAt = time.count();
        picker->accept();
    }

    HostApplication &m_host;
    QString m_file;
};

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 1;
    const QString path = QFile::decodeName(argv[1]);
    HostSchemeHandler::registerScheme();
    QApplication application(argc, argv);
    applyTheme(ColorScheme::light);
    const QTemporaryDir folder;
    QFile page(folder.filePath(u"page.html"_s));
    if (!page.open(QIODevice::WriteOnly) || page.write(html) != html.size() ||
        setTemporaryDirectory(folder.filePath(u"container"_s)))
        return 1;
    page.close();
    setAddressResolver([](const URL &url) { return containerPath(url.toQUrl()); });

    const LocalPage local(page.fileName());
    HostOptions options;
    options.offscreen = true;
    HostApplication host(options, local.address(), local);
    host.start();
    Bench bench(host, path);
    bench.waitUntil([&] { return host.page().title() == u"page"; });
    bench.run(u"bytes"_s, true);

    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(bench.run(u"content"_s, true).at(1).toDouble() - bench.acceptedAt);
        const QStringList reader = bench.run(u"reader"_s, false);
        theirs.push_back(reader.at(1).toDouble());
        if (reader.at(2) != u"true")
            qFatal("The two texts differ.");
    }
    const double ratio = median(ours) / median(theirs);
    std::puts("| base64 of a picked file in the page | here | FileReader | ratio | allowed |\n"
              "|---|---|---|---|---|");
    std::printf("| %.0f MiB, median of %d | %.0f ms | %.0f ms | %.2f | %.1f |\n",
                double(QFileInfo(path).size()) / (1 << 20), rounds, median(ours), median(theirs),
                ratio, allowed);
    return ratio <= allowed ? 0 : 2;
}
