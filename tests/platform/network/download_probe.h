#pragma once

#include "platform/network/url_session.h"

#include <QFile>
#include <QtTest>
#include <chrono>
#include <future>
#include <memory>

/// The name of an error's code; empty where there is none.
inline QString nameOf(const std::optional<zelkam::URLError> &error)
{
    return error ? error->debugDescription().section(u' ', 0, 0).section(u'.', 1) : QString();
}

/// What a completion handler was given, and what it saw of the file while it ran.
struct Outcome
{
    int calls = 0;
    QString path; ///< empty when there was no location
    QByteArray data;
    QFile::Permissions permissions;
    std::shared_ptr<const zelkam::HTTPURLResponse> response;
    std::optional<zelkam::URLError> error;

    int status() const { return response ? response->statusCode() : 0; }
    QString failure() const { return nameOf(error); }
};

/// A download whose end can be waited for. Its session is let go at once.
class DownloadProbe
{
public:
    explicit DownloadProbe(const zelkam::URLRequest &request,
                           const zelkam::URLSessionConfiguration &configuration = {})
    {
        auto handler = [state = m_state](auto location, auto response, auto error) {
            Outcome &outcome = state->outcome;
            ++outcome.calls;
            outcome.response = std::dynamic_pointer_cast<const zelkam::HTTPURLResponse>(response);
            outcome.error = error;
            if (location) {
                outcome.path = location->path();
                QFile file(outcome.path);
                if (file.open(QIODevice::ReadOnly))
                    outcome.data = file.readAll();
                outcome.permissions = file.permissions();
            }
            state->promise.set_value();
        };
        task = zelkam::URLSession(configuration).downloadTask(request, handler);
    }

    /// The outcome; a default one, with no call, when none has come within the time.
    Outcome wait(std::chrono::milliseconds atMost = std::chrono::seconds(30))
    {
        return m_future.wait_for(atMost) == std::future_status::ready ? m_state->outcome
                                                                      : Outcome();
    }

    std::shared_ptr<zelkam::URLSessionDownloadTask> task;

private:
    struct State
    {
        std::promise<void> promise;
        Outcome outcome;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
    std::future<void> m_future = m_state->promise.get_future();
};

/// Downloads without keeping a handle of session or task.
inline Outcome download(const zelkam::URLRequest &request,
                        const zelkam::URLSessionConfiguration &configuration = {})
{
    DownloadProbe probe(request, configuration);
    probe.task->resume();
    probe.task.reset();
    return probe.wait();
}

inline zelkam::URLRequest requestFor(const QString &url)
{
    return zelkam::URLRequest(*zelkam::URL::fromString(url));
}
