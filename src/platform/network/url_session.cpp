#include "platform/network/url_session.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/network/network_thread.h"

#include <mutex>
#include <new>
#include <utility>

namespace zelkam {

struct URLSession::Shared
{
    URLSessionConfiguration configuration;
    DispatchQueue queue;
};

/// Shared by the handles and, once resumed, by the job. The completion handler is taken out when
/// it is called, so it can be called once only.
struct URLSessionDownloadTask::State : std::enable_shared_from_this<State>
{
    State(std::shared_ptr<URLSession::Shared> ofSession, const URLRequest &with,
          URLSession::CompletionHandler completionHandler)
        : session(std::move(ofSession)), request(with), handler(std::move(completionHandler))
    {
    }

    void complete(DownloadResult result)
    {
        {
            const std::lock_guard lock(mutex);
            if (std::exchange(ended, true))
                return;
        }
        const auto queue = [&] {
            session->queue.async([self = shared_from_this(), result] { self->call(result); });
        };
        try {
            queue();
        } catch (const std::bad_alloc &) {
            // Whoever waits must hear of it; what the download held is free by now.
            result = {nullptr, nullptr, URLError(URLError::Code::unknown)};
            queue();
        }
    }

    void call(const DownloadResult &result)
    {
        URLSession::CompletionHandler completion;
        {
            const std::lock_guard lock(mutex);
            completion = std::exchange(handler, nullptr);
        }
        if (!completion)
            return;
        std::optional<URL> location;
        if (result.file)
            location = URL::fromFilePath(result.file->path());
        completion(std::move(location), result.response, result.error);
    }

    std::shared_ptr<URLSession::Shared> session;
    URLRequest request;
    std::mutex mutex; // guards the rest
    URLSession::CompletionHandler handler;
    bool resumed = false;
    bool ended = false;
    std::weak_ptr<DownloadJob> job; // while it runs: the job holds this state
};

namespace {

struct DefaultConfiguration
{
    std::mutex mutex;
    URLSessionConfiguration value;
};

DefaultConfiguration &applicationDefault()
{
    static DefaultConfiguration instance;
    return instance;
}

} // namespace

URLSessionConfiguration URLSessionConfiguration::defaultConfiguration()
{
    const std::lock_guard lock(applicationDefault().mutex);
    return applicationDefault().value;
}

void URLSessionConfiguration::setDefaultConfiguration(const URLSessionConfiguration &configuration)
{
    const std::lock_guard lock(applicationDefault().mutex);
    applicationDefault().value = configuration;
}

URLSessionDownloadTask::URLSessionDownloadTask(std::shared_ptr<State> state)
    : m_state(std::move(state))
{
}

URLSessionDownloadTask::~URLSessionDownloadTask() = default;

void URLSessionDownloadTask::resume()
{
    const std::lock_guard lock(m_state->mutex);
    if (m_state->ended || std::exchange(m_state->resumed, true))
        return;
    auto job = std::make_shared<DownloadJob>(
        DownloadJob{m_state->request, m_state->session->configuration, {}});
    job->finished = [state = m_state](DownloadResult result) {
        state->complete(std::move(result));
    };
    m_state->job = job;
    // Under the lock: a cancel() that sees the job must reach the thread after its start.
    NetworkThread::instance().start(std::move(job));
}

void URLSessionDownloadTask::cancel()
{
    std::shared_ptr<DownloadJob> job;
    bool resumed = false;
    {
        const std::lock_guard lock(m_state->mutex);
        resumed = m_state->resumed;
        job = m_state->job.lock();
    }
    if (job)
        NetworkThread::instance().cancel(std::move(job));
    else if (!resumed)
        m_state->complete({nullptr, nullptr, URLError(URLError::Code::cancelled)});
}

URLSession::URLSession(const URLSessionConfiguration &configuration)
    : m_shared(std::make_shared<Shared>())
{
    m_shared->configuration = configuration;
}

URLSession::~URLSession() = default;

std::shared_ptr<URLSessionDownloadTask>
URLSession::downloadTask(const URLRequest &with, CompletionHandler completionHandler)
{
    auto state = std::make_shared<URLSessionDownloadTask::State>(m_shared, with,
                                                                 std::move(completionHandler));
    return std::shared_ptr<URLSessionDownloadTask>(new URLSessionDownloadTask(std::move(state)));
}

} // namespace zelkam
