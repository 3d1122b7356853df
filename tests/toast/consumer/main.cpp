#include <toast/toast.h>

#include <QApplication>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(400, 300);
    window.show();

    using namespace std::chrono_literals;
    zelkam::makeToastActivity(&window);
    zelkam::makeToast(&window, QStringLiteral("Saved"), 10ms, zelkam::ToastPosition::bottom,
                      QStringLiteral("notes.txt"), std::nullopt, zelkam::ToastStyle(),
                      [](bool didTap) { QCoreApplication::exit(didTap ? 1 : 0); });
    return QApplication::exec();
}
