// zelkam-decode: opens pictures, drawings, documents and text for an application that hands them
// over through a socket, and can do nothing else. Not to be started by hand.
#include "decode/decode_service.h"

#include <QFile>
#include <QGuiApplication>
#include <unistd.h>

namespace {

/// The screen goes before, and where memory runs out, everything does.
void giveWay()
{
    constexpr int nicer = 5;
    [[maybe_unused]] const int niceness = ::nice(nicer);
    QFile score(QStringLiteral("/proc/self/oom_score_adj"));
    if (score.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        score.write("1000");
}

} // namespace

int main(int argc, char **argv)
{
    giveWay();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Without it Qt's libraries would bring in GLib, which aborts where it may not do something.
    qputenv("QT_NO_GLIB", "1");
    const QGuiApplication application(argc, argv); // for the fonts of drawings
    zelkam::DecodeWork work;
    return zelkam::serveDecoding([&work](const auto &wish, const auto &file, const auto &progress) {
        return work.perform(wish, file, progress);
    });
}
