// Measures downloads of this library beside those of the curl program, each in a process of its
// own, so that both are charged for their start. Prints a table in Markdown.
//
//   download_bench compare <url> <folder>      several rounds of both, in turns
//   download_bench threads <url> <folder>      threads while 1 and 64 downloads run
//   download_bench one <url> <folder>          (used by compare) one download, prints its memory

#include "platform/foundation/file_manager.h"
#include "platform/network/url_session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace zelkam;

namespace {

constexpr int rounds = 7;
constexpr int manyDownloads = 64;

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

/// A figure of /proc/self/status: KiB for memory, a count for threads.
long statusFigure(const QByteArray &name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toLong();
    }
    return 0;
}

/// Starts a download in a session of its own; the future tells whether it went well.
std::future<bool> startDownload(const QString &url)
{
    auto done = std::make_shared<std::promise<bool>>();
    auto result = done->get_future();
    URLSession session(URLSessionConfiguration::defaultConfiguration());
    session
        .downloadTask(URLRequest(*URL::fromString(url)),
                      [done](const auto &location, const auto &, const auto &error) {
                          done->set_value(location && !error);
                      })
        ->resume();
    return result;
}

int one(const QString &url)
{
    const long before = statusFigure("VmRSS");
    if (!startDownload(url).get())
        return 1;
    out() << statusFigure("VmHWM") - before << '\n';
    return 0;
}

int threads(const QString &url)
{
    out() << "| downloads at once | threads while they run |\n|---|---|\n";
    for (const int count : {1, manyDownloads}) {
        std::vector<std::future<bool>> downloads;
        for (int i = 0; i < count; ++i)
            downloads.push_back(startDownload(url));
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        const bool allRun = std::all_of(downloads.begin(), downloads.end(), [](auto &download) {
            return download.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
        });
        out() << "| " << count << " | " << statusFigure("Threads")
              << (allRun ? "" : " (some had ended already)") << " |\n";
        for (auto &download : downloads) {
            if (!download.get())
                return 1;
        }
    }
    return 0;
}

struct Cost
{
    double wall = 0; // seconds
    double processor = 0;
    long peak = 0;   // KiB
    long growth = 0; // KiB, as the process itself says
};

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Runs a program to its end; what it prints is a number of KiB, or nothing.
std::optional<Cost> run(const std::vector<QByteArray> &command)
{
    std::vector<char *> arguments;
    for (const QByteArray &part : command)
        arguments.push_back(const_cast<char *>(part.constData()));
    arguments.push_back(nullptr);
    int ends[2];
    if (::pipe(ends) != 0)
        return std::nullopt;
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::execvp(arguments.front(), arguments.data());
        ::_exit(127);
    }
    ::close(ends[1]);
    char text[64] = {};
    const ssize_t size = ::read(ends[0], text, sizeof text - 1);
    ::close(ends[0]);
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || status != 0 || size < 0)
        return std::nullopt;
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    return Cost{wall.count(), seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss,
                QByteArray(text).trimmed().toLong()};
}

template<typename Figure>
auto median(std::vector<Cost> costs, Figure figure)
{
    std::sort(costs.begin(), costs.end(),
              [&](const Cost &a, const Cost &b) { return a.*figure < b.*figure; });
    return costs[costs.size() / 2].*figure;
}

int compare(const QString &url, const QString &folder)
{
    const QByteArray target = QFile::encodeName(folder + QStringLiteral("/curl.out"));
    const QByteArray own = QFile::encodeName(QCoreApplication::applicationFilePath());
    std::vector<Cost> ours;
    std::vector<Cost> curls;
    for (int i = 0; i < rounds; ++i) {
        const auto curl = run({"curl", "-s", "-o", target, url.toUtf8()});
        QFile::remove(QFile::decodeName(target));
        const auto our = run({own, "one", url.toUtf8(), QFile::encodeName(folder)});
        if (!curl || !our)
            return 1;
        curls.push_back(*curl);
        ours.push_back(*our);
    }
    const double wall = median(ours, &Cost::wall) / median(curls, &Cost::wall);
    const double processor = median(ours, &Cost::processor) / median(curls, &Cost::processor);
    out() << qSetRealNumberPrecision(3) << Qt::fixed << "| median of " << rounds
          << " rounds | this library | curl -o | ratio | allowed |\n"
          << "|---|---|---|---|---|\n"
          << "| wall time, s | " << median(ours, &Cost::wall) << " | " << median(curls, &Cost::wall)
          << " | " << wall << " | 1.15 |\n"
          << "| processor time, s | " << median(ours, &Cost::processor) << " | "
          << median(curls, &Cost::processor) << " | " << processor << " | 1.10 |\n"
          << "| memory growth in the download, MiB | "
          << static_cast<double>(median(ours, &Cost::growth)) / 1024 << " | - | - | 16 MiB |\n"
          << "| peak memory of the process, MiB | "
          << static_cast<double>(median(ours, &Cost::peak)) / 1024 << " | "
          << static_cast<double>(median(curls, &Cost::peak)) / 1024 << " | - | - |\n";
    return wall <= 1.15 && processor <= 1.10 && median(ours, &Cost::growth) < 16 * 1024 ? 0 : 2;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4 || setTemporaryDirectory(arguments[3])) {
        out() << "download_bench compare|threads|one <url> <folder>\n";
        return 64;
    }
    if (arguments[1] == QLatin1String("compare"))
        return compare(arguments[2], arguments[3]);
    return arguments[1] == QLatin1String("threads") ? threads(arguments[2]) : one(arguments[2]);
}
