#include "host_process.h"
#include "support/data_table.h"
#include "support/http_test_server.h"

using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

/// A page with a button or a link at its top, and below a frame of another site.
QByteArray pageWith(const QByteArray &button, const QByteArray &frame = {})
{
    return HttpTestServer::html(
        "<!doctype html><title>Page</title><style>body{margin:0}iframe{position:absolute;top:200px;"
        "left:0;border:0}button,a{position:absolute;top:0;left:0;width:100px;height:100px}</style>"
        "<body>" +
            button + (frame.isEmpty() ? QByteArray() : "<iframe src='" + frame + "'></iframe>"),
        "Set-Cookie: strict=1; SameSite=Strict; Path=/\r\n");
}

/// What says from a frame what it finds of the bridge.
const QByteArray tell = "<script>top.postMessage([typeof ZelkamMobile, typeof qt,"
                        " typeof QWebChannel], '*')</script>";

} // namespace

/// What windows and frames can do to the one window, and who the server learns has asked.
class TestPageWindows : public QObject
{
    Q_OBJECT

private:
    HttpTestServer own;
    HttpTestServer foreign;
    HostProcess host;
    QString foreignUrl(const QString &path) { return foreign.url(path, u"localhost"_s); }

    /// How the requests for the target came: the site that asked, and the strict cookie if it went
    /// along.
    QStringList askedFor(qsizetype after)
    {
        QStringList seen;
        const auto requests = own.requests();
        for (const auto &request : requests.mid(after)) {
            if (request.target.startsWith("/target"))
                seen.append(QString::fromLatin1(request.header("Sec-Fetch-Site") + ' ' +
                                                request.header("Cookie")));
        }
        return seen;
    }

private slots:
    void initTestCase()
    {
        own.on("/target", pageWith({}));
        own.on("/page", pageWith({}));
        for (HttpTestServer *server : {&own, &foreign})
            server->on("/tell", HttpTestServer::html(tell));
        QVERIFY(host.start(own.url(u"/page"_s), {u"--allow-origin"_s, foreign.url(QString())}));
    }

    void onlyThePageItselfMovesTheWindow_data() { addRows({"e2e/page_windows.json"}); }
    void onlyThePageItselfMovesTheWindow()
    {
        const Row row;
        const QString target = own.url(u"/target"_s);
        const QByteArray button = row.text("html").replace(u"{target}"_s, target).toUtf8();
        foreign.on("/frame", pageWith(button));
        own.on("/page", pageWith(button, foreignUrl(u"/frame"_s).toLatin1()));
        const QString page = row.is("isForeign") ? foreignUrl(u"/frame"_s) : own.url(u"/page"_s);
        // With a query, as a page that is there already would not be loaded again.
        host.run(u"location.href = '%1?%2'"_s.arg(page).arg(own.requests().size()));
        QTRY_COMPARE_WITH_TIMEOUT(
            host.run(u"return location.href.startsWith('%1?') && document.readyState"_s.arg(page)),
            u"complete"_s, 10000);
        QTest::qWait(200); // until a click reaches the frame
        const auto before = own.requests().size();
        if (const int at = row.number("click"))
            host.click(50, at);
        else
            host.run(row.text("script").replace(u"{target}"_s, target));
        const QStringList asked = row.texts("asked");
        QTRY_COMPARE_WITH_TIMEOUT(askedFor(before).size(), asked.size(), 5000);
        if (asked.isEmpty())
            QTest::qWait(500);
        QCOMPARE(askedFor(before), asked);
    }

    void noFrameHasTheBridge_data() { addRows({"e2e/page_windows.json"}); }
    void noFrameHasTheBridge()
    {
        host.run(
            u"if (location.pathname !== '/target') location = '%1'"_s.arg(own.url(u"/target"_s)));
        QTRY_COMPARE_WITH_TIMEOUT(host.run(u"return location.pathname + typeof ZelkamMobile"_s),
                                  u"/targetobject"_s, 10000);
        const QString frame = Row()
                                  .text("frame")
                                  .replace(u"{own}"_s, own.url(QString()))
                                  .replace(u"{allowed}"_s, foreign.url(QString()))
                                  .replace(u"{foreign}"_s, foreignUrl(QString()));
        const QString undefined = u"undefined"_s;
        QCOMPARE(host.run(u"return await new Promise(done => {"
                          " window.onmessage = e => done(e.data); const tell = `%1`;"
                          " let f = document.createElement('iframe'); %2;"
                          " document.body.append(f) })"_s.arg(QString::fromUtf8(tell), frame)),
                 (QJsonArray{undefined, undefined, undefined}));
    }

    void aLocalPageIsOpenedByItselfOnly()
    {
        QTemporaryDir folder;
        for (const QString &name : {u"index"_s, u"next"_s}) {
            QFile file(folder.filePath(name + u".html"_s));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("<!doctype html><title>" + name.toLatin1() + "</title>");
        }
        HostProcess local;
        QVERIFY(local.start(folder.filePath(u"index.html"_s),
                            {u"--allow-origin"_s, own.url(QString())}));
        local.run(u"location.href = 'next.html'"_s);
        QTRY_COMPARE_WITH_TIMEOUT(local.run(u"return document.title"_s), u"next"_s, 10000);
        const QByteArray toApp = "'zelkam://app/index.html'";
        for (const QString &page : {own.url(u"/page"_s), foreignUrl(u"/page"_s)}) {
            HttpTestServer &server = page.contains(u"localhost") ? foreign : own;
            server.on("/page", pageWith("<button onclick=\"window.open(" + toApp + ")\">"));
            local.run(u"location.href = '%1'"_s.arg(page));
            QTRY_COMPARE_WITH_TIMEOUT(local.run(u"return location.href"_s), page, 10000);
            local.click(50, 50);
            local.run(u"window.open(%1); open('about:blank').location = %1;"
                      "document.body.append(Object.assign(document.createElement('iframe'),"
                      " {src: %1}), Object.assign(document.createElement('iframe'),"
                      " {sandbox: 'allow-scripts allow-top-navigation', srcdoc:"
                      " `<script>top.location = %1</` + 'script>'}));"
                      "location.href = %1"_s.arg(QLatin1String(toApp)));
            QTest::qWait(700);
            QCOMPARE(local.run(u"return [location.href, frames.length]"_s), (QJsonArray{page, 2}));
        }
    }
};

QTEST_GUILESS_MAIN(TestPageWindows)
#include "tst_page_windows.moc"
