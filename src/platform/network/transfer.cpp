#include "platform/network/transfer.h"

#include "platform/network/connectivity.h"
#include "platform/network/curl_error.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <new>
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
/// (RFC 9112, 6.3). A sign is no part of a length (RFC 9110, 8.6).
bool hasUsableLength(const HeaderCollector &headers)
{
    if (!headers.value("Transfer-Encoding").isEmpty())
        return true;
    const QByteArray field = headers.value("Content-Length");
    if (field.isEmpty())
        return true;
    const QList<QByteArray> lengths = field.split(',');
    const QByteArray first = lengths.first().trimmed();
    bool isNumber = false;
    first.toLongLong(&isNumber);
    return isNumber && std::isdigit(static_cast<unsigned char>(first.front())) &&
           std::all_of(lengths.begin(), lengths.end(),
                       [&](const QByteArray &length) { return length.trimmed() == first; });
}

/// The length that an answer says, -1 when it says none.
qint64 saidLength(const HeaderCollector &headers)
{
    bool isNumber = false;
    const qint64 length = headers.value("Content-Length").toLongLong(&isNumber);
    return isNumber && headers.value("Transfer-Encoding").isEmpty() ? length : -1;
}

URLError damagedData()
{
    return URLError(URLError::Code::cannotDecodeContentData, QStringLiteral("content coding"));
}

URLError tooLarge()
{
    return URLError(URLError::Code::dataLengthExceedsMaximum);
}

} // namespace

Transfer::Transfer(std::shared_ptr<DownloadJob> job, Clock::time_point startedAt)
    : m_job(std::move(job)),
      m_chain(m_job->request,
              {m_job->configuration.allowsUnsafeRedirects, m_job->configuration.ownServer}),
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
    return m_easy && withinMemory([this] { return applyOptions(); });
}

/// Takes a step; a lack of memory in it is the error of the download.
template<typename Step>
bool Transfer::withinMemory(const Step &step)
{
    try {
        return step();
    } catch (const std::bad_alloc &) {
        m_error = URLError(URLError::Code::unknown, QStringLiteral("out of memory"));
        return false;
    }
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
    set(CURLOPT_PATH_AS_IS, 1L);
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 0L);
    // The system's configuration may allow more, for the sake of some old server.
    set(CURLOPT_SSLVERSION, CURL_SSLVERSION_TLSv1_2 + 0L);
    set(CURLOPT_PROXY_SSLVERSION, CURL_SSLVERSION_TLSv1_2 + 0L);
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

    set(CURLOPT_PREREQFUNCTION, &Transfer::onConnection);
    set(CURLOPT_PREREQDATA, static_cast<void *>(this));
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
    auto *transfer = static_cast<Transfer *>(self);
    const auto step = [&] { return transfer->takeHeader(data, size * count); };
    return transfer->withinMemory(step) ? size * count : 0;
}

std::size_t Transfer::onBody(char *data, std::size_t size, std::size_t count, void *self)
{
    auto *transfer = static_cast<Transfer *>(self);
    const auto step = [&] { return transfer->takeBody(data, size * count); };
    return transfer->withinMemory(step) ? size * count : 0;
}

int Transfer::onProgress(void *self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent)
{
    auto *transfer = static_cast<Transfer *>(self);
    if (std::exchange(transfer->m_bytesSeen, received + sent) != received + sent)
        transfer->m_lastActivity = Clock::now();
    return 0;
}

int Transfer::onConnection(void *self, char *address, char *, int, int)
{
    auto *transfer = static_cast<Transfer *>(self);
    const auto step = [&] { return transfer->takeConnection(address); };
    return transfer->withinMemory(step) ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

bool Transfer::takeConnection(const char *address)
{
    const QUrl &url = m_chain.url().toQUrl();
    long port = 0;
    curl_easy_getinfo(m_easy.get(), CURLINFO_PRIMARY_PORT, &port);
    // Another port is that of a proxy, whose address says nothing about the server's.
    const bool isDirect = port == url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    m_error = m_chain.reached(
        addressSpaceOf(isDirect ? QString::fromLatin1(address) : url.host(QUrl::FullyEncoded)));
    return !m_error;
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
        else if (saidLength(m_headers) > m_job->configuration.maximumBodySize)
            m_error = tooLarge();
        return !m_error;
    }
    const qint64 length = saidLength(m_headers);
    return length >= 0 && length <= longestRedirectBody;
}

bool Transfer::takeBody(const char *data, std::size_t size)
{
    if (followsRedirect())
        return true;
    if (!openFile())
        return false;
    const auto &limits = m_job->configuration;
    const auto write = [&](const char *bytes, std::size_t count) {
        m_fileSize += static_cast<qint64>(count);
        if (m_decoder->isDecoding() && m_fileSize > limits.maximumDecodedSize)
            m_error = tooLarge();
        return !m_error && m_file->write(bytes, count);
    };
    m_bodySize += static_cast<qint64>(size);
    if (m_bodySize > limits.maximumBodySize)
        m_error = tooLarge();
    if (!m_error && !m_decoder->decode(data, size, write) && !m_error)
        m_error = m_decoder->isDamaged() ? damagedData() : m_file->error();
    return !m_error;
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
    return withinMemory([&] { return takeEnd(code); });
}

bool Transfer::takeEnd(CURLcode code)
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
        curl_off_t beginOfAnswer = 0;
        curl_easy_getinfo(m_easy.get(), CURLINFO_STARTTRANSFER_TIME_T, &beginOfAnswer);
        m_error = errorOfCurl(code, m_errorText.data(), beginOfAnswer > 0 && !answered);
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
