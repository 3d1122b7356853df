// Base64 beside Qt's encoder, a picked file's copy beside cp, and a large folder beside the
// model of Qt's file dialog.
//
//     bench_pickers base64
//     bench_pickers copy FILE CONTAINER   one copy; prints seconds and MiB of memory growth
//     bench_pickers folder FOLDER

#include "host/call_back_manager.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/file_manager.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

double seconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e9;
}

int base64()
{
    constexpr double wanted = 4;
    bool good = true;
    std::puts("| bytes | here | Qt | times the rate | wanted |\n|---|---|---|---|---|");
    for (const int size : {3'000, 24'000, 3 << 16, 48 << 20}) {
        QByteArray bytes(size, Qt::Uninitialized);
        for (int i = 0; i < size; ++i)
            bytes[i] = char(i * 7 + i / 251);
        QByteArray text(qsizetype(base64Length(size)), Qt::Uninitialized);
        const int repeats = std::max(1, (16 << 20) / size);
        double ours = 1e9;
        double qt = 1e9;
        for (int round = 0; round < 9; ++round) {
            ours = std::min(ours, seconds([&] {
                                for (int i = 0; i < repeats; ++i)
                                    base64Encode(bytes.constData(), size, text.data());
                            }));
            qt = std::min(qt, seconds([&] {
                              for (int i = 0; i < repeats; ++i)
                                  text = bytes.toBase64();
                          }));
        }
        const double amount = double(size) * repeats / 1e9;
        std::printf("| %d | %.2f GB/s | %.2f GB/s | %.1f | %.0f |\n", size, amount / ours,
                    amount / qt, qt / ours, wanted);
        good &= size > (1 << 20) || qt / ours >= wanted;
    }
    return good ? 0 : 2;
}

/// A call that hears its reply.
class Call : public CallBackManager
{
public:
    std::optional<QVariantMap> argumentDic() const override
    {
        return QVariantMap{
            {u"extension"_s, u""_s}, {u"multiselect"_s, false}, {u"maxcount"_s, 1}, {u"type"_s, 1}};
    }
    CommandDelegate *commandDelegate() const override { return nullptr; }
    void success(bool) override {}
    void success(const QVariant &, bool) override { succeeded = true; }
    void error(CommandStatus, bool) override {}
    void error(CommandStatus, const QString &, bool) override {}
    void error(const QString &, const QString &, bool) override {}

    bool succeeded = false;
};

double peakMemory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const QByteArray line = text.mid(text.indexOf("VmHWM:") + 6).trimmed();
    return line.left(line.indexOf(' ')).toDouble() / 1024;
}

int copy(const QString &file, const QString &container)
{
    if (setTemporaryDirectory(container))
        return 1;
    const auto plugin = makePlugin<ZelkamMobileContentsPlugin>();
    const auto call = std::make_shared<Call>();
    plugin->filePicker(call);
    const double before = peakMemory();
    const double time =
        seconds([&] { plugin->documentPicker(nullptr, {URL::fromFilePath(file)}); });
    std::printf("%.4f %.1f\n", time, peakMemory() - before);
    return call->succeeded ? 0 : 1;
}

/// Runs the event loop until something holds; gives the seconds and the longest time in which
/// the main thread had no turn.
std::pair<double, double> wait(const std::function<bool()> &holds)
{
    QElapsedTimer whole;
    QElapsedTimer turn;
    whole.start();
    turn.start();
    double longest = 0;
    while (!holds()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        longest = std::max(longest, double(turn.nsecsElapsed()) / 1e6);
        turn.start();
    }
    return {double(whole.nsecsElapsed()) / 1e9, longest};
}

int folder(const QString &path)
{
    std::puts("| what | shown after | longest turn of the main thread |\n|---|---|---|");
    applyTheme(ColorScheme::light);
    setMotionReduced(true);
    UIWindow window;
    const auto page = std::make_shared<UIViewController>();
    window.setRootViewController(page);
    window.resize(390, 844);
    window.makeKeyAndVisible();
    const auto picker =
        std::make_shared<UIDocumentPickerViewController>(QList<UTType>{UTType::pdf}, true);
    picker->setDirectory(u"/nowhere"_s);
    page->present(picker, true);
    wait([&] { return picker->isVisible() && !window.isInTransition(); });
    auto *list = picker->view()->findChild<QListView *>();
    picker->setDirectory(path);
    const auto ours = wait([&] { return list->model()->rowCount() > 0 && list->isVisible(); });
    std::printf("| the picker, %d items | %.2f s | %.0f ms |\n", list->model()->rowCount(),
                ours.first, ours.second);
    auto *search = picker->view()->findChild<QLineEdit *>();
    search->setText(u"9999"_s);
    const int left = list->model()->rowCount();
    const double typed = seconds([&] { search->setText(u"99999"_s); });
    std::printf("| a letter in its search field, %d left | %.3f s | - |\n", left, typed);

    QFileSystemModel model;
    bool isLoaded = false;
    QObject::connect(&model, &QFileSystemModel::directoryLoaded, &model,
                     [&isLoaded] { isLoaded = true; });
    QListView peer;
    peer.setUniformItemSizes(true);
    peer.setModel(&model);
    peer.show();
    const QModelIndex root = model.setRootPath(path);
    peer.setRootIndex(root);
    const auto theirs = wait([&] { return isLoaded && model.rowCount(root) > 0; });
    std::printf("| QFileSystemModel in a QListView, %d items | %.2f s | %.0f ms |\n",
                model.rowCount(root), theirs.first, theirs.second);
    constexpr double longestTurn = 100;
    return ours.second <= longestTurn ? 0 : 2;
}

} // namespace

int main(int argc, char **argv)
{
    const QString what = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    if (what == u"base64")
        return base64();
    if (what == u"copy" && argc == 4) {
        const QCoreApplication application(argc, argv);
        return copy(QFile::decodeName(argv[2]), QFile::decodeName(argv[3]));
    }
    if (what == u"folder" && argc == 3) {
        const QApplication application(argc, argv);
        return folder(QFile::decodeName(argv[2]));
    }
    return 1;
}
