#include "platform/network/network_thread.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/network/connectivity.h"
#include "platform/network/http_cookie_storage.h"

#include <QCoreApplication>
#include <algorithm>
#include <csignal>
#include <new>
#include <pthread.h>
#include <utility>

namespace zelkam {

namespace {

constexpr std::chrono::milliseconds connectivityInterval = std::chrono::seconds(1);
constexpr std::chrono::milliseconds longestPoll = std::chrono::hours(1);

/// A new thread takes no signals: they belong to the main thread, and a write to a connection
/// that the other side has closed must be an error, not a SIGPIPE.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Q_DISABLE_COPY_MOVE(SignalsBlocked)

private:
    sigset_t m_before;
};

} // namespace

NetworkThread &NetworkThread::instance()
{
    static NetworkThread thread;
    return thread;
}

NetworkThread::NetworkThread()
{
    // What the thread uses must be there before it, to be there after it when the program ends.
    HTTPCookieStorage::shared();
    DispatchQueue().async([] {});
    curl_global_init(CURL_GLOBAL_DEFAULT);
    m_multi.reset(curl_multi_init());
}

NetworkThread::~NetworkThread()
{
    stop();
}

void NetworkThread::start(std::shared_ptr<DownloadJob> job)
{
    post({std::move(job), false});
}

void NetworkThread::cancel(std::shared_ptr<DownloadJob> job)
{
    post({std::move(job), true});
}

void NetworkThread::post(Command command)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping)
            return;
        m_commands.push_back(std::move(command));
        if (!m_thread.joinable()) {
            qAddPostRoutine([] { instance().stop(); });
            const SignalsBlocked blocked;
            m_thread = std::thread(&NetworkThread::run, this);
        }
    }
    curl_multi_wakeup(m_multi.get());
}

void NetworkThread::stop()
{
    std::thread thread;
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        thread = std::move(m_thread);
    }
    curl_multi_wakeup(m_multi.get());
    if (thread.joinable())
        thread.join();
    std::vector<Command> dropped;
    const std::lock_guard lock(m_mutex);
    m_stopping = false;
    dropped.swap(m_commands);
}

void NetworkThread::run()
{
    ::pthread_setname_np(::pthread_self(), "zelkam-network");
    while (takeCommands()) {
        int stillRunning = 0;
        curl_multi_perform(m_multi.get(), &stillRunning);
        takeEndedRequests();
        const auto now = Clock::now();
        if (now >= m_nextRetry)
            retryWaiting(now);
        if (now >= m_nextDeadline)
            endOverdue(now);
        curl_multi_poll(m_multi.get(), nullptr, 0, pollTimeout(now), nullptr);
    }
    for (auto &[job, running] : m_transfers) {
        if (running.inFlight)
            curl_multi_remove_handle(m_multi.get(), running.transfer->handle());
    }
    m_transfers.clear();
}

bool NetworkThread::takeCommands()
{
    std::vector<Command> commands;
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping)
            return false;
        commands.swap(m_commands);
    }
    for (Command &command : commands) {
        if (command.isCancel)
            end(command.job.get(), URLError(URLError::Code::cancelled));
        else
            begin(command.job);
    }
    return true;
}

void NetworkThread::begin(const std::shared_ptr<DownloadJob> &job)
{
    try {
        const auto now = Clock::now();
        m_transfers.emplace(job.get(), Running{std::make_unique<Transfer>(job, now)});
        admit(m_transfers.at(job.get()), now);
    } catch (const std::bad_alloc &) {
        const URLError error(URLError::Code::unknown, QStringLiteral("out of memory"));
        end(job.get(), error);
        job->finished({nullptr, nullptr, error}); // in case it was not there yet
    }
}

void NetworkThread::admit(Running &running, Clock::time_point now)
{
    const Transfer &transfer = *running.transfer;
    const DownloadJob *key = transfer.job().get();
    if (const auto refusal = transfer.refusal())
        return end(key, refusal);
    if (!transfer.needsConnectivity() || isConnected())
        return sendRequest(running);
    if (!key->configuration.waitsForConnectivity)
        return end(key, URLError(URLError::Code::notConnectedToInternet));
    m_nextRetry = std::min(m_nextRetry, now + connectivityInterval);
    m_nextDeadline = std::min(m_nextDeadline, transfer.deadline(true));
}

void NetworkThread::sendRequest(Running &running)
{
    Transfer &transfer = *running.transfer;
    if (!transfer.prepare(Clock::now()) ||
        curl_multi_add_handle(m_multi.get(), transfer.handle()) != CURLM_OK)
        return end(transfer.job().get(), URLError(URLError::Code::unknown));
    running.inFlight = true;
    m_nextDeadline = std::min(m_nextDeadline, transfer.deadline(false));
}

void NetworkThread::takeEndedRequests()
{
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        // The message does not outlive the handle's removal.
        const CURLcode code = message->data.result;
        CURL *handle = message->easy_handle;
        void *self = nullptr;
        curl_easy_getinfo(handle, CURLINFO_PRIVATE, &self);
        auto *transfer = static_cast<Transfer *>(self);
        curl_multi_remove_handle(m_multi.get(), handle);
        Running &running = m_transfers.at(transfer->job().get());
        running.inFlight = false;
        if (transfer->requestEnded(code))
            sendRequest(running);
        else
            end(transfer->job().get(), std::nullopt);
    }
}

void NetworkThread::retryWaiting(Clock::time_point now)
{
    m_nextRetry = Clock::time_point::max();
    const bool connected = isConnected();
    for (auto it = m_transfers.begin(); it != m_transfers.end();) {
        Running &running = (it++)->second; // the transfer may end here
        if (running.inFlight)
            continue;
        if (connected)
            sendRequest(running);
        else
            m_nextRetry = now + connectivityInterval;
    }
}

void NetworkThread::endOverdue(Clock::time_point now)
{
    m_nextDeadline = Clock::time_point::max();
    for (auto it = m_transfers.begin(); it != m_transfers.end();) {
        const auto &[job, running] = *it++;
        const auto deadline = running.transfer->deadline(!running.inFlight);
        if (deadline <= now)
            end(job, URLError(URLError::Code::timedOut));
        else
            m_nextDeadline = std::min(m_nextDeadline, deadline);
    }
}

void NetworkThread::end(const DownloadJob *key, std::optional<URLError> error)
{
    const auto it = m_transfers.find(key);
    if (it == m_transfers.end())
        return;
    std::unique_ptr<Transfer> transfer = std::move(it->second.transfer);
    if (it->second.inFlight)
        curl_multi_remove_handle(m_multi.get(), transfer->handle());
    m_transfers.erase(it);
    const std::shared_ptr<DownloadJob> job = transfer->job();
    DownloadResult result = error ? DownloadResult{nullptr, nullptr, error} : transfer->result();
    transfer.reset(); // nothing of a failed download is left when its owner hears of it
    job->finished(std::move(result));
}

int NetworkThread::pollTimeout(Clock::time_point now) const
{
    const auto next = std::min(m_nextDeadline, m_nextRetry);
    if (next - now > longestPoll)
        return static_cast<int>(longestPoll.count());
    // Rounded up: waking just before the deadline would poll in a circle.
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - now);
    return static_cast<int>(std::max(wait, std::chrono::milliseconds::zero()).count());
}

} // namespace zelkam
