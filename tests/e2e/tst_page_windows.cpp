#include "host_process.h"
#include "support/http_test_server.h"

#include <QJsonArray>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// A page with a button at its top and a frame of another site below, which has one too.
QByteArray pageWith(const QByteArray &button, const QByteArray &frame)
{
    return HttpTestServer::answer(
        "<!doctype html><title>Page</title><style>body{margin:0}iframe{position:absolute;top:200px;"
        "left:0;border:0}button,a{position:absolute;top:0;left:0;width:100px;height:100px}</style>"
        "<body>" +
            button + (frame.isEmpty() ? QByteArray() : "<iframe src='" + frame + "'></iframe>"),
        "Content-Type: text/html\r\nSet-Cookie: strict=1; SameSite=Strict; Path=/\r\n");
}

} // namespace

/// What windows and frames can do to the one window, and who the server learns has asked.
class TestPageWindows : public QObject
{
    Q_OBJECT

private:
    HttpTestServer own;
    HttpTestServer foreign;
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
        foreign.on("/blank", pageWith({}, {}));
        own.on("/target", pageWith({}, {}));
    }

    void onlyThePageItselfMovesTheWindow_data()
    {
        QTest::addColumn<bool>("isForeign"); // the page, not the frame
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<int>("clickAt"); // 250 lies in the frame; nothing for no click
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("asked");
        const QByteArray target = own.url(u"/target"_s).toLatin1();
        const QByteArray open = "<button onclick=\"window.open('" + target + "')\">x</button>";
        const QByteArray link = "<a target=_blank href='" + target + "'>x</a>";
        const QString openByScript = u"window.open('%1')"_s.arg(own.url(u"/target"_s));
        const QStringList none;
        const QStringList asOwn{u"same-origin strict=1"_s};
        const QString noScript;
        const auto row = [](const char *name) -> QTestData & { return QTest::newRow(name); };
        row("the page opens a window at a click") << false << open << 50 << noScript << asOwn;
        row("the page has a link for a new window") << false << link << 50 << noScript << asOwn;
        row("the page has one that cuts the opener off")
            << false << "<a rel=noreferrer" + link.mid(2) << 50 << noScript << asOwn;
        row("the page has a form for a new window")
            << false
            << QByteArray("<form target=_blank action='" + target + "'><button>x</button></form>")
            << 50 << noScript << asOwn;
        row("the page opens a window without a click")
            << false << open << 0 << openByScript << none;
        row("a foreign frame opens a window at a click")
            << false << open << 250 << noScript << none;
        row("a foreign frame has a link for a new window")
            << false << link << 250 << noScript << none;
        row("a foreign page opens a window at a click") << true << open << 50 << noScript << none;
        row("a foreign page has a link for a new window") << true << link << 50 << noScript << none;
        row("a foreign page opens a window without a click")
            << true << open << 0 << openByScript << none;
        row("a foreign page goes there as itself")
            << true << open << 0 << u"location.href = '%1'"_s.arg(own.url(u"/target"_s))
            << QStringList{u"cross-site "_s};
    }

    void onlyThePageItselfMovesTheWindow()
    {
        static HostProcess *host = nullptr; // one for all rows
        QFETCH(bool, isForeign);
        QFETCH(QByteArray, button);
        QFETCH(int, clickAt);
        QFETCH(QString, script);
        foreign.on("/frame", pageWith(button, {}));
        own.on("/page", pageWith(button, foreignUrl(u"/frame"_s).toLatin1()));
        if (!host) {
            host = new HostProcess;
            host->setParent(this);
            QVERIFY(host->start(own.url(u"/page"_s)));
        }
        const QString page = isForeign ? foreignUrl(u"/frame"_s) : own.url(u"/page"_s);
        // A fragment, as a page that is there already would not be loaded again.
        host->run(u"location.href = '%1?%2'"_s.arg(page).arg(own.requests().size()));
        QTRY_COMPARE_WITH_TIMEOUT(
            host->run(u"return location.href.startsWith('%1?') && document.readyState"_s.arg(page)),
            u"complete"_s, 10000);
        QTest::qWait(200); // until a click reaches the frame
        const auto before = own.requests().size();
        if (clickAt > 0)
            host->click(50, clickAt);
        if (!script.isEmpty())
            host->run(script);
        QFETCH(QStringList, asked);
        QTRY_COMPARE_WITH_TIMEOUT(askedFor(before).size(), asked.size(), 5000);
        if (asked.isEmpty())
            QTest::qWait(500);
        QCOMPARE(askedFor(before), asked);
    }

    void aLocalPageIsOpenedByItselfOnly()
    {
        QTemporaryDir folder;
        const auto write = [&](const QString &name, const QByteArray &text) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        };
        write(u"index.html"_s, "<!doctype html><title>index</title>");
        write(u"next.html"_s, "<!doctype html><title>next</title>");
        HostProcess host;
        QVERIFY(host.start(folder.filePath(u"index.html"_s),
                           {u"--allow-origin"_s, own.url(QString())}));
        host.run(u"location.href = 'next.html'"_s);
        QTRY_COMPARE_WITH_TIMEOUT(host.run(u"return document.title"_s), u"next"_s, 10000);
        const QByteArray toApp = "'zelkam://app/index.html'";
        for (const QString &page : {own.url(u"/page"_s), foreignUrl(u"/page"_s)}) {
            HttpTestServer &server = page.contains(u"localhost") ? foreign : own;
            server.on("/page", pageWith("<button onclick=\"window.open(" + toApp + ")\">", {}));
            host.run(u"location.href = '%1'"_s.arg(page));
            QTRY_COMPARE_WITH_TIMEOUT(host.run(u"return location.href"_s), page, 10000);
            host.click(50, 50);
            host.run(u"window.open(%1); open('about:blank').location = %1;"
                     "document.body.append(Object.assign(document.createElement('iframe'),"
                     " {src: %1}), Object.assign(document.createElement('iframe'),"
                     " {sandbox: 'allow-scripts allow-top-navigation', srcdoc:"
                     " `<script>top.location = %1</` + 'script>'}));"
                     "location.href = %1"_s.arg(QLatin1String(toApp)));
            QTest::qWait(700);
            QCOMPARE(host.run(u"return [location.href, frames.length]"_s), (QJsonArray{page, 2}));
        }
    }

    void noFrameHasTheBridge_data()
    {
        QTest::addColumn<QString>("frame");
        const QString tell = u"<script>top.postMessage([typeof ZelkamMobile, typeof qt,"
                             " typeof QWebChannel], '*')</"_s;
        const QByteArray document = tell.toLatin1() + "script>";
        for (HttpTestServer *server : {&own, &foreign})
            server->on("/tell", HttpTestServer::answer(document, "Content-Type: text/html\r\n"));
        const auto row = [](const char *name) -> QTestData & { return QTest::newRow(name); };
        const QString source = u"f.srcdoc = `%1` + 'script>'"_s.arg(tell);
        row("of the page's own origin") << u"f.src = '/tell'"_s;
        row("of another allowed origin") << u"f.src = '%1'"_s.arg(foreign.url(u"/tell"_s));
        row("of a foreign site") << u"f.src = '%1'"_s.arg(foreignUrl(u"/tell"_s));
        row("written into the page") << source;
        row("in a sandbox") << u"f.sandbox = 'allow-scripts'; "_s + source;
        row("a data URL") << u"f.src = `data:text/html,%1` + 'script>'"_s.arg(tell);
        row("a blob") << u"f.src = URL.createObjectURL(new Blob([`%1` + 'script>'],"
                         " {type: 'text/html'}))"_s.arg(tell);
        row("empty, and looked into")
            << u"setTimeout(() => { const w = f.contentWindow; postMessage("
               "[typeof w.ZelkamMobile, typeof w.qt, typeof w.QWebChannel], '*') }, 100)"_s;
        row("a frame in a frame") << u"f.srcdoc = `<iframe src='%1'></iframe>`"_s.arg(
            own.url(u"/tell"_s));
        row("an object") << u"f = document.createElement('object'); f.data = '/tell'"_s;
        row("an embed") << u"f = document.createElement('embed'); f.src = '/tell'"_s;
    }

    void noFrameHasTheBridge()
    {
        static HostProcess *host = nullptr; // one for all rows
        if (!host) {
            own.on("/page", pageWith({}, {}));
            host = new HostProcess;
            host->setParent(this);
            QVERIFY(
                host->start(own.url(u"/page"_s), {u"--allow-origin"_s, foreign.url(QString())}));
        }
        QFETCH(QString, frame);
        const QString undefined = u"undefined"_s;
        QCOMPARE(host->run(u"return await new Promise(done => {"
                           " window.onmessage = e => done(e.data);"
                           " let f = document.createElement('iframe'); %1;"
                           " document.body.append(f) })"_s.arg(frame)),
                 (QJsonArray{undefined, undefined, undefined}));
    }
};

QTEST_GUILESS_MAIN(TestPageWindows)
#include "tst_page_windows.moc"
