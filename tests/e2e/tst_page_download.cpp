#include "host_process.h"
#include "support/http_test_server.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// `replies(args, count)` gives the first replies to a download, as text; one more would show.
const QByteArray page = R"(<!doctype html><meta charset="utf-8"><title>Page</title><script>
const text = r => r.success ? 'success' : 'error ' + r.status + (r.message ? ': ' + r.message : '');
const replies = (args, count = 1) => new Promise(done => {
  const got = [];
  ZelkamMobile.call('fileDownload', { open: false, ...args }, r => {
    got.push(text(r));
    if (got.length === count) setTimeout(() => done(got), 150);
  });
});
</script>)";

const QByteArray pdf = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                       "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                       "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]>>endobj\n"
                       "trailer<</Root 1 0 R>>";

const QByteArray png = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJg"
    "gg==");

} // namespace

/// A page in a real web view downloads from a real server; one host for all cases.
class TestPageDownload : public QObject
{
    Q_OBJECT

private:
    HttpTestServer server;
    HostProcess host;

    QStringList replies(const QString &arguments, int count = 1)
    {
        const auto result = host.run(u"return await replies(%1, %2)"_s.arg(arguments).arg(count));
        QStringList texts;
        const auto list = result.toArray();
        for (const auto &text : list)
            texts += text.toString();
        return result.isArray() ? texts : QStringList{u"no reply"_s};
    }
    HttpTestServer::Request lastRequest(const QByteArray &path)
    {
        const auto requests = server.requests();
        for (auto it = requests.crbegin(); it != requests.crend(); ++it) {
            if (it->target.startsWith(path))
                return *it;
        }
        return {};
    }
    QByteArray saved(const QString &name)
    {
        QFile file(host.downloadPath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

private slots:
    void initTestCase()
    {
        server.on("/page", HttpTestServer::answer(
                               page, "Content-Type: text/html\r\nSet-Cookie: web=1; HttpOnly\r\n"));
        server.on("/a.txt", HttpTestServer::answer("hello"));
        QVERIFY(
            host.start(server.url(u"/page"_s), {u"--screenshots"_s, host.screenshotsDirectory()}));
    }

    void takesAddressesInAnyForm_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("relative") << u"d/my%20file.txt"_s << QByteArray("/d/my%20file.txt");
        QTest::newRow("from the root") << u"/d/x.txt"_s << QByteArray("/d/x.txt");
        QTest::newRow("absolute") << server.url(u"/d/y.txt"_s) << QByteArray("/d/y.txt");
        QTest::newRow("half encoded") << u"/d/a%20b c"_s << QByteArray("/d/a%20b%20c");
        QTest::newRow("not encoded") << u"/d/ü €"_s << QByteArray("/d/%C3%BC%20%E2%82%AC");
    }
    void takesAddressesInAnyForm()
    {
        QFETCH(QString, address);
        QFETCH(QByteArray, target);
        server.on(target, HttpTestServer::answer(target));
        QCOMPARE(replies(u"{url: '%1'}"_s.arg(address)), QStringList{u"success"_s});
        QCOMPARE(saved(QUrl::fromPercentEncoding(target.mid(3))), target);
    }

    void sendsBodiesAndHeaders()
    {
        replies(u"{url: 'a.txt?form', requestType: 'post',"
                " dataType: 'application/x-www-form-urlencoded', data: {a: '1', n: 5, b: 'ü'}}"_s);
        QCOMPARE(lastRequest("/a.txt?form").body, "a=1&b=ü&n=&");
        replies(u"{url: 'a.txt?json', requestType: 'POST', httpHeaders: {'X-Own': 'yes'},"
                " data: {a: [1, 2.5, null, true], b: 10n}}"_s);
        QCOMPARE(lastRequest("/a.txt?json").body, "{\"a\":[1,2.5,null,true],\"b\":10}");
        QCOMPARE(lastRequest("/a.txt?json").header("X-Own"), "yes");
        replies(u"{url: 'a.txt?get', data: {a: 1}}"_s);
        QCOMPARE(lastRequest("/a.txt?get").method, "GET");
        QCOMPARE(lastRequest("/a.txt?get").body, QByteArray());
    }

    void carriesCookiesBothWays()
    {
        host.run(u"document.cookie = 'script=2'"_s);
        replies(u"{url: 'a.txt?cookies'}"_s);
        const QByteArray sent = lastRequest("/a.txt?cookies").header("Cookie");
        QVERIFY2(sent.contains("web=1") && sent.contains("script=2"), sent.constData());

        server.on("/set",
                  HttpTestServer::answer("x", "Set-Cookie: got=3; Path=/\r\n"
                                              "Set-Cookie: hidden=4; Path=/; HttpOnly\r\n"
                                              "Set-Cookie: JSESSIONID=foreign; Path=/\r\n"
                                              "Set-Cookie: named=5; Path=/; Domain=127.0.0.1\r\n"));
        QCOMPARE(replies(u"{url: 'set'}"_s), QStringList{u"success"_s});
        QTRY_VERIFY(host.run(u"return document.cookie"_s).toString().contains(u"got=3"_s));
        const QString seen = host.run(u"return document.cookie"_s).toString();
        QVERIFY2(seen.contains(u"named=5"_s), qPrintable(seen));
        QVERIFY2(!seen.contains(u"hidden"_s) && !seen.contains(u"JSESSIONID"_s), qPrintable(seen));
        host.run(u"await fetch('/a.txt?web')"_s);
        QVERIFY(lastRequest("/a.txt?web").header("Cookie").contains("hidden=4"));

        server.on("/session", HttpTestServer::answer(
                                  "x", "Set-Cookie: JSESSIONID=own; Path=/; Domain=127.0.0.1\r\n"));
        replies(u"{url: 'session'}"_s);
        host.run(u"document.cookie = 'got=6'"_s);
        replies(u"{url: 'a.txt?again'}"_s);
        const QByteArray again = lastRequest("/a.txt?again").header("Cookie");
        QVERIFY2(again.contains("JSESSIONID=own") && again.contains("got=6"), again.constData());
        QVERIFY2(!again.contains("got=3"),
                 again.constData()); // one cookie of a name, the newer one
    }

    void keepsAnotherServersCookiesOutOfThePage()
    {
        HttpTestServer other;
        other.on("/x", HttpTestServer::answer("x", "Set-Cookie: planted=1; Domain=127.0.0.1\r\n"
                                                   "Set-Cookie: its=1\r\n"));
        QCOMPARE(replies(u"{url: '%1'}"_s.arg(other.url(u"/x"_s, u"localhost"_s))),
                 QStringList{u"success"_s});
        replies(u"{url: 'a.txt?planted'}"_s); // the store has them, and the view has had the time
        QVERIFY(lastRequest("/a.txt?planted").header("Cookie").contains("planted=1"));
        const QString seen = host.run(u"return document.cookie"_s).toString();
        QVERIFY2(!seen.contains(u"planted"_s) && !seen.contains(u"its"_s), qPrintable(seen));
    }

    void repliesToEveryAnswer_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("get");
        QTest::addColumn<QString>("post");
        const QString getFailure = u"error 2043: Failed to download file using GET method"_s;
        const auto failure =
            [&](const char *status, const QByteArray &answer) {
                QTest::newRow(status)
                    << answer << getFailure
                    << u"error 2044: Failed to download file using POST method.-httpStatus:"_s +
                           QString::fromLatin1(status, 3);
            };
        const QString success = u"success"_s;
        const QString lost =
            u"error NETWORK_RESPONSE_ERROR: The server sent only a part of the file."_s;
        QTest::newRow("200") << HttpTestServer::answer("x") << success << success;
        failure("201", HttpTestServer::answer("x", {}, "201 Created"));
        failure("204", "HTTP/1.1 204 No Content\r\n\r\n");
        failure("206", HttpTestServer::answer("x", {}, "206 Partial Content"));
        failure("304", "HTTP/1.1 304 Not Modified\r\n\r\n");
        failure("404", HttpTestServer::answer("x", {}, "404 Not Found"));
        QTest::newRow("a redirect")
            << HttpTestServer::redirect("302 Found", server.url(u"/a.txt"_s)) << success << success;
        QTest::newRow("a body cut short")
            << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nx") << lost << lost;
    }
    void repliesToEveryAnswer()
    {
        QFETCH(QByteArray, answer);
        server.on("/status", answer);
        QTEST(replies(u"{url: 'status'}"_s).join(u'|'), "get");
        QTEST(replies(u"{url: 'status', requestType: 'post'}"_s).join(u'|'), "post");
    }

    void repliesToArgumentsThatFail_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QStringList>("expected");
        const QStringList once{u"error INVALID_PARAM"_s};
        const QStringList twice = once + once;
        const QStringList getFailure{u"error 2043: Failed to download file using GET method"_s};
        const QString post = u"{url: 'a.txt', requestType: 'post', data: {a: %1}}"_s;
        QTest::newRow("no address") << u"{}"_s << once;
        QTest::newRow("an address of another type") << u"{url: {}}"_s << once;
        QTest::newRow("a stray percent sign") << u"{url: '100%'}"_s << once;
        QTest::newRow("not a number in JSON") << post.arg(u"NaN"_s) << twice;
        QTest::newRow("infinity in JSON") << post.arg(u"[-Infinity]"_s) << twice;
        QTest::newRow("a BigInt beyond 64 bits") << post.arg(u"2n ** 64n"_s) << twice;
        QTest::newRow("half a surrogate pair in JSON") << post.arg(u"'\\ud800'"_s) << twice;
        QTest::newRow("no server")
            << u"{url: 'http://127.0.0.1:1/'}"_s
            << QStringList{u"error NETWORK_RESPONSE_ERROR: Could not connect to the server."_s};
        QTest::newRow("a name that leads out")
            << u"{url: 'a.txt', fileName: '../../../x'}"_s << getFailure;
        QTest::newRow("a name of 300 characters")
            << u"{url: 'a.txt', fileName: 'n'.repeat(300)}"_s << getFailure;
        QTest::newRow("wrong types are defaults")
            << u"{url: 'a.txt', notify: 'yes', fileName: 5, httpHeaders: {a: 1}, data: NaN}"_s
            << QStringList{u"success"_s};
    }
    void repliesToArgumentsThatFail()
    {
        QFETCH(QString, arguments);
        QFETCH(QStringList, expected);
        QCOMPARE(replies(arguments, int(expected.size())), expected);
        QCOMPARE(replies(u"{url: 'a.txt'}"_s), QStringList{u"success"_s});
    }

    void namesTheFile()
    {
        server.on("/named",
                  HttpTestServer::answer("x", "Content-Disposition: attachment; filename=n.txt; "
                                              "filename*=UTF-8''%E2%82%AC.txt\r\n"));
        replies(u"{url: 'named'}"_s);
        QCOMPARE(saved(u"€.txt"_s), "x");
        replies(u"{url: 'named', fileName: 'page%20name.txt'}"_s);
        QCOMPARE(saved(u"page name.txt"_s), "x");
        server.on("/", HttpTestServer::answer("x"));
        const auto before = QDir(host.downloadPath({})).entryList(QDir::Files).size();
        replies(u"{url: '/'}"_s);
        QCOMPARE(QDir(host.downloadPath({})).entryList(QDir::Files).size(), before + 1);
    }

    void savesImagesToTheAlbum()
    {
        server.on("/i.png", HttpTestServer::answer(png));
        server.on("/d.pdf", HttpTestServer::answer(pdf));
        QCOMPARE(replies(u"{url: 'i.png', saveAlbum: true}"_s), QStringList{u"success"_s});
        QTRY_COMPARE(QDir(host.picturesDirectory()).entryList(QDir::Files).size(), 1);
        QCOMPARE(replies(u"{url: 'd.pdf', saveAlbum: true}"_s, 2),
                 QStringList({u"error INVALID_PARAM"_s, u"error INVALID_PARAM"_s}));
        QCOMPARE(saved(u"d.pdf"_s), pdf);
    }

    void aSecondCallTakesOverTheFirst()
    {
        server.on("/slow", [](const auto &, auto &connection) {
            connection.pause(std::chrono::milliseconds(400));
            connection.send(HttpTestServer::answer("slow"));
        });
        const auto result =
            host.run(u"const first = ZelkamMobile.exec('fileDownload', {url: 'slow', open: false})"
                     "  .then(() => 'resolved', e => e.status);"
                     "const second = replies({url: 'a.txt'}, 2);"
                     "return [await first, await second]"_s);
        QCOMPARE(result, (QJsonArray{u"NO_REPLY"_s, QJsonArray{u"success"_s, u"success"_s}}));
    }

    void showsTheToastAndThePreview()
    {
        QCOMPARE(replies(u"{url: 'a.txt', notify: true, fileName: 'toasted.txt'}"_s),
                 QStringList{u"success"_s});
        server.on("/d.pdf", HttpTestServer::answer(pdf));
        QCOMPARE(replies(u"{url: 'd.pdf', open: true, share: true}"_s), QStringList{u"success"_s});
        const auto shots = [&] {
            return QDir(host.screenshotsDirectory()).entryList({u"*.png"_s}, QDir::Files);
        };
        QTRY_VERIFY(!shots().filter(u"screen"_s).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPageDownload)
#include "tst_page_download.moc"
