#include "download_probe.h"
#include "platform/network/http_cookie_storage.h"
#include "support/http_test_server.h"

using namespace zelkam;

namespace {

// Two names of one server are two origins.
const QString firstHost = QStringLiteral("127.0.0.1");
const QString otherHost = QStringLiteral("localhost");

} // namespace

class TestRedirects : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_server = std::make_unique<HttpTestServer>();
        m_server->on("/end", HttpTestServer::answer("done"));
    }

    void cleanup()
    {
        const QList<HTTPCookie> stored = *HTTPCookieStorage::shared().cookies();
        for (const HTTPCookie &cookie : stored)
            HTTPCookieStorage::shared().deleteCookie(cookie);
    }

    void methodAfterRedirect_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QByteArray>("methodAfter");
        QTest::newRow("301 makes POST a GET") << QByteArray("301 M") << "POST" << QByteArray("GET");
        QTest::newRow("302 makes POST a GET") << QByteArray("302 F") << "POST" << QByteArray("GET");
        QTest::newRow("303 makes POST a GET") << QByteArray("303 S") << "POST" << QByteArray("GET");
        QTest::newRow("303 makes PUT a GET") << QByteArray("303 S") << "PUT" << QByteArray("GET");
        QTest::newRow("302 keeps PUT") << QByteArray("302 F") << "PUT" << QByteArray("PUT");
        QTest::newRow("307 keeps POST") << QByteArray("307 T") << "POST" << QByteArray("POST");
        QTest::newRow("308 keeps POST") << QByteArray("308 P") << "POST" << QByteArray("POST");
    }

    void methodAfterRedirect()
    {
        QFETCH(const QByteArray, status);
        QFETCH(const QString, method);
        QFETCH(const QByteArray, methodAfter);
        const QString target = QStringLiteral("../end?q=\u00e9 x#part");
        m_server->on("/a/b", HttpTestServer::redirect(status, target));
        URLRequest request = requestFor(m_server->url(QStringLiteral("/a/b")));
        request.httpMethod = method;
        request.httpBody = "body";
        request.setValue(QStringLiteral("text/plain"), QStringLiteral("Content-Type"));
        request.setValue(QStringLiteral("1"), QStringLiteral("X-Own"));
        const Outcome outcome = download(request);
        QCOMPARE(outcome.data, "done");
        QVERIFY(outcome.response->url().absoluteString().endsWith(
            QStringLiteral("/end?q=%C3%A9%20x#part")));
        const auto sent = m_server->requests().last();
        const bool keepsBody = methodAfter != "GET";
        QCOMPARE(sent.method, methodAfter);
        QCOMPARE(sent.target, "/end?q=%C3%A9%20x");
        QCOMPARE(sent.body, keepsBody ? QByteArray("body") : QByteArray());
        QCOMPARE(sent.header("Content-Type").isNull(), !keepsBody);
        QCOMPARE(sent.header("X-Own"), "1");
    }

    void nothingOfTheRequestReachesAnotherOrigin()
    {
        auto &store = HTTPCookieStorage::shared();
        store.setCookie(HTTPCookie(QStringLiteral("mine"), QStringLiteral("1"), firstHost, {}));
        store.setCookie(HTTPCookie(QStringLiteral("theirs"), QStringLiteral("2"), otherHost, {}));
        const QString there = m_server->url(QStringLiteral("/there"), otherHost);
        m_server->on("/here", HttpTestServer::redirect("307 T", there, "Set-Cookie: hop=3\r\n"));
        m_server->on("/there", HttpTestServer::redirect("307 T", QStringLiteral("/end"),
                                                        "Set-Cookie: hop=4; Path=/\r\n"
                                                        "Set-Cookie: evil=5; Domain=example.com\r\n"
                                                        "Set-Cookie: top=6; Domain=com\r\n"));
        QString address = m_server->url(QStringLiteral("/here"));
        address.replace(QStringLiteral("//"), QStringLiteral("//me:secret@"));
        URLRequest request = requestFor(address);
        request.httpMethod = QStringLiteral("POST");
        request.httpBody = "body";
        request.setValue(QStringLiteral("text/plain"), QStringLiteral("Content-Type"));
        request.setValue(QStringLiteral("image/png"), QStringLiteral("Accept"));
        request.setValue(QStringLiteral("1"), QStringLiteral("X-Own"));
        request.setValue(QStringLiteral("mine=1; other=2"), QStringLiteral("Cookie"));
        QCOMPARE(download(request).data, "done");

        const auto sent = m_server->requests();
        QCOMPARE(sent.size(), 3);
        QCOMPARE(sent[0].header("Cookie"), "mine=1; other=2");
        QCOMPARE(sent[0].header("Authorization"), "Basic " + QByteArray("me:secret").toBase64());
        QCOMPARE(sent[0].header("X-Own"), "1");
        for (int i = 1; i < 3; ++i) {
            QVERIFY(sent[i].header("Authorization").isNull());
            QVERIFY(sent[i].header("X-Own").isNull());
            QCOMPARE(sent[i].header("Accept"), "image/png");
            QCOMPARE(sent[i].header("Content-Type"), "text/plain");
            QCOMPARE(sent[i].body, "body");
        }
        QCOMPARE(sent[1].header("Cookie"), "theirs=2");
        QCOMPARE(sent[2].header("Cookie"), "theirs=2; hop=4");
        QCOMPARE(store.cookies()->size(), 2);
    }

    void headersDoNotComeBackWithTheOrigin()
    {
        m_server->on("/here", HttpTestServer::redirect(
                                  "302 F", m_server->url(QStringLiteral("/there"), otherHost)));
        m_server->on("/there",
                     HttpTestServer::redirect("302 F", m_server->url(QStringLiteral("/end"))));
        URLRequest request = requestFor(m_server->url(QStringLiteral("/here")));
        request.setValue(QStringLiteral("secret"), QStringLiteral("Authorization"));
        request.setValue(QStringLiteral("a=b"), QStringLiteral("Cookie"));
        QCOMPARE(download(request).data, "done");
        QVERIFY(m_server->requests().last().header("Authorization").isNull());
        QVERIFY(m_server->requests().last().header("Cookie").isNull());
    }

    void cookiesOfARedirectJoinThoseOfTheRequest()
    {
        m_server->on("/here", HttpTestServer::redirect("302 F", QStringLiteral("/end"),
                                                       "Set-Cookie: sid=new; Path=/\r\n"
                                                       "Set-Cookie: gone=; Max-Age=0; Path=/\r\n"
                                                       "Set-Cookie: far=1; Path=/far\r\n"));
        URLRequest request = requestFor(m_server->url(QStringLiteral("/here")));
        request.setValue(QStringLiteral("sid=old; keep=1; gone=2"), QStringLiteral("Cookie"));
        QCOMPARE(download(request).data, "done");
        QCOMPARE(m_server->requests().last().header("Cookie"), "keep=1; sid=new");
    }

    void sendsStoredCookiesThatMatch()
    {
        auto &store = HTTPCookieStorage::shared();
        HTTPCookie noDomain(QStringLiteral("a"), QStringLiteral("1"), {}, {});
        noDomain.originHost = firstHost;
        store.setCookie(noDomain);
        noDomain.originHost = otherHost;
        noDomain.value = QStringLiteral("2");
        store.setCookie(noDomain);
        store.setCookie(HTTPCookie(QStringLiteral("b"), QStringLiteral("3"), otherHost, {}));
        QVERIFY(!download(requestFor(m_server->url(QStringLiteral("/end")))).error);
        QCOMPARE(m_server->requests().last().header("Cookie"), "a=1");
    }

    void followsTwenty_data()
    {
        QTest::addColumn<int>("redirects");
        QTest::addColumn<bool>("arrives");
        QTest::newRow("twenty") << 20 << true;
        QTest::newRow("twenty-one") << 21 << false;
    }

    void followsTwenty()
    {
        QFETCH(const int, redirects);
        int left = redirects;
        m_server->on("/", [&left](const auto &, HttpTestServer::Connection &connection) {
            connection.send(left-- > 0 ? HttpTestServer::redirect("302 F", QStringLiteral("/"))
                                       : HttpTestServer::answer("done"));
        });
        const Outcome outcome = download(requestFor(m_server->url(QStringLiteral("/"))));
        QTEST(outcome.data == "done", "arrives");
        if (outcome.error)
            QCOMPARE(outcome.code(), URLError::Code::httpTooManyRedirects);
    }

    void doesNotWaitForTheBodyOfARedirect()
    {
        m_server->on("/here", [](const auto &, HttpTestServer::Connection &connection) {
            connection.send("HTTP/1.1 302 F\r\nLocation: /end\r\nContent-Length: 1000000\r\n\r\n");
            connection.pause(std::chrono::seconds(60));
        });
        URLSessionConfiguration configuration;
        configuration.timeoutIntervalForResource = std::chrono::seconds(20);
        const auto request = requestFor(m_server->url(QStringLiteral("/here")));
        QCOMPARE(download(request, configuration).data, "done");
    }

private:
    std::unique_ptr<HttpTestServer> m_server;
};

QTEST_GUILESS_MAIN(TestRedirects)
#include "tst_redirects.moc"
