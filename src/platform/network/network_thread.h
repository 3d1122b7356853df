#pragma once

#include "platform/network/transfer.h"

#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace zelkam {

/// The one thread that moves the bytes of all sessions. It starts with the first download and ends
/// with the application object, or with the program when there is none.
class NetworkThread
{
public:
    static NetworkThread &instance();
    ~NetworkThread();
    Q_DISABLE_COPY_MOVE(NetworkThread)

    /// Starts a download. Returns at once. From any thread.
    void start(std::shared_ptr<DownloadJob> job);

    /// Ends a download with the error "cancelled"; nothing when it has ended. From any thread.
    void cancel(std::shared_ptr<DownloadJob> job);

private:
    using Clock = Transfer::Clock;

    struct Command
    {
        std::shared_ptr<DownloadJob> job;
        bool isCancel;
    };

    struct Running
    {
        std::unique_ptr<Transfer> transfer;
        bool inFlight = false; // or waiting for connectivity
    };
    using Transfers = std::map<const DownloadJob *, Running>;

    NetworkThread();
    void post(Command command);
    void stop();

    void run();
    bool takeCommands();
    void begin(const std::shared_ptr<DownloadJob> &job);
    void admit(Running &running, Clock::time_point now);
    void sendRequest(Running &running);
    void takeEndedRequests();
    void retryWaiting(Clock::time_point now);
    void endOverdue(Clock::time_point now);
    void end(const DownloadJob *key, std::optional<URLError> error);
    int pollTimeout(Clock::time_point now) const;

    CurlMulti m_multi;

    std::mutex m_mutex; // guards the next three
    std::vector<Command> m_commands;
    std::thread m_thread;
    bool m_stopping = false;

    // Of the thread itself.
    Transfers m_transfers;
    Clock::time_point m_nextDeadline = Clock::time_point::max();
    Clock::time_point m_nextRetry = Clock::time_point::max();
};

} // namespace zelkam
