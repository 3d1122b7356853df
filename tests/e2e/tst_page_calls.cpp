#include "host_process.h"
#include "support/data_table.h"
#include "support/http_test_server.h"

#include <QDir>

using namespace zelkam::test;
using namespace Qt::StringLiterals;

/// A page in a real web view calls the application and downloads; one host for most cases.
class TestPageCalls : public QObject
{
    Q_OBJECT

private:
    HttpTestServer server;
    HostProcess host;

    /// A header of the last request for an address.
    QByteArray sent(const QByteArray &target, const char *header)
    {
        QByteArray value;
        const auto requests = server.requests();
        for (const auto &request : requests) {
            if (request.target == target)
                value = request.header(header);
        }
        return value;
    }
    static QString statusOf(const QJsonValue &result)
    {
        return result[u"rejected"][u"status"].toString();
    }

private slots:
    void initTestCase()
    {
        const QByteArray page = dataFile(u"e2e/page.html"_s);
        server.on("/page", HttpTestServer::html(page, "Set-Cookie: web=1; HttpOnly\r\n"));
        server.on("/a.txt", HttpTestServer::answer("hello"));
        server.on("/a.svg", HttpTestServer::answer("<svg xmlns='http://www.w3.org/2000/svg' "
                                                   "width='1' height='1'/>"));
        QVERIFY(
            host.start(server.url(u"/page"_s), {u"--screenshots"_s, host.screenshotsDirectory()}));
    }

    void refusesGarbage_data() { addRows({"e2e/page_calls.json"}); }
    void refusesGarbage()
    {
        const Row row;
        QCOMPARE(statusOf(host.run(u"return await ZelkamMobile."_s + row.text("call"))),
                 row.text("status"));
        QCOMPARE(host.run(u"return download()"_s), u"done"_s);
    }

    void repliesToWhatScriptCanHold_data() { addRows({"e2e/page_calls.json"}); }
    void repliesToWhatScriptCanHold()
    {
        const Row row;
        const QJsonArray expected = row["replies"].toArray();
        QCOMPARE(
            host.run(u"return replies(%1, %2)"_s.arg(row.text("arguments")).arg(expected.size())),
            expected);
        QCOMPARE(host.run(u"return download()"_s), u"done"_s);
    }

    void sendsWhatThePageSays()
    {
        host.run(u"return replies({url: 'a.txt?json', requestType: 'POST',"
                 " httpHeaders: {'X-Own': 'yes'}, data: {a: [1, 2.5, null, true], b: 10n,"
                 " c: 'ü'}})"_s);
        QCOMPARE(server.requests().last().body, "{\"a\":[1,2.5,null,true],\"b\":10,\"c\":\"ü\"}");
        QCOMPARE(sent("/a.txt?json", "X-Own"), "yes");
    }

    void carriesCookiesBothWays()
    {
        host.run(u"document.cookie = 'script=2'; return download('a.txt?cookies')"_s);
        const QByteArray first = sent("/a.txt?cookies", "Cookie");
        QVERIFY2(first.contains("web=1") && first.contains("script=2"), first.constData());

        server.on("/set",
                  HttpTestServer::answer("x", "Set-Cookie: got=3; Path=/\r\n"
                                              "Set-Cookie: hidden=4; Path=/; HttpOnly\r\n"
                                              "Set-Cookie: JSESSIONID=foreign; Path=/\r\n"
                                              "Set-Cookie: named=5; Path=/; Domain=127.0.0.1\r\n"));
        HttpTestServer other;
        other.on("/x", HttpTestServer::answer("x", "Set-Cookie: planted=1; Domain=127.0.0.1\r\n"
                                                   "Set-Cookie: its=1\r\n"));
        QCOMPARE(host.run(u"return download('%1')"_s.arg(other.url(u"/x"_s, u"localhost"_s))),
                 u"done"_s);
        QCOMPARE(host.run(u"return download('set')"_s), u"done"_s);
        QTRY_VERIFY(host.run(u"return document.cookie"_s).toString().contains(u"got=3"_s));
        const QString seen = host.run(u"return document.cookie"_s).toString();
        QVERIFY2(seen.contains(u"named=5"_s), qPrintable(seen));
        for (const QString &unseen : {u"hidden"_s, u"JSESSIONID"_s, u"planted"_s, u"its"_s})
            QVERIFY2(!seen.contains(unseen), qPrintable(seen));
        host.run(u"await fetch('/a.txt?web'); return download('a.txt?store')"_s);
        QVERIFY(sent("/a.txt?web", "Cookie").contains("hidden=4"));
        QVERIFY(sent("/a.txt?store", "Cookie").contains("planted=1"));
    }

    void aSecondCallTakesOverTheFirst()
    {
        server.on("/slow", [](const auto &, auto &connection) {
            connection.pause(std::chrono::milliseconds(400));
            connection.send(HttpTestServer::answer("slow"));
        });
        const auto result = host.run(u"const first = download('slow').catch(e => e.status);"
                                     "const second = replies({url: 'a.txt'}, 2);"
                                     "return [await first, await second]"_s);
        QCOMPARE(result, (QJsonArray{u"NO_REPLY"_s, QJsonArray{u"success"_s, u"success"_s}}));
    }

    void picturesAreTakenOfAScreenThatComes()
    {
        QCOMPARE(host.run(u"return replies({url: 'a.txt', open: true, notify: true})"_s),
                 QJsonArray{u"success"_s});
        QTRY_VERIFY(!QDir(host.screenshotsDirectory()).entryList({u"*screen*.png"_s}).isEmpty());
    }

    void onlyAPageOfAnAllowedOriginIsHeard()
    {
        const QByteArray page = HttpTestServer::html(dataFile(u"e2e/page.html"_s));
        HttpTestServer elsewhere;
        elsewhere.on("/page", page);
        HttpTestServer third;
        third.on("/page", page);
        HostProcess own;
        QVERIFY(
            own.start(elsewhere.url(u"/page"_s), {u"--real-server-url"_s, server.url(QString())}));
        // The page that the host was started with is its own; a page it leads to is not.
        QCOMPARE(own.run(u"return await download('a.txt') + await download('a.svg')"_s),
                 u"donedone"_s);
        QCOMPARE(own.run(u"return reached()"_s), (QJsonArray{true, true, true}));
        const auto before = server.requests().size();
        own.run(u"location.href = '%1'"_s.arg(third.url(u"/page"_s)));
        QTRY_COMPARE_WITH_TIMEOUT(
            own.run(u"return location.port + document.readyState"_s).toString(),
            QString::number(third.port()) + u"complete"_s, 10000);
        QCOMPARE(statusOf(own.run(u"return download('%1')"_s.arg(server.url(u"/a.txt"_s)))),
                 u"ORIGIN_NOT_ALLOWED"_s);
        QCOMPARE(own.run(u"return reached()"_s), (QJsonArray{false, false, false}));
        QCOMPARE(server.requests().size(), before);
    }

    void aReloadAmidManyCallsLeavesNothingBehind()
    {
        HostProcess own;
        QVERIFY(own.start(server.url(u"/page"_s)));
        // What the host sends to the document that goes reaches the one that comes.
        for (int round = 0; round < 3; ++round) {
            own.run(u"window.goes = true; for (let i = 0; i < 50; ++i) download().catch(() => {});"
                    " location.reload()"_s);
            QTRY_COMPARE_WITH_TIMEOUT(own.run(u"return !window.goes && document.readyState"_s),
                                      u"complete"_s, 10000);
            QCOMPARE(own.run(u"return download()"_s), u"done"_s);
        }
        own.run(u"console.log('one\\nthe end')"_s);
        QVERIFY(own.waitForOutput(u"page: the end"_s));
        QCOMPARE(own.output().filter(u"page: "_s),
                 QStringList({u"page: one"_s, u"page: the end"_s}));
        own.run(u"setTimeout(() => window.close(), 50)"_s);
        QCOMPARE(own.waitForEnd(), 0);
    }
};

QTEST_GUILESS_MAIN(TestPageCalls)
#include "tst_page_calls.moc"
