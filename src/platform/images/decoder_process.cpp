#include "platform/images/decoder_process.h"

#include "platform/foundation/background_work.h"
#include "platform/images/decoder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zelkam {

namespace {

struct Program
{
    std::mutex mutex;
    QString path;
};

Program &program()
{
    static Program &instance = *new Program; // never destroyed: threads may outlive the statics
    return instance;
}

QString programPath()
{
    {
        const std::lock_guard lock(program().mutex);
        if (!program().path.isEmpty())
            return program().path;
    }
    const QString application = QCoreApplication::applicationDirPath();
    const QString candidates[] = {QStringLiteral(ZELKAM_DECODER_BUILT),
                                  application + QStringLiteral("/zelkam-decode"),
                                  application + QStringLiteral("/../" ZELKAM_DECODER_BELOW),
                                  QStringLiteral(ZELKAM_DECODER_INSTALLED)};
    for (const QString &candidate : candidates) {
        if (!candidate.isEmpty() && QFileInfo(candidate).isExecutable())
            return candidate;
    }
    return {};
}

/// Starts the program with nothing but one end of a socket, as its standard input: no environment,
/// no other open file, and no text of its decoders on the application's standard error.
pid_t spawn(const QByteArray &path, int socket)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, socket, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    // A group of its own: Ctrl+C in a terminal is for the application.
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                              POSIX_SPAWN_SETPGROUP);
    char *arguments[] = {const_cast<char *>(path.constData()), nullptr};
    char *environment[] = {nullptr};
    pid_t process = -1;
    const int error =
        ::posix_spawn(&process, path.constData(), &actions, &attributes, arguments, environment);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    errno = error;
    return error == 0 ? process : -1;
}

void tellLacks(qint64 lacks)
{
    static std::once_flag once;
    if (lacks == 0)
        return;
    std::call_once(once, [lacks] {
        qWarning(
            "Pictures and documents are decoded with less protection, as this system has no%s%s%s.",
            lacks & DecodeReply::noFileRules ? " file rules (Landlock)" : "",
            lacks & DecodeReply::noCallFilter ? " filter of system calls (seccomp)" : "",
            lacks & DecodeReply::noMemoryLimit ? " limit of memory" : "");
    });
}

} // namespace

void setDecoderProgram(const QString &path)
{
    const std::lock_guard lock(program().mutex);
    program().path = path;
}

DecoderProcess::DecoderProcess(pid_t process, FileDescriptor handle, FileDescriptor socket)
    : m_process(process), m_handle(std::move(handle)), m_socket(std::move(socket))
{
}

std::unique_ptr<DecoderProcess> DecoderProcess::start()
{
    const QByteArray path = QFile::encodeName(programPath());
    int ends[2] = {-1, -1};
    if (path.isEmpty() || ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        qWarning("The program zelkam-decode, which opens pictures and documents, is missing.");
        return nullptr;
    }
    FileDescriptor ours(ends[0]);
    const FileDescriptor theirs(ends[1]);
    const pid_t process = spawn(path, theirs.get());
    if (process < 0) {
        qWarning("The program %s cannot be started: %s", path.constData(), std::strerror(errno));
        return nullptr;
    }
    FileDescriptor handle(int(::syscall(SYS_pidfd_open, process, 0)));
    std::unique_ptr<DecoderProcess> started(
        new DecoderProcess(process, std::move(handle), std::move(ours)));
    DecodeReply hello;
    FileDescriptor none;
    constexpr std::chrono::seconds patience(10);
    if (started->receive(hello, none, patience) != Received::message ||
        hello.outcome != DecodeReply::Outcome::ready || hello.protocol != DecodeWish::protocol) {
        qWarning("The program %s does not start as it should.", path.constData());
        return nullptr;
    }
    tellLacks(hello.value);
    return started;
}

DecoderProcess::~DecoderProcess()
{
    kill();
    // One that waits for a network folder that is gone ends only with that.
    runInBackground([process = m_process] {
        int status = 0;
        while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
    });
}

bool DecoderProcess::send(const DecodeWish &wish, int file)
{
    return sendMessage(m_socket.get(), &wish, sizeof wish, file);
}

Received DecoderProcess::receive(DecodeReply &reply, FileDescriptor &memory,
                                 std::chrono::milliseconds timeout)
{
    return receiveMessage(m_socket.get(), &reply, sizeof reply, memory, timeout);
}

std::chrono::nanoseconds DecoderProcess::processorTime() const
{
    clockid_t clock = 0;
    timespec time = {};
    if (::clock_getcpuclockid(m_process, &clock) != 0 || ::clock_gettime(clock, &time) != 0)
        return std::chrono::nanoseconds(0);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

bool DecoderProcess::isGone() const
{
    pollfd socket{m_socket.get(), POLLIN, 0};
    return ::poll(&socket, 1, 0) != 0;
}

void DecoderProcess::kill()
{
    // Nobody waits for the process before the destructor, so its number is its own until then, also
    // where the kernel has no handles.
    if (m_handle.isOpen())
        ::syscall(SYS_pidfd_send_signal, m_handle.get(), SIGKILL, nullptr, 0);
    else
        ::kill(m_process, SIGKILL);
}

} // namespace zelkam
