#pragma once

#include "platform/network/url_error.h"
#include "platform/network/url_request.h"
#include "platform/network/url_response.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

/// How the transfers of a session behave. A value.
struct URLSessionConfiguration
{
    /// What the application has set, else the values that stand here. From any thread.
    static URLSessionConfiguration defaultConfiguration();
    /// Sets it for sessions that are made from now on. From any thread.
    static void setDefaultConfiguration(const URLSessionConfiguration &configuration);

    /// Whether a transfer waits while the machine has no usable network interface, instead of
    /// failing with notConnectedToInternet. The loopback interface does not count, except for a
    /// loopback address, for which nothing is waited for.
    bool waitsForConnectivity = false;
    /// The longest silence, in which no byte comes or goes. Waiting for connectivity is not part
    /// of it.
    std::chrono::milliseconds timeoutIntervalForRequest = std::chrono::seconds(60);
    /// The whole transfer with its redirects, waiting for connectivity included.
    std::chrono::milliseconds timeoutIntervalForResource = std::chrono::hours(24 * 7);
    /// The longest body, in bytes as they come from the server. A longer one fails with
    /// dataLengthExceedsMaximum, at once where the server says how long it is.
    qint64 maximumBodySize = 16LL << 30;
    /// The longest file that the decoding of a body may give, in bytes. A megabyte of gzip can
    /// become a gigabyte.
    qint64 maximumDecodedSize = 4LL << 30;
    /// Whether redirects may lead from https to http, and into a more private network than they
    /// come from: from public addresses to private ones, from both to this machine. For
    /// development; a server could fetch with it what only this machine can reach.
    bool allowsUnsafeRedirects = false;
    /// A server (scheme, host and port) to which redirects may lead from anywhere: the one that
    /// the page came from.
    std::optional<URL> ownServer;
};

/// A download that was made by a session. Handles may be copied and let go at any time: a
/// download that runs goes on and calls its completion handler all the same. One that was never
/// resumed nor cancelled is forgotten with its last handle, and calls nothing.
class URLSessionDownloadTask
{
public:
    ~URLSessionDownloadTask();
    Q_DISABLE_COPY_MOVE(URLSessionDownloadTask)

    /// Starts the download; later calls do nothing. Returns at once. From any thread.
    void resume();

    /// Ends the download, started or not: the completion handler gets the error "cancelled", if
    /// it has not been called or queued already. Returns at once. From any thread.
    void cancel();

private:
    friend class URLSession;
    struct State;
    explicit URLSessionDownloadTask(std::shared_ptr<State> state);
    std::shared_ptr<State> m_state;
};

/// A group of downloads with one configuration and one queue for their completion handlers.
///
/// One network thread serves all sessions; it starts with the first download. A session may be
/// let go while its downloads run. When the program ends, downloads that still run are dropped:
/// their files are removed and their handlers are not called.
class URLSession
{
public:
    /// Called once, on the session's own background queue, one handler after another.
    ///
    /// With success the location is the file URL of a temporary file, on the file system of
    /// NSTemporaryDirectory(), with the whole body; it is removed when the handler has returned,
    /// unless the handler has moved it away. Any HTTP status is a success here. With a failure
    /// there is an error and neither of the others, and no file is left.
    using CompletionHandler =
        std::function<void(std::optional<URL> location, std::shared_ptr<const URLResponse> response,
                           std::optional<URLError> error)>;

    explicit URLSession(const URLSessionConfiguration &configuration);
    ~URLSession();
    Q_DISABLE_COPY_MOVE(URLSession)

    /// Makes a download of a request; it starts with resume().
    ///
    /// The path and the query of the URL go to the server as they are written.
    ///
    /// Redirects are followed as browsers do, up to 20 of them and to http and https only: 303,
    /// and 301 or 302 after a POST, go on with GET and without the body. On the way to another
    /// origin (scheme, host, port) the headers that the request names and its Cookie header stay
    /// behind; there only cookies that belong to the new origin are sent, from
    /// HTTPCookieStorage::shared() and from the redirects themselves. Where they may lead is a
    /// matter of the configuration. Networks are told by the address of the connection; behind a
    /// proxy only a host that is written in numbers is known. When the request has no
    /// Cookie header, the shared cookies that match its URL are sent. Cookies of responses are
    /// not stored.
    ///
    /// TLS is of version 1.2 at least, and certificates are always checked. Proxies are taken from
    /// the environment, as curl does.
    std::shared_ptr<URLSessionDownloadTask> downloadTask(const URLRequest &with,
                                                         CompletionHandler completionHandler);

private:
    friend class URLSessionDownloadTask;
    struct Shared;
    std::shared_ptr<Shared> m_shared;
};

} // namespace zelkam
