#include "download_probe.h"
#include "platform/foundation/file_manager.h"
#include "platform/network/connectivity.h"
#include "support/data_table.h"
#include "support/http_test_server.h"

#include <QDir>
#include <QTemporaryDir>
#include <atomic>
#include <sys/resource.h>

using namespace zelkam;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using zelkam::test::Row;

namespace {

QByteArray answerOf(const Row &row)
{
    // Deflated as zlib does it, in the frame of gzip: 8 MiB that are 8 KiB on the way.
    if (row.is("bomb"))
        return row.bytes("answer") + QByteArray::fromHex("1f8b0800000000000003") +
               qCompress(QByteArray(8 << 20, '\0')).mid(6);
    return row.bytes("answer") + QByteArray::fromHex(row.bytes("hex")) +
           row.bytes("flood").repeated(row.number("times")) + row.bytes("end");
}

} // namespace

class TestURLSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QVERIFY(!setTemporaryDirectory(m_folder.path()));
        m_server.on("/stuck", [](const auto &, HttpTestServer::Connection &connection) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\nx");
            connection.pause(60s);
        });
    }

    void cleanup()
    {
        const auto anyFile = QDir::Files | QDir::Hidden;
        QTRY_COMPARE(QDir(m_folder.path()).entryList(anyFile), QStringList());
    }

    void givesBodyAndResponseAndRemovesTheFile()
    {
        const QByteArray body = QByteArray("0123456789").repeated(100'000);
        m_server.on("/a.bin", HttpTestServer::answer(body, "Content-Type: Text/Plain; x=y\r\n"));
        const Outcome outcome = download(requestFor(m_server.url(u"/a.bin"_s)));
        QVERIFY(!outcome.error);
        QCOMPARE(outcome.data, body);
        QCOMPARE(outcome.status(), 200);
        QCOMPARE(outcome.response->mimeType(), u"text/plain"_s);
        QCOMPARE(outcome.response->expectedContentLength(), body.size());
        QVERIFY(!(outcome.permissions & QFile::Permissions(0x0077))); // nobody else's
        QCOMPARE(m_server.requests().last().header("Accept-Encoding"), "gzip");
        QVERIFY(outcome.path.startsWith(NSTemporaryDirectory()));
        QTRY_VERIFY(!QFile::exists(outcome.path));
    }

    void bringsAnswersHomeOrFails_data() { test::addRows({"url_session.json"}); }

    void bringsAnswersHomeOrFails()
    {
        const Row row;
        m_server.on("/", answerOf(row));
        URLSessionConfiguration bounded;
        bounded.maximumBodySize = 10'000;
        bounded.maximumDecodedSize = 10;
        URLSessionConfiguration::setDefaultConfiguration(bounded);
        const auto request = requestFor(m_server.url(u"/"_s));
        const Outcome outcome = download(request, URLSessionConfiguration::defaultConfiguration());
        QCOMPARE(outcome.failure(), row.text("failure"));
        QCOMPARE(outcome.status(), row.number("status"));
        QCOMPARE(outcome.data, row.bytes("data").repeated(row["dataTimes"].toInt(1)));
        QCOMPARE(outcome.path.isEmpty(), outcome.error.has_value());
        if (outcome.response) {
            QVERIFY(!outcome.response->value(u"x-a"_s));
            QCOMPARE(outcome.response->expectedContentLength(),
                     row["length"].toInteger(URLResponse::unknownLength));
        }
    }

    void requestsThatCannotBeSent_data() { test::addRows({"url_session.json"}); }

    void requestsThatCannotBeSent()
    {
        const Row row;
        const qsizetype before = m_server.requests().size();
        setConnectivityCheck([] { return true; });
        URLRequest request = requestFor(row["url"].toString(m_server.url(u"/"_s)));
        request.setValue(row.text("value"), row["header"].toString(u"X-A"_s));
        const Outcome outcome = download(request);
        setConnectivityCheck(nullptr);
        QCOMPARE(outcome.failure(), row.text("failure"));
        QCOMPARE(m_server.requests().size(), before);
    }

    void sendsHeadersAsTheyWereSet()
    {
        const QByteArray target = "/./h/../%7e%c3%bc?%41=[/../b|";
        m_server.on(target.split('?').first(), HttpTestServer::answer({}));
        URLRequest request = requestFor(m_server.url(QString::fromLatin1(target) + u"#c"_s));
        request.httpMethod = u"POST"_s;
        request.httpBody = "{\"a\":1}";
        request.setValue(u"text/plain"_s, u"content-type"_s);
        request.setValue(u"application/json"_s, u"Content-Type"_s);
        request.setValue(QString(), u"X-Empty"_s);
        request.setValue(u"\u00e9"_s, u"X-Text"_s);
        request.setValue(u"3"_s, u"Content-Length"_s);
        request.setValue(u"chunked"_s, u"Transfer-Encoding"_s);
        request.setValue(u"evil"_s, u"host"_s);
        QVERIFY(!download(request).error);
        const auto sent = m_server.requests().last();
        QCOMPARE(sent.method, "POST");
        QCOMPARE(sent.target, target.chopped(1) + "%7C"); // what may not stand in a URL is encoded
        QCOMPARE(sent.body, request.httpBody);
        QCOMPARE(sent.header("Content-Type"), "application/json");
        QVERIFY(!sent.header("X-Empty").isNull());
        QCOMPARE(sent.header("X-Text"), "\xc3\xa9");
        QCOMPARE(sent.header("Content-Length"), "7");
        QVERIFY(sent.header("Transfer-Encoding").isNull());
        QCOMPARE(sent.header("Host"), "127.0.0.1:" + QByteArray::number(m_server.port()));
    }

    void failedWriteIsAnError()
    {
        m_server.on("/w", HttpTestServer::answer(QByteArray(300'000, 'x')));
        const URLRequest request = requestFor(m_server.url(u"/w"_s));
        rlimit limit{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &limit), 0);
        const rlimit small{100'000, limit.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        const Outcome tooLong = download(request);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        QCOMPARE(tooLong.failure(), u"cannotWriteToFile"_s);
        QVERIFY(tooLong.path.isEmpty());
        QVERIFY(QDir().rename(m_folder.path(), m_folder.path() + u"-gone"_s));
        const Outcome noFolder = download(request);
        QVERIFY(QDir().rename(m_folder.path() + u"-gone"_s, m_folder.path()));
        QCOMPARE(noFolder.failure(), u"cannotCreateFile"_s);
        QCOMPARE(download(request).data.size(), 300'000);
    }

    void silenceEndsATransferAndSlownessDoesNot()
    {
        m_server.on("/slow", [](const auto &, HttpTestServer::Connection &connection) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n");
            for (int i = 0; i < 8 && connection.isOpen(); ++i) {
                connection.send("x");
                connection.pause(100ms);
            }
        });
        URLSessionConfiguration configuration;
        configuration.timeoutIntervalForRequest = 500ms;
        const URLRequest slow = requestFor(m_server.url(u"/slow"_s));
        QCOMPARE(download(slow, configuration).data, "xxxxxxxx");
        const URLRequest stuck = requestFor(m_server.url(u"/stuck"_s));
        QCOMPARE(download(stuck, configuration).failure(), u"timedOut"_s);
        configuration.timeoutIntervalForResource = 300ms;
        QCOMPARE(download(slow, configuration).failure(), u"timedOut"_s);
    }

    void waitsForConnectivity()
    {
        static std::atomic<bool> connected;
        connected = false;
        setConnectivityCheck([] { return connected.load(); });
        m_server.on("/c", HttpTestServer::answer("x"));
        QCOMPARE(download(requestFor(m_server.url(u"/c"_s))).status(), 200);

        // This address reaches the server too, but is no loopback address by its text.
        const QString address = m_server.url(u"/c"_s, u"0.0.0.0"_s);
        QCOMPARE(download(requestFor(address)).failure(), u"notConnectedToInternet"_s);
        URLSessionConfiguration configuration;
        configuration.waitsForConnectivity = true;
        configuration.timeoutIntervalForRequest = 100ms;
        configuration.timeoutIntervalForResource = 500ms;
        QCOMPARE(download(requestFor(address), configuration).failure(), u"timedOut"_s);

        configuration.timeoutIntervalForResource = 60s;
        configuration.timeoutIntervalForRequest = 1s; // of silence, which waiting is not
        DownloadProbe probe(requestFor(address), configuration);
        probe.task->resume();
        configuration.timeoutIntervalForRequest =
            1500ms; // that is when all deadlines are looked at
        QCOMPARE(download(requestFor(m_server.url(u"/stuck"_s)), configuration).failure(),
                 u"timedOut"_s);
        QCOMPARE(probe.wait(1ms).calls, 0);
        connected = true;
        QCOMPARE(probe.wait().status(), 200);
        setConnectivityCheck(nullptr);
    }

    void cancelCallsTheHandlerOnce()
    {
        const qsizetype before = m_server.requests().size();
        for (const bool started : {false, true}) {
            DownloadProbe probe(requestFor(m_server.url(u"/stuck"_s)));
            if (started)
                probe.task->resume();
            QTRY_COMPARE(m_server.requests().size(), before + (started ? 1 : 0));
            probe.task->cancel();
            probe.task->cancel();
            QCOMPARE(probe.wait().failure(), u"cancelled"_s);
            probe.task->resume();
            QTest::qWait(100);
            QCOMPARE(probe.wait().calls, 1);
        }
        QCOMPARE(m_server.requests().size(), before + 1);
    }

    void manyAtOnceUseOneThreadAndOneQueue()
    {
        constexpr int count = 64;
        std::atomic<int> waiting = 0;
        m_server.on("/many", [&](const auto &request, HttpTestServer::Connection &connection) {
            ++waiting;
            while (waiting < count && connection.isOpen())
                connection.pause(5ms);
            connection.send(HttpTestServer::answer(request.target));
        });
        URLSession session{URLSessionConfiguration()};
        std::atomic<int> inside = 0;
        std::atomic<int> right = 0;
        std::atomic<int> done = 0;
        for (int i = 0; i < count; ++i) {
            const QString query = u"/many?%1"_s.arg(i);
            const auto handler = [&, query](const auto &location, const auto &, const auto &) {
                QFile file(location ? location->path() : QString());
                const bool isAlone = ++inside == 1;
                if (isAlone && file.open(QIODevice::ReadOnly) && file.readAll() == query.toUtf8())
                    ++right;
                --inside;
                ++done;
            };
            session.downloadTask(requestFor(m_server.url(query)), handler)->resume();
        }
        QTRY_COMPARE_WITH_TIMEOUT(done.load(), count, 30'000);
        QCOMPARE(right.load(), count);
    }

private:
    QTemporaryDir m_folder;
    HttpTestServer m_server;
};

QTEST_GUILESS_MAIN(TestURLSession)
#include "tst_url_session.moc"
