#include "download_probe.h"
#include "platform/foundation/file_manager.h"
#include "platform/network/connectivity.h"
#include "support/http_test_server.h"

#include <QDir>
#include <QTemporaryDir>
#include <atomic>
#include <sched.h>
#include <sys/resource.h>
#include <thread>

using namespace zelkam;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(zelkam::URLError::Code)

namespace {

using Code = URLError::Code;

const QByteArray helloInGzip =
    QByteArray::fromHex("1f8b0800000000000003cb48cdc9c9070086a6103605000000");

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

    void cleanup() { QTRY_COMPARE(filesLeft(), 0); }

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
        QCOMPARE(outcome.fileMode, 0600U);
        QVERIFY(outcome.path.startsWith(NSTemporaryDirectory()));
        QTRY_VERIFY(!QFile::exists(outcome.path));
    }

    void anyStatusIsASuccess_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("200 after an interim answer")
            << "HTTP/1.1 103 Early Hints\r\nX-A: 1\r\n\r\n" + HttpTestServer::answer("x");
        QTest::newRow("204") << QByteArray("HTTP/1.1 204 No Content\r\n\r\n");
        QTest::newRow("200 with its length twice")
            << HttpTestServer::answer("x", "Content-Length: 1\r\n");
        QTest::newRow("200 with a folded header, which is one field")
            << HttpTestServer::answer("x", "X-B: 1\r\n X-A: 2\r\n\tX-A: 3\r\n");
        QTest::newRow("302 to nowhere") << HttpTestServer::answer("x", {}, "302 Found");
        QTest::newRow("304") << QByteArray("HTTP/1.1 304 Not Modified\r\n\r\n");
        QTest::newRow("404") << HttpTestServer::answer("x", {}, "404 Not Found");
    }

    void anyStatusIsASuccess()
    {
        QFETCH(const QByteArray, answer);
        m_server.on("/", answer);
        const Outcome outcome = download(requestFor(m_server.url(u"/"_s)));
        QVERIFY(!outcome.error);
        QCOMPARE(outcome.status(), QByteArray(QTest::currentDataTag()).left(3).toInt());
        QVERIFY(!outcome.path.isEmpty());
        QVERIFY(!outcome.response->value(u"x-a"_s));
    }

    void brokenAnswersAreErrorsAndNeverFiles_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<Code>("code");
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        QTest::newRow("cut short") << ok + "Content-Length: 100\r\n\r\nabc" << Code::bodyCutShort;
        QTest::newRow("different lengths")
            << HttpTestServer::answer("x", "Content-Length: 5\r\n") << Code::badServerResponse;
        QTest::newRow("a length beyond counting")
            << ok + "Content-Length: 99999999999999999999\r\n\r\nabc" << Code::badServerResponse;
        QTest::newRow("a framing that nobody knows")
            << ok + "Transfer-Encoding: rot13\r\n\r\nabc" << Code::badServerResponse;
        QTest::newRow("broken chunk") << ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\nzz\r\n"
                                      << Code::badServerResponse;
        QTest::newRow("missing last chunk") << ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n"
                                            << Code::bodyCutShort;
        QTest::newRow("damaged gzip")
            << HttpTestServer::answer("no gzip at all", "Content-Encoding: gzip\r\n")
            << Code::cannotDecodeContentData;
        QTest::newRow("gzip cut short")
            << HttpTestServer::answer(helloInGzip.chopped(12), "Content-Encoding: gzip\r\n")
            << Code::cannotDecodeContentData;
        QTest::newRow("a coding that was not offered")
            << HttpTestServer::answer("x", "Content-Encoding: br\r\n")
            << Code::cannotDecodeContentData;
        QTest::newRow("no status line") << QByteArray("hello") << Code::badServerResponse;
        QTest::newRow("NUL in a header")
            << ok + QByteArray("A: \0\r\n\r\n", 8) << Code::badServerResponse;
        QTest::newRow("no answer") << QByteArray() << Code::networkConnectionLost;
        QTest::newRow("flood of headers") << ok + QByteArray("X: y\r\n").repeated(2000) + "\r\n"
                                          << Code::headersTooLarge;
        QTest::newRow("flood of bytes in the head")
            << ok + ("X: " + QByteArray(1000, 'y') + "\r\n").repeated(270) + "\r\n"
            << Code::headersTooLarge;
        QTest::newRow("a header of more than 100 KB")
            << ok + "X: " + QByteArray(110'000, 'y') + "\r\n\r\n"
            << Code::headersTooLarge;
        QTest::newRow("a folded line that follows no header") << ok + " X: y\r\n\r\n"
                                                              << Code::badServerResponse;
        for (const char *length : {"+3", "-3", "3 3", "0x3", "3."})
            QTest::newRow(length) << ok + "Content-Length: " + length + "\r\n\r\nabc"
                                  << Code::badServerResponse;
        QTest::newRow("flood of interim answers")
            << QByteArray("HTTP/1.1 103 E\r\nA: b\r\n\r\n").repeated(2000) << Code::headersTooLarge;
        QTest::newRow("redirect to a file")
            << HttpTestServer::redirect("302 F", u"file:///etc/passwd"_s)
            << Code::redirectToUnsupportedURL;
        QTest::newRow("two ways on, of which the first counts")
            << HttpTestServer::redirect("302 F", u"gopher://h/"_s, "Location: /\r\n")
            << Code::redirectToUnsupportedURL;
        QTest::newRow("redirect in a circle")
            << HttpTestServer::redirect("302 F", u"/"_s) << Code::httpTooManyRedirects;
    }

    void brokenAnswersAreErrorsAndNeverFiles()
    {
        QFETCH(const QByteArray, answer);
        m_server.on("/", answer);
        const Outcome outcome = download(requestFor(m_server.url(u"/"_s)));
        QVERIFY(outcome.error);
        QTEST(outcome.code(), "code");
        QVERIFY(outcome.path.isEmpty());
        QVERIFY(!outcome.response);
    }

    void requestsThatCannotBeSent_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("headerName");
        QTest::addColumn<QString>("headerValue");
        QTest::addColumn<Code>("code");
        const QString ok = m_server.url(u"/"_s);
        const QString name = u"X-A"_s;
        const QString injected = u"a\r\nX-B: b"_s;
        QTest::newRow("file URL") << u"file:///etc/passwd"_s << name << name
                                  << Code::unsupportedURL;
        QTest::newRow("no host") << u"http:///a"_s << name << name << Code::badURL;
        QTest::newRow("line break in a value") << ok << name << injected << Code::badURL;
        QTest::newRow("line break in cookies") << ok << u"Cookie"_s << injected << Code::badURL;
        QTest::newRow("NUL in a value") << ok << name << QString(QChar(0)) << Code::badURL;
        QTest::newRow("line break in a name") << ok << injected << name << Code::badURL;
        QTest::newRow("empty name") << ok << QString() << name << Code::badURL;
        QTest::newRow("nobody listens")
            << u"http://127.0.0.1:1/"_s << name << name << Code::cannotConnectToHost;
        QTest::newRow("unknown host")
            << u"http://nowhere.invalid/"_s << name << name << Code::cannotFindHost;
    }

    void requestsThatCannotBeSent()
    {
        QFETCH(const QString, url);
        QFETCH(const QString, headerName);
        QFETCH(const QString, headerValue);
        const qsizetype before = m_server.requests().size();
        setConnectivityCheck([] { return true; });
        URLRequest request = requestFor(url);
        request.setValue(headerValue, headerName);
        const Outcome outcome = download(request);
        setConnectivityCheck(nullptr);
        QVERIFY(outcome.error);
        QTEST(outcome.code(), "code");
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

    void decodesTheBody_data()
    {
        QTest::addColumn<QByteArray>("coding");
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("gzip") << QByteArray("gzip") << helloInGzip << QByteArray("hello");
        QTest::newRow("gzip in two members")
            << QByteArray("x-gzip") << helloInGzip + helloInGzip << QByteArray("hellohello");
        QTest::newRow("gzip and padding")
            << QByteArray("GZip") << helloInGzip + QByteArray(9, '\0') << QByteArray("hello");
        QTest::newRow("no body at all") << QByteArray("gzip") << QByteArray() << QByteArray();
        QTest::newRow("no coding's name") << QByteArray("utf-8") << helloInGzip << helloInGzip;
    }

    void decodesTheBody()
    {
        QFETCH(const QByteArray, coding);
        QFETCH(const QByteArray, sent);
        m_server.on("/z", HttpTestServer::answer(sent, "Content-Encoding: " + coding + "\r\n"));
        const Outcome outcome = download(requestFor(m_server.url(u"/z"_s)));
        QVERIFY(!outcome.error);
        QTEST(outcome.data, "data");
        QCOMPARE(outcome.response->expectedContentLength(), URLResponse::unknownLength);
        QCOMPARE(m_server.requests().last().header("Accept-Encoding"), "gzip");
    }

    void bodiesHaveABound_data()
    {
        QTest::addColumn<QByteArray>("headers");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("arrives");
        const QByteArray gzip = "Content-Encoding: gzip\r\n";
        // Deflated as zlib does it, in the frame of gzip: 8 MiB that are 8 KiB on the way.
        const QByteArray bomb = QByteArray::fromHex("1f8b0800000000000003") +
                                qCompress(QByteArray(8 << 20, '\0')).mid(6);
        QTest::newRow("said to be too long")
            << QByteArray("Content-Length: 10001\r\n") << QByteArray("x") << false;
        QTest::newRow("too long") << QByteArray() << QByteArray(10'001, 'x') << false;
        QTest::newRow("just not too long") << QByteArray() << QByteArray(10'000, 'x') << true;
        QTest::newRow("bomb") << gzip << bomb << false;
        QTest::newRow("padding without end")
            << gzip << helloInGzip + QByteArray(10'000, '\0') << false;
        QTest::newRow("gzip of a usual size") << gzip << helloInGzip << true;
    }

    void bodiesHaveABound()
    {
        QFETCH(const QByteArray, headers);
        QFETCH(const QByteArray, body);
        QFETCH(const bool, arrives);
        m_server.on("/", "HTTP/1.1 200 OK\r\n" + headers + "\r\n" + body);
        auto before = URLSessionConfiguration::defaultConfiguration();
        auto configuration = before;
        configuration.maximumBodySize = 10'000;
        configuration.maximumDecodedSize = 5;
        URLSessionConfiguration::setDefaultConfiguration(configuration);
        const auto request = requestFor(m_server.url(u"/"_s));
        const Outcome outcome = download(request, URLSessionConfiguration::defaultConfiguration());
        URLSessionConfiguration::setDefaultConfiguration(before);
        QCOMPARE(outcome.code(), arrives ? Code::unknown : Code::dataLengthExceedsMaximum);
        QCOMPARE(outcome.path.isEmpty(), !arrives);
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
        QCOMPARE(tooLong.code(), Code::cannotWriteToFile);
        QVERIFY(tooLong.path.isEmpty());
        QVERIFY(QDir().rename(m_folder.path(), m_folder.path() + u"-gone"_s));
        const Outcome noFolder = download(request);
        QVERIFY(QDir().rename(m_folder.path() + u"-gone"_s, m_folder.path()));
        QCOMPARE(noFolder.code(), Code::cannotCreateFile);
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
        QCOMPARE(download(stuck, configuration).code(), Code::timedOut);
        configuration.timeoutIntervalForResource = 300ms;
        const Outcome outcome = download(slow, configuration);
        QCOMPARE(outcome.code(), Code::timedOut);
        QCOMPARE(outcome.error->localizedDescription(), u"The request timed out."_s);
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
        QCOMPARE(download(requestFor(address)).code(), Code::notConnectedToInternet);
        URLSessionConfiguration configuration;
        configuration.waitsForConnectivity = true;
        configuration.timeoutIntervalForRequest = 100ms;
        configuration.timeoutIntervalForResource = 500ms;
        QCOMPARE(download(requestFor(address), configuration).code(), Code::timedOut);

        configuration.timeoutIntervalForResource = 60s;
        configuration.timeoutIntervalForRequest = 60s;
        DownloadProbe probe(requestFor(address), configuration);
        probe.task->resume();
        QCOMPARE(probe.wait(300ms).calls, 0);
        connected = true;
        QCOMPARE(probe.wait().status(), 200);
        setConnectivityCheck(nullptr);
    }

    void aNamespaceWithLoopbackOnlyIsNotConnected()
    {
        bool isolated = false;
        bool usable = true;
        std::thread([&] {
            isolated = ::unshare(CLONE_NEWNET) == 0;
            usable = hasUsableNetworkInterface();
        }).join();
        if (!isolated)
            QSKIP("This process may not make a network namespace.");
        QVERIFY(!usable);
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
            QCOMPARE(probe.wait().code(), Code::cancelled);
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
    qsizetype filesLeft() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden).size();
    }

    QTemporaryDir m_folder;
    HttpTestServer m_server;
};

QTEST_GUILESS_MAIN(TestURLSession)
#include "tst_url_session.moc"
