#include "download_probe.h"
#include "platform/network/address_space.h"
#include "platform/network/connectivity.h"
#include "platform/network/http_cookie_storage.h"
#include "platform/network/request_chain.h"
#include "support/data_table.h"
#include "support/http_test_server.h"
#include "support/own_network.h"

#include <atomic>

using namespace zelkam;
using namespace Qt::StringLiterals;
using zelkam::test::Row;

namespace {

// Two names of one server are two origins.
const QString firstHost = u"127.0.0.1"_s;
const QString otherHost = u"localhost"_s;

QMap<QString, QString> fieldsOf(const QJsonValue &answer)
{
    return {{u"Set-Cookie"_s, answer[u"sets"].toString()}};
}

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

    void methodAfterRedirect_data() { test::addRows({"redirects.json"}); }

    void methodAfterRedirect()
    {
        const Row row;
        const QString target = u"../end?q=\u00e9 x#part"_s;
        m_server->on("/a/b", HttpTestServer::redirect(row.bytes("status"), target));
        URLRequest request = requestFor(m_server->url(u"/a/b"_s));
        request.httpMethod = row.text("method");
        request.httpBody = "body";
        request.setValue(u"text/plain"_s, u"Content-Type"_s);
        request.setValue(u"1"_s, u"X-Own"_s);
        const Outcome outcome = download(request);
        QCOMPARE(outcome.data, "done");
        QVERIFY(outcome.response->url().absoluteString().endsWith(u"/end?q=%C3%A9%20x#part"_s));
        const auto sent = m_server->requests().last();
        const bool keepsBody = sent.method != "GET";
        QCOMPARE(sent.method, row.bytes("after"));
        QCOMPARE(sent.target, "/end?q=%C3%A9%20x");
        QCOMPARE(sent.body, keepsBody ? QByteArray("body") : QByteArray());
        QCOMPARE(sent.header("Content-Type").isNull(), !keepsBody);
        QCOMPARE(sent.header("X-Own"), "1");
    }

    void takesAlongWhatBelongsThere_data() { test::addRows({"redirects.json"}); }

    void takesAlongWhatBelongsThere()
    {
        const Row row;
        for (const QJsonValue stored : row["stored"].toArray()) {
            const URL url = *URL::fromString(stored[u"url"].toString());
            for (const HTTPCookie &cookie : HTTPCookie::cookies(fieldsOf(stored), url))
                HTTPCookieStorage::shared().setCookie(cookie);
        }
        URLRequest request = requestFor(row["url"].toString(u"https://h.example/"_s));
        request.httpMethod = row["method"].toString(u"GET"_s);
        const QVariantMap fields = row["fields"].toVariant().toMap();
        for (auto field = fields.begin(); field != fields.end(); ++field)
            request.setValue(field.value().toString(), field.key());
        RequestChain chain(request, {row.is("unsafe"), URL::fromString(row.text("own"))});
        std::optional<URLError> error;
        for (const QJsonValue step : row["steps"].toArray())
            error = chain.follow(307, step[u"to"].toString().toLatin1(), fieldsOf(step));
        QCOMPARE(nameOf(error), row.text("failure"));
        if (!error)
            QCOMPARE(chain.headerLines().join('\n'), row.texts("sent").join(u'\n').toLatin1());
    }

    void aPasswordStaysWithItsOriginAndCookiesOfRedirectsWithTheTransfer()
    {
        const QByteArray cookie = "Set-Cookie: hop=3; Path=/\r\n";
        m_server->on("/here", HttpTestServer::redirect("307 T", u"/there"_s, cookie));
        m_server->on("/there",
                     HttpTestServer::redirect("307 T", m_server->url(u"/end"_s, otherHost)));
        URLRequest request =
            requestFor(m_server->url(u"/here"_s).replace(u"//"_s, u"//me:secret@"_s));
        request.httpMethod = u"POST"_s;
        request.httpBody = "body";
        request.setValue(u"image/png"_s, u"Accept"_s);
        QCOMPARE(download(request).data, "done");

        const auto sent = m_server->requests();
        const QByteArray password = "Basic " + QByteArray("me:secret").toBase64();
        QCOMPARE(sent.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(sent[i].body, "body");
            QCOMPARE(sent[i].header("Authorization"), i < 2 ? password : QByteArray());
            QCOMPARE(sent[i].header("Accept"), i < 2 ? "image/png" : "*/*");
            QCOMPARE(sent[i].header("Cookie"), i == 1 ? "hop=3" : "");
        }
        QVERIFY(HTTPCookieStorage::shared().cookies()->isEmpty());
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
            QCOMPARE(outcome.data, redirects == 20 ? "done" : "");
            QCOMPARE(outcome.failure(), redirects == 20 ? u""_s : u"httpTooManyRedirects"_s);
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

    void leadsIntoNoMorePrivateNetwork_data() { test::addRows({"redirects.json"}); }

    void leadsIntoNoMorePrivateNetwork()
    {
        if (!m_ownNetwork)
            QSKIP("This process may not make a network namespace.");
        QVERIFY(!hasUsableNetworkInterface()); // there is loopback only
        const Row row;
        const QStringList hosts = row.texts("hosts"); // one after another
        const bool arrives = row.is("arrives");
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
        QCOMPARE(outcome.failure(), arrives ? u""_s : u"redirectNotAllowed"_s);
        QCOMPARE(server.requests().size(), arrives ? last + 1 : last);
        configuration.ownServer = URL::fromString(server.url({}, hosts.last()));
        QCOMPARE(download(request, configuration).data, "done");
        configuration.ownServer = URL::fromString(u"http://"_s + hosts.last()); // another port
        QCOMPARE(download(request, configuration).failure(), outcome.failure());
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
            QCOMPARE(outcome.data, target == name ? "done" : "");
            QCOMPARE(outcome.failure(), target == name ? u""_s : u"redirectNotAllowed"_s);
        }
        qunsetenv("http_proxy");
        qputenv("no_proxy", direct);
    }

    void tellsNetworksApart_data() { test::addRows({"redirects.json"}); }

    void tellsNetworksApart()
    {
        const Row row;
        for (const QString &address : row.texts("addresses"))
            QVERIFY2(int(addressSpaceOf(address)) == row.number("space"), qPrintable(address));
    }

private:
    bool m_ownNetwork = false;
    std::unique_ptr<HttpTestServer> m_server;
};

QTEST_GUILESS_MAIN(TestRedirects)
#include "tst_redirects.moc"
