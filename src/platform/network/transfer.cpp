#include "platform/network/transfer.h"

#include "platform/network/connectivity.h"
#include "platform/network/curl_error.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zelkam {

namespace {

// The largest that curl takes: fewer turns of the loop for a byte. Each running download has one.
constexpr long bufferBytes = 512 * 1024;
// A redirect's page is read to keep the connection alive, but only when it is this short.
constexpr qint64 longestRedirectBody = 16 * 1024;

/// Adding "for ever" to a point in time must not overflow.
Transfer::Clock::time_point later(Transfer::Clock::time_point time, std::chrono::milliseconds by)
{
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24 * 365);
    return time + std::clamp(by, std::chrono::milliseconds::zero(), longest);
}

/// Whether an answer says in one way how long it is. A list of different lengths, or one beyond
/// all counting, must not pass for an answer that ends where the connection does
/// (RFC 9112, 6.3).
bool hasUsableLength(const HeaderCollector &headers)
{
    if (!headers.value("Transfer-Encoding").isEmpty())
        return true;
    const QByteArray field = headers.value("Content-Length");
    if (field.isEmpty())
        return true;
    const QList<QByteArray> lengths = field.split(',');
    bool isNumber = false;
    const qint64 first = lengths.first().trimmed().toLongLong(&isNumber);
    return isNumber && first >= 0 &&
           std::all_of(lengths.begin(), lengths.end(), [&](const QByteArray &length) {
               return length.trimmed() == lengths.first().trimmed();
           });
}

URLError damagedData()
{
    return URLError(URLError::Code::cannotDecodeContentData, QStringLiteral("content coding"));
}

} // namespace

Transfer::Transfer(std::shared_ptr<DownloadJob> job, Clock::time_point startedAt)
    : m_job(std::move(job)),
      m_chain(m_job->request),
      m_easy(curl_easy_init()),
      m_end(later(startedAt, m_job->configuration.timeoutIntervalForResource)),
      m_lastActivity(startedAt)
{
}

Transfer::~Transfer() = default;

bool Transfer::needsConnectivity() const
{
    return !isLoopbackHost(m_chain.url().host().value_or(QString()));
}

bool Transfer::prepare(Clock::time_point now)
{
    m_lastActivity = now;
    m_bytesSeen = 0;
    m_headers = HeaderCollector();
    return m_easy && applyOptions();
}

bool Transfer::applyOptions()
{
    CURL *easy = m_easy.get();
    curl_easy_reset(easy);
    m_headerLines.clear();
    const QList<QByteArray> lines = m_chain.headerLines();
    if (!std::all_of(lines.begin(), lines.end(),
                     [this](const QByteArray &line) { return m_headerLines.append(line); }))
        return false;

    bool ok = true;
    const auto set = [&](CURLoption option, auto value) {
        ok = ok && curl_easy_setopt(easy, option, value) == CURLE_OK;
    };
    m_errorText[0] = 0;
    set(CURLOPT_ERRORBUFFER, m_errorText.data());
    set(CURLOPT_NOSIGNAL, 1L);
    // A transfer that ends does not wait for the look-up of a name.
    set(CURLOPT_QUICK_EXIT, 1L);
    // A proxy reaches another machine under the names of this one, and must not see its requests.
    if (isLoopbackHost(m_chain.url().toQUrl().host()))
        set(CURLOPT_NOPROXY, "*");
    set(CURLOPT_URL, m_chain.urlOnWire().constData());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 0L);
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    set(CURLOPT_USERAGENT, ZELKAM_USER_AGENT);
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(CURLOPT_BUFFERSIZE, bufferBytes);
    // The silence is measured here, and covers the connecting.
    set(CURLOPT_CONNECTTIMEOUT_MS, std::numeric_limits<int>::max() + 0L);
    set(CURLOPT_HTTPHEADER, m_headerLines.get());

    const QUrl &url = m_chain.url().toQUrl();
    if (!url.userInfo().isEmpty()) {
        set(CURLOPT_HTTPAUTH, CURLAUTH_BASIC);
        set(CURLOPT_USERNAME, url.userName(QUrl::FullyDecoded).toUtf8().constData());
        set(CURLOPT_PASSWORD, url.password(QUrl::FullyDecoded).toUtf8().constData());
    }

    const QByteArray method = m_chain.method();
    if (method == "HEAD") {
        set(CURLOPT_NOBODY, 1L);
    } else if (m_chain.hasBody()) {
        // The body is not copied: it lives in the chain, which outlives the request.
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_chain.body().size()));
        set(CURLOPT_POSTFIELDS, m_chain.body().constData());
    }
    if (method != "GET" && method != "HEAD" && method != "POST")
        set(CURLOPT_CUSTOMREQUEST, method.constData());

    set(CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    set(CURLOPT_HEADERDATA, static_cast<void *>(this));
    set(CURLOPT_WRITEFUNCTION, &Transfer::onBody);
    set(CURLOPT_WRITEDATA, static_cast<void *>(this));
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &Transfer::onProgress);
    set(CURLOPT_XFERINFODATA, static_cast<void *>(this));
    set(CURLOPT_PRIVATE, static_cast<void *>(this));
    return ok;
}

std::size_t Transfer::onHeader(char *data, std::size_t size, std::size_t count, void *self)
{
    return static_cast<Transfer *>(self)->takeHeader(data, size * count) ? size * count : 0;
}

std::size_t Transfer::onBody(char *data, std::size_t size, std::size_t count, void *self)
{
    return static_cast<Transfer *>(self)->takeBody(data, size * count) ? size * count : 0;
}

int Transfer::onProgress(void *self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent)
{
    auto *transfer = static_cast<Transfer *>(self);
    if (std::exchange(transfer->m_bytesSeen, received + sent) != received + sent)
        transfer->m_lastActivity = Clock::now();
    return 0;
}

bool Transfer::takeHeader(const char *data, std::size_t size)
{
    m_lastActivity = Clock::now();
    const bool wasComplete = m_headers.isComplete();
    if (!m_headers.addLine(data, size)) {
        m_error = URLError(URLError::Code::headersTooLarge);
        return false;
    }
    if (wasComplete || !m_headers.isComplete())
        return true;
    if (!followsRedirect()) {
        if (!hasUsableLength(m_headers))
            m_error = URLError(URLError::Code::badServerResponse, QStringLiteral("length"));
        return !m_error;
    }
    bool isNumber = false;
    const qint64 length = m_headers.value("Content-Length").toLongLong(&isNumber);
    return isNumber && length <= longestRedirectBody;
}

bool Transfer::takeBody(const char *data, std::size_t size)
{
    if (followsRedirect())
        return true;
    if (!openFile())
        return false;
    const auto write = [this](const char *bytes, std::size_t count) {
        return m_file->write(bytes, count);
    };
    if (m_decoder->decode(data, size, write))
        return true;
    m_error = m_decoder->isDamaged() ? damagedData() : m_file->error();
    return false;
}

bool Transfer::openFile()
{
    if (m_file)
        return true;
    m_file = std::make_shared<TemporaryFile>();
    m_decoder = std::make_unique<ContentDecoder>(m_headers.value("Content-Encoding"));
    if (!m_file->open())
        m_error = m_file->error();
    return !m_error;
}

bool Transfer::followsRedirect() const
{
    return RequestChain::isRedirect(m_headers.status()) && !m_headers.value("Location").isEmpty();
}

bool Transfer::requestEnded(CURLcode code)
{
    if (m_error)
        return false;
    const bool answered = m_headers.isComplete();
    if (answered && followsRedirect()) { // however its body ended
        m_error =
            m_chain.follow(m_headers.status(), m_headers.value("Location"), m_headers.fields());
        return !m_error;
    }
    if (code != CURLE_OK) {
        m_error = errorOfCurl(code, m_errorText.data());
        return false;
    }
    if (!answered) {
        m_error = URLError(URLError::Code::badServerResponse, QStringLiteral("no final answer"));
        return false;
    }
    if (!openFile()) // an answer without a body is an empty file
        return false;
    if (!m_decoder->isWhole() || !m_file->close()) {
        m_error = m_decoder->isWhole() ? m_file->error() : damagedData();
        return false;
    }
    m_response =
        std::make_shared<HTTPURLResponse>(m_chain.url(), m_headers.status(), m_headers.fields());
    return false;
}

DownloadResult Transfer::result()
{
    if (m_error)
        return {nullptr, nullptr, m_error};
    return {std::move(m_file), std::move(m_response), std::nullopt};
}

Transfer::Clock::time_point Transfer::deadline(bool isWaiting) const
{
    if (isWaiting)
        return m_end;
    const auto silence =
        std::min(m_job->request.timeoutInterval, m_job->configuration.timeoutIntervalForRequest);
    return std::min(m_end, later(m_lastActivity, silence));
}

} // namespace zelkam
