#include "app/unix_signals.h"

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace zelkam {

namespace {

constexpr std::array ending{SIGINT, SIGTERM, SIGHUP};

int writeEnd = -1;

/// Only what a signal handler may do: the rest waits for the event loop.
extern "C" void passOn(int number)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    std::signal(number, SIG_DFL);
}

void handle(void (*handler)(int))
{
    for (const int number : ending) {
        if (std::signal(number, handler) == SIG_IGN)
            std::signal(number, SIG_IGN); // a program that nohup started outlives its terminal
    }
}

} // namespace

UnixSignals::UnixSignals()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_readEnd = ends[0];
    writeEnd = ends[1];
    auto *notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        emit quitRequested();
    });
    handle(passOn);
}

UnixSignals::~UnixSignals()
{
    handle(SIG_DFL);
    if (m_readEnd >= 0) {
        ::close(m_readEnd);
        ::close(writeEnd);
    }
}

} // namespace zelkam
