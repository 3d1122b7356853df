// Many downloads at once through the plug-in, each of which shows a toast: how long the main thread
// goes without a turn meanwhile.
//
//     bench_notify URL FOLDER

#include "host/call_back_manager.h"
#include "host/zelkam_mobile_data.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/file_manager.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "toast/toast_host.h"

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <functional>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

constexpr int downloads = 1000;
constexpr double longestTurn = 50.0; // milliseconds

/// A call that counts the replies of all.
class Call : public CallBackManager
{
public:
    explicit Call(QVariantMap arguments) : m_arguments(std::move(arguments)) {}
    std::optional<QVariantMap> argumentDic() const override { return m_arguments; }
    CommandDelegate *commandDelegate() const override { return nullptr; }
    void success(bool) override { ++succeeded; }
    void success(const QVariant &, bool) override {}
    void error(CommandStatus, bool) override { ++failed; }
    void error(CommandStatus, const QString &, bool) override { ++failed; }
    void error(const QString &, const QString &, bool) override { ++failed; }

    static inline std::atomic<int> succeeded = 0;
    static inline std::atomic<int> failed = 0;

private:
    QVariantMap m_arguments;
};

/// The longest turns of the event loop by the wall clock and by the main thread's own,
/// milliseconds.
struct Turns
{
    double wall = 0.0;
    double processor = 0.0;
};

double processorTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void runUntil(const std::function<bool()> &holds, Turns &longest)
{
    while (!holds()) {
        const double before = processorTime();
        QElapsedTimer turn;
        turn.start();
        QCoreApplication::processEvents();
        longest.wall = std::max(longest.wall, double(turn.nsecsElapsed()) / 1e6);
        longest.processor = std::max(longest.processor, processorTime() - before);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 3 || setTemporaryDirectory(QString::fromLocal8Bit(argv[2])))
        return 64;
    const QString url = QString::fromLocal8Bit(argv[1]);
    installTranslations(QLocale(QLocale::English));
    applyTheme(ColorScheme::light);
    UIWindow window;
    const auto page = std::make_shared<UIViewController>();
    window.setRootViewController(page);
    window.resize(390, 844);
    window.makeKeyAndVisible();
    const auto plugin = makePlugin<ZelkamMobileContentsPlugin>();

    // As a page calls: one call in each turn.
    int started = 0;
    double longestCall = 0.0;
    const auto startOne = [&] {
        QElapsedTimer call;
        call.start();
        plugin->fileDownload(
            std::make_shared<Call>(QVariantMap{{u"url"_s, url},
                                               {u"open"_s, false},
                                               {u"notify"_s, true},
                                               {u"fileName"_s, u"file %1.bin"_s.arg(++started)}}));
        longestCall = std::max(longestCall, double(call.nsecsElapsed()) / 1e6);
    };
    QElapsedTimer whole;
    whole.start();
    Turns longest;
    runUntil(
        [&] {
            if (started < downloads)
                startOne();
            return Call::succeeded + Call::failed == downloads;
        },
        longest);
    const double replied = double(whole.nsecsElapsed()) / 1e9;
    const auto toasts = ToastHost::of(page->view()).activeToasts();
    runUntil([&] { return toasts->isEmpty(); }, longest);
    std::puts(
        "| what | last reply, s | last toast, s | longest call, ms | longest turn, ms | of it "
        "processor, ms | allowed, ms |\n|---|---|---|---|---|---|---|");
    std::printf("| %d downloads that notify | %.1f | %.1f | %.0f | %.0f | %.0f | %.0f |\n",
                downloads, replied, double(whole.nsecsElapsed()) / 1e9, longestCall, longest.wall,
                longest.processor, longestTurn);
    return Call::failed == 0 && longest.wall <= longestTurn ? 0 : 2;
}
