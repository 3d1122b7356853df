#pragma once

#include "platform/network/content_decoder.h"
#include "platform/network/curl_handles.h"
#include "platform/network/header_collector.h"
#include "platform/network/request_chain.h"
#include "platform/network/temporary_file.h"
#include "platform/network/url_error.h"
#include "platform/network/url_response.h"
#include "platform/network/url_session.h"

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

/// How a download ended: either an error, or a file with the whole body and its response.
struct DownloadResult
{
    std::shared_ptr<TemporaryFile> file;
    std::shared_ptr<const URLResponse> response;
    std::optional<URLError> error;
};

/// What a transfer needs to know, and whom it tells. The callback is called on the network thread
/// and must not block it; only its first call counts.
struct DownloadJob
{
    URLRequest request;
    URLSessionConfiguration configuration;
    std::function<void(DownloadResult)> finished;
};

/// One download on its curl handle, from the first request to the last redirect. Network thread
/// only; it neither waits nor loops, that is the thread's part.
class Transfer
{
public:
    using Clock = std::chrono::steady_clock;

    Transfer(std::shared_ptr<DownloadJob> job, Clock::time_point startedAt);
    ~Transfer();
    Q_DISABLE_COPY_MOVE(Transfer)

    const std::shared_ptr<DownloadJob> &job() const { return m_job; }
    CURL *handle() const { return m_easy.get(); }

    /// Why the download cannot even start.
    std::optional<URLError> refusal() const { return m_chain.refusal(); }
    /// Whether its host is only reached through a network interface.
    bool needsConnectivity() const;

    /// Sets the handle up for the next request. False when there is no memory for it: the download
    /// has failed.
    bool prepare(Clock::time_point now);

    /// Takes the end of a request. True when a redirect is to be followed: prepare() comes next.
    /// Otherwise result() says how the download ended.
    bool requestEnded(CURLcode code);
    DownloadResult result();

    /// When the download has taken too long or been silent for too long, as it stands now. While
    /// it waits for connectivity, silence does not count.
    Clock::time_point deadline(bool isWaiting) const;

private:
    // What curl calls. No exception may pass through it.
    static std::size_t onHeader(char *data, std::size_t size, std::size_t count, void *self);
    static std::size_t onBody(char *data, std::size_t size, std::size_t count, void *self);
    static int onConnection(void *self, char *address, char *, int, int);
    static int onProgress(void *self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent);

    template<typename Step>
    bool withinMemory(const Step &step);
    bool applyOptions();
    bool takeConnection(const char *address);
    bool takeHeader(const char *data, std::size_t size);
    bool takeBody(const char *data, std::size_t size);
    bool takeEnd(CURLcode code);
    bool openFile();
    bool followsRedirect() const;

    std::shared_ptr<DownloadJob> m_job;
    RequestChain m_chain;
    CurlEasy m_easy;
    CurlList m_headerLines;
    std::array<char, CURL_ERROR_SIZE> m_errorText{};
    HeaderCollector m_headers;
    std::shared_ptr<TemporaryFile> m_file; // with the decoder, from the first byte on
    std::unique_ptr<ContentDecoder> m_decoder;
    qint64 m_bodySize = 0; // of the final answer, as it comes
    qint64 m_fileSize = 0; // as it is written
    std::optional<URLError> m_error;
    std::shared_ptr<const URLResponse> m_response;

    Clock::time_point m_end;
    Clock::time_point m_lastActivity;
    curl_off_t m_bytesSeen = 0;
};

} // namespace zelkam
