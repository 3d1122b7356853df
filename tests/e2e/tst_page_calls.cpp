#include "host_process.h"
#include "support/http_test_server.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// Which of these a document can read: a file, a picture, and the session that calls are made with.
const QString whatItReaches = uR"(
const requested = address => new Promise(done => {
  const request = new XMLHttpRequest();
  request.onloadend = () => done(request.response !== '');
  request.open('GET', address);
  request.send();
});
const shown = address => new Promise(done => {
  const image = new Image();
  image.onload = () => done(true);
  image.onerror = () => done(false);
  image.src = address;
});
return Promise.all([requested('zelkam://container/Download/a.txt'),
  shown('zelkam://container/Download/a.svg'), requested('zelkam://bridge/session')]);
)"_s;

} // namespace

/// What the page interface itself promises, whatever the command.
class TestPageCalls : public QObject
{
    Q_OBJECT

private:
    HttpTestServer server;
    HttpTestServer elsewhere;

    static QString statusOf(const QJsonValue &result)
    {
        return result.toObject().value(u"rejected"_s).toObject().value(u"status"_s).toString();
    }

private slots:
    void initTestCase()
    {
        const auto html = [](const QByteArray &body) {
            return HttpTestServer::answer(body, "Content-Type: text/html\r\n");
        };
        server.on("/page", html("<!doctype html><title>Page</title>"));
        server.on("/a.txt", HttpTestServer::answer("hello"));
        server.on("/a.svg", HttpTestServer::answer("<svg xmlns='http://www.w3.org/2000/svg' "
                                                   "width='1' height='1'/>"));
        elsewhere.on("/page", html("<!doctype html><title>Elsewhere</title>"));
    }

    void refusesGarbage_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("status");
        const QString invalid = u"INVALID_PARAM"_s;
        const auto row = [](const char *name, const QString &call, const QString &status) {
            QTest::newRow(name) << call << status;
        };
        row("no arguments", u"exec('fileDownload')"_s, invalid);
        row("a number for arguments", u"exec('fileDownload', 5)"_s, invalid);
        row("a list for arguments", u"exec('fileDownload', [1])"_s, invalid);
        row("null for arguments", u"exec('fileDownload', null)"_s, invalid);
        row("arguments that hold themselves",
            u"exec('fileDownload', (() => { const a = {}; a.a = a; return a })())"_s, invalid);
        row("a property that throws",
            u"exec('fileDownload', {get url() { throw new Error('x') }})"_s, invalid);
        row("nesting a thousand times too deep",
            u"exec('fileDownload', (() => { let a = {}; for (let i = 0; i < 1e5; ++i) a = {a};"
            " return a })())"_s,
            invalid);
        row("nesting a little too deep",
            u"exec('fileDownload', (() => { let a = {}; for (let i = 0; i < 2000; ++i) a = {a};"
            " return a })())"_s,
            invalid);
        row("an address of ten megabytes that is none",
            u"exec('fileDownload', {url: '%'.repeat(1e7)})"_s, invalid);
        row("keys with odd characters",
            u"exec('fileDownload', {'\\u0000': 1, '__proto__ ': 2, '\\ud800': 3, '': 4})"_s,
            invalid);
        row("a command that is none", u"exec('deleteLater', {})"_s, u"COMMAND_NOT_FOUND"_s);
        row("a command of another type", u"exec({}, {})"_s, u"COMMAND_NOT_FOUND"_s);
        row("a property for a command", u"exec('currentCallBack', {})"_s, u"COMMAND_NOT_FOUND"_s);
    }
    void refusesGarbage()
    {
        static HostProcess *host = nullptr; // one for all rows
        if (!host) {
            host = new HostProcess;
            host->setParent(this);
            QVERIFY(host->start(server.url(u"/page"_s)));
        }
        QFETCH(QString, call);
        const auto result = host->run(u"return await ZelkamMobile."_s + call);
        QTEST(statusOf(result), "status");
        QCOMPARE(host->run(u"return await ZelkamMobile.exec('fileDownload',"
                           " {url: 'a.txt', open: false}) ?? 'done'"_s),
                 u"done"_s);
    }

    void onlyAPageOfAnAllowedOriginIsHeard()
    {
        HostProcess host;
        QVERIFY(
            host.start(elsewhere.url(u"/page"_s), {u"--real-server-url"_s, server.url(QString())}));
        // The page that the host was started with is its own; a page it leads to is not.
        for (const QString &name : {u"a.txt"_s, u"a.svg"_s})
            QCOMPARE(host.run(u"return await ZelkamMobile.exec('fileDownload',"
                              " {url: '%1', open: false}) ?? 'done'"_s.arg(name)),
                     u"done"_s);
        QCOMPARE(host.run(whatItReaches), (QJsonArray{true, true, true}));
        HttpTestServer third;
        third.on("/page", HttpTestServer::answer("<!doctype html>", "Content-Type: text/html\r\n"));
        const auto before = server.requests().size();
        host.run(u"location.href = '%1'"_s.arg(third.url(u"/page"_s)));
        QTRY_COMPARE_WITH_TIMEOUT(host.run(u"return location.port"_s).toString(),
                                  QString::number(third.port()), 10000);
        QCOMPARE(statusOf(host.run(u"return await ZelkamMobile.exec('fileDownload',"
                                   " {url: '%1', open: false})"_s.arg(server.url(u"/a.txt"_s)))),
                 u"ORIGIN_NOT_ALLOWED"_s);
        QCOMPARE(host.run(whatItReaches), (QJsonArray{false, false, false}));
        QCOMPARE(server.requests().size(), before);
    }

    void aReloadAmidManyCallsLeavesNothingBehind()
    {
        HostProcess host;
        QVERIFY(host.start(server.url(u"/page"_s)));
        // What the host sends to the document that goes reaches the one that comes.
        for (int round = 0; round < 3; ++round) {
            host.run(
                u"window.goes = true; for (let i = 0; i < 50; ++i)"
                " ZelkamMobile.exec('fileDownload', {url: 'a.txt', open: false}).catch(() => {});"
                " location.reload()"_s);
            QTRY_COMPARE_WITH_TIMEOUT(host.run(u"return !window.goes && document.readyState"_s),
                                      u"complete"_s, 10000);
            QCOMPARE(host.run(u"return await ZelkamMobile.exec('fileDownload',"
                              " {url: 'a.txt', open: false}) ?? 'done'"_s),
                     u"done"_s);
        }
        host.run(u"console.log('the end')"_s);
        QVERIFY(host.waitForOutput(u"page: the end"_s));
        QCOMPARE(host.output().filter(u"page: "_s), QStringList{u"page: the end"_s});
    }

    void showsThePagesConsoleAndEndsWithThePage()
    {
        HostProcess host;
        QVERIFY(host.start(server.url(u"/page"_s)));
        host.run(u"console.log('one\\ntwo')"_s);
        QVERIFY(host.waitForOutput(u"page: one"_s));
        QVERIFY(host.waitForOutput(u"page: two"_s));
        host.run(u"setTimeout(() => window.close(), 50)"_s);
        QCOMPARE(host.waitForEnd(), 0);
    }
};

QTEST_GUILESS_MAIN(TestPageCalls)
#include "tst_page_calls.moc"
