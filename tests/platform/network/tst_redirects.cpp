#include "download_probe.h"
#include "platform/network/address_space.h"
#include "platform/network/connectivity.h"
#include "platform/network/http_cookie_storage.h"
#include "platform/network/request_chain.h"
#include "support/http_test_server.h"
#include "support/own_network.h"

#include <atomic>

using namespace zelkam;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(zelkam::AddressSpace)

namespace {

using Code = URLError::Code;

// Two names of one server are two origins.
const QString firstHost = u"127.0.0.1"_s;
const QString otherHost = u"localhost"_s;

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

    void initTestCase()
    {
        m_ownNetwork = enterOwnNetwork({"203.0.113.1", "203.0.113.2", "10.0.0.1", "192.168.0.1"});
        setConnectivityCheck([] { return true; });
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
        const QString target = u"../end?q=\u00e9 x#part"_s;
        m_server->on("/a/b", HttpTestServer::redirect(status, target));
        URLRequest request = requestFor(m_server->url(u"/a/b"_s));
        request.httpMethod = method;
        request.httpBody = "body";
        request.setValue(u"text/plain"_s, u"Content-Type"_s);
        request.setValue(u"1"_s, u"X-Own"_s);
        const Outcome outcome = download(request);
        QCOMPARE(outcome.data, "done");
        QVERIFY(outcome.response->url().absoluteString().endsWith(u"/end?q=%C3%A9%20x#part"_s));
        const auto sent = m_server->requests().last();
        const bool keepsBody = methodAfter != "GET";
        QCOMPARE(sent.method, methodAfter);
        QCOMPARE(sent.target, "/end?q=%C3%A9%20x");
        QCOMPARE(sent.body, keepsBody ? QByteArray("body") : QByteArray());
        QCOMPARE(sent.header("Content-Type").isNull(), !keepsBody);
        QCOMPARE(sent.header("X-Own"), "1");
    }

    void nothingOfTheRequestReachesAnotherOriginOrComesBack()
    {
        auto &store = HTTPCookieStorage::shared();
        store.setCookie(HTTPCookie(u"mine"_s, u"1"_s, firstHost, {}));
        store.setCookie(HTTPCookie(u"theirs"_s, u"2"_s, otherHost, {}));
        const auto go = [this](const QByteArray &from, const QString &to, const QByteArray &set) {
            m_server->on(from, HttpTestServer::redirect("307 T", to, set));
        };
        go("/here", m_server->url(u"/there"_s, otherHost), "Set-Cookie: hop=3\r\n");
        go("/there", u"/beyond"_s,
           "Set-Cookie: hop=4; Path=/\r\nSet-Cookie: evil=5; Domain=example.com\r\n");
        go("/beyond", m_server->url(u"/end"_s), {});
        QString address = m_server->url(u"/here"_s);
        address.replace(u"//"_s, u"//me:secret@"_s);
        URLRequest request = requestFor(address);
        request.httpMethod = u"POST"_s;
        request.httpBody = "body";
        request.setValue(u"text/plain"_s, u"Content-Type"_s);
        request.setValue(u"image/png"_s, u"Accept"_s);
        request.setValue(u"1"_s, u"X-Own"_s);
        request.setValue(u"mine=1; other=2"_s, u"Cookie"_s);
        QCOMPARE(download(request).data, "done");

        const auto sent = m_server->requests();
        QCOMPARE(sent.size(), 4);
        QCOMPARE(sent[0].header("Cookie"), "mine=1; other=2");
        QCOMPARE(sent[0].header("Authorization"), "Basic " + QByteArray("me:secret").toBase64());
        QCOMPARE(sent[0].header("X-Own"), "1");
        for (int i = 1; i < 4; ++i) {
            QVERIFY(sent[i].header("Authorization").isNull());
            QVERIFY(sent[i].header("X-Own").isNull());
            QCOMPARE(sent[i].header("Accept"), "*/*");
            QCOMPARE(sent[i].header("Content-Type"), "text/plain");
            QCOMPARE(sent[i].body, "body");
        }
        QCOMPARE(sent[1].header("Cookie"), "theirs=2");
        QCOMPARE(sent[2].header("Cookie"), "theirs=2; hop=4");
        QCOMPARE(sent[3].header("Cookie"), "mine=1; hop=3");
        QCOMPARE(store.cookies()->size(), 2); // those of redirects are not stored
    }

    void aRedirectInTheClearSetsNoCookieOverASecureOne()
    {
        HTTPCookie secure(u"sid"_s, u"own"_s, u"h.example"_s, {});
        secure.isSecure = true;
        HTTPCookieStorage::shared().setCookie(secure);
        RequestChain chain(requestFor(u"http://h.example/"_s));
        QVERIFY(!chain.follow(302, "https://h.example/",
                              {{u"Set-Cookie"_s, u"sid=evil; Path=/\nlang=de; Path=/"_s}}));
        QVERIFY(chain.headerLines().contains("Cookie: sid=own; lang=de"));
    }

    void cookiesOfARedirectJoinThoseOfTheRequest()
    {
        m_server->on("/here", HttpTestServer::redirect("302 F", u"/end"_s,
                                                       "Set-Cookie: sid=new; Path=/\r\n"
                                                       "Set-Cookie: gone=; Max-Age=0; Path=/\r\n"
                                                       "Set-Cookie: far=1; Path=/far\r\n"));
        URLRequest request = requestFor(m_server->url(u"/here"_s));
        request.setValue(u"sid=old; keep=1; gone=2"_s, u"Cookie"_s);
        QCOMPARE(download(request).data, "done");
        QCOMPARE(m_server->requests().last().header("Cookie"), "keep=1; sid=new");
    }

    void followsTwentyAndNoMore()
    {
        for (const int redirects : {20, 21}) {
            std::atomic<int> left = redirects;
            m_server->on("/", [&left](const auto &, HttpTestServer::Connection &connection) {
                connection.send(left-- > 0 ? HttpTestServer::redirect("302 F", u"/"_s)
                                           : HttpTestServer::answer("done"));
            });
            const Outcome outcome = download(requestFor(m_server->url(u"/"_s)));
            QCOMPARE(outcome.data, redirects == 20 ? QByteArray("done") : QByteArray());
            QCOMPARE(outcome.error.has_value(), redirects == 21);
        }
    }

    void doesNotWaitForTheBodyOfARedirect()
    {
        m_server->on("/here", [](const auto &, HttpTestServer::Connection &connection) {
            connection.send("HTTP/1.1 302 F\r\nLocation: /end\r\nContent-Length: 1000000\r\n\r\n");
            connection.pause(std::chrono::seconds(60));
        });
        URLSessionConfiguration configuration;
        configuration.timeoutIntervalForResource = std::chrono::seconds(20);
        const auto request = requestFor(m_server->url(u"/here"_s));
        QCOMPARE(download(request, configuration).data, "done");
    }

    void authorizationStaysWithItsOrigin_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("otherPort");
        QTest::newRow("the same origin") << firstHost << false;
        QTest::newRow("another name") << otherHost << false;
        QTest::newRow("another port") << firstHost << true;
    }

    void authorizationStaysWithItsOrigin()
    {
        QFETCH(const QString, host);
        QFETCH(const bool, otherPort);
        HttpTestServer other;
        HttpTestServer &target = otherPort ? other : *m_server;
        target.on("/end", HttpTestServer::answer("done"));
        m_server->on("/here", HttpTestServer::redirect("302 F", target.url(u"/end"_s, host)));
        URLRequest request = requestFor(m_server->url(u"/here"_s));
        request.setValue(u"Bearer token"_s, u"Authorization"_s);
        request.setValue(u"mine=1"_s, u"Cookie"_s);
        QCOMPARE(download(request).data, "done");
        const bool isSame = host == firstHost && !otherPort;
        const auto sent = target.requests().last();
        QCOMPARE(sent.header("Authorization"), isSame ? "Bearer token" : QByteArray());
        QCOMPARE(sent.header("Cookie"), isSame ? "mine=1" : QByteArray());
    }

    void leadsIntoNoMorePrivateNetwork_data()
    {
        QTest::addColumn<QStringList>("hosts"); // one after another
        QTest::addColumn<bool>("arrives");
        const auto row = [](const QStringList &hosts, bool arrives) {
            QTest::newRow(qPrintable(hosts.join(u" to "_s))) << hosts << arrives;
        };
        const QString open = u"203.0.113.1"_s;
        const QString office = u"10.0.0.1"_s;
        row({open, u"203.0.113.2"_s}, true);
        row({office, u"192.168.0.1"_s, open}, true);
        row({firstHost, office, open}, true);
        row({firstHost, otherHost}, true);
        row({open, office}, false);
        row({office, otherHost}, false);
        row({firstHost, open, firstHost}, false);
        for (const QString &self : {firstHost, otherHost, u"[::ffff:127.0.0.1]"_s, u"0.0.0.0"_s,
                                    u"2130706433"_s, u"0177.1"_s, u"127.8.8.8"_s})
            row({open, self}, false);
    }

    void leadsIntoNoMorePrivateNetwork()
    {
        if (!m_ownNetwork)
            QSKIP("This process may not make a network namespace.");
        QFETCH(const QStringList, hosts);
        QFETCH(const bool, arrives);
        HttpTestServer server(true);
        const qsizetype last = hosts.size() - 1;
        for (qsizetype i = 0; i < last; ++i) {
            const QString next = server.url(u"/%1"_s.arg(i + 1), hosts[i + 1]);
            server.on('/' + QByteArray::number(i), HttpTestServer::redirect("302 F", next));
        }
        server.on('/' + QByteArray::number(last), HttpTestServer::answer("done"));
        const auto request = requestFor(server.url(u"/0"_s, hosts.first()));
        URLSessionConfiguration configuration;
        const Outcome outcome = download(request, configuration);
        QCOMPARE(outcome.code(), arrives ? Code::unknown : Code::redirectNotAllowed);
        QCOMPARE(server.requests().size(), arrives ? last + 1 : last);
        configuration.ownServer = URL::fromString(server.url({}, hosts.last()));
        QCOMPARE(download(request, configuration).data, "done");
        configuration.ownServer = URL::fromString(u"http://"_s + hosts.last()); // another port
        QCOMPARE(download(request, configuration).code(), outcome.code());
        configuration.allowsUnsafeRedirects = true;
        QCOMPARE(download(request, configuration).data, "done");
    }

    void noDetourLeadsInside()
    {
        const URL own = *URL::fromString(u"http://own.example"_s);
        RequestChain chain(requestFor(u"http://h.example/"_s), {false, own});
        QVERIFY(!chain.reached(AddressSpace::publicNetwork));
        QVERIFY(!chain.follow(302, "http://own.example/", {}));
        QVERIFY(!chain.reached(AddressSpace::thisMachine));
        QVERIFY(!chain.follow(302, "http://router.example/", {}));
        QVERIFY(chain.reached(AddressSpace::privateNetwork));
    }

    void behindAProxyNumbersAreKnown()
    {
        const QByteArray direct = qgetenv("no_proxy");
        qunsetenv("no_proxy");
        qputenv("http_proxy", m_server->url({}).toLatin1());
        const QString name = u"http://example.org/"_s;
        m_server->on(name.toLatin1(), HttpTestServer::answer("done"));
        for (const QString &target : {u"http://10.0.0.1/"_s, u"http://[fd00::1]/"_s, name}) {
            m_server->on("http://example.com/", HttpTestServer::redirect("302 F", target));
            const Outcome outcome = download(requestFor(u"http://example.com/"_s));
            QCOMPARE(outcome.data, target == name ? QByteArray("done") : QByteArray());
            QCOMPARE(outcome.code(), target == name ? Code::unknown : Code::redirectNotAllowed);
        }
        qunsetenv("http_proxy");
        qputenv("no_proxy", direct);
    }

    void tellsNetworksApart_data()
    {
        QTest::addColumn<AddressSpace>("space");
        const auto rows = [](AddressSpace space, std::initializer_list<const char *> addresses) {
            for (const char *address : addresses)
                QTest::newRow(address) << space;
        };
        rows(AddressSpace::publicNetwork,
             {"8.8.8.8", "172.15.255.255", "172.32.0.0", "100.63.255.255", "100.128.0.0",
              "2001:db8::1", "64:ff9b::808:808", "::ffff:8.8.8.8", "2002:808:808::", "11.0.0.1"});
        rows(AddressSpace::privateNetwork,
             {"10.255.255.255", "172.16.0.0", "172.31.255.255", "192.168.1.1", "169.254.169.254",
              "100.64.0.0", "198.19.0.1", "fe80::1", "fd00::1", "fec0::1", "::ffff:10.0.0.1",
              "64:ff9b::a00:1", "2002:a00:1::", "::10.0.0.1", "64:ff9b:1::808:808",
              "::ffff:0:10.0.0.1"});
        rows(AddressSpace::thisMachine, {"127.0.0.1", "127.255.255.255", "0.0.0.0", "::1", "::",
                                         "::ffff:127.0.0.1", "64:ff9b::7f00:1", "2002:7f00:1::1"});
    }

    void tellsNetworksApart()
    {
        QTEST(addressSpaceOf(QString::fromLatin1(QTest::currentDataTag())), "space");
    }

private:
    bool m_ownNetwork = false;
    std::unique_ptr<HttpTestServer> m_server;
};

QTEST_GUILESS_MAIN(TestRedirects)
#include "tst_redirects.moc"
