#include "app/host_application.h"
#include "app/web_view_controller.h"
#include "platform/foundation/file_manager.h"
#include "platform/ui/ui_window.h"
#include "support/data_table.h"
#include "support/http_test_server.h"

#include <QApplication>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QWebEngineScriptCollection>
#include <atomic>
#include <csignal>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

/// The host in one piece, with what is on its screen.
class TestHostApplication : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;
    std::unique_ptr<HostApplication> m_host;
    HttpTestServer own;
    HttpTestServer foreign;
    /// An address for one that begins with the name of a server.
    QString at(QString address)
    {
        address.replace(u"{own}"_s, own.url(QString()));
        return address.replace(u"{foreign}"_s, foreign.url(QString(), u"localhost"_s));
    }
    static qsizetype requestsFor(const QByteArray &target, const HttpTestServer &server)
    {
        const auto requests = server.requests();
        return std::count_if(requests.cbegin(), requests.cend(),
                             [&](const auto &each) { return each.target == target; });
    }

    void start(const QString &url, HostOptions options = {})
    {
        options.offscreen = true;
        m_host = std::make_unique<HostApplication>(options, QUrl(url), std::nullopt);
        m_host->start();
    }
    /// Starts on the server's own page, and waits for it.
    void startOnPage()
    {
        start(own.url(u"/page"_s));
        QTRY_VERIFY_WITH_TIMEOUT(isThere(own.url(u"/page"_s)), 20000);
    }
    QVariant run(const QString &script)
    {
        std::optional<QVariant> result;
        m_host->page().runJavaScript(script, [&](const QVariant &value) { result = value; });
        return QTest::qWaitFor([&] { return result.has_value(); }, 10000) ? *result : QVariant();
    }
    bool goTo(const QString &url)
    {
        run(u"location.href = '%1'"_s.arg(url));
        return QTest::qWaitFor([&] { return isThere(url); }, 10000);
    }
    bool isThere(const QString &url)
    {
        return m_host->page().url() == QUrl(url) && !m_host->page().isLoading();
    }
    QPushButton *tryAgain()
    {
        return m_host->webViewController().view()->findChild<QPushButton *>();
    }
    int screens()
    {
        int count = 0;
        for (auto screen = m_host->webViewController().presentedViewController(); screen;
             screen = screen->presentedViewController())
            ++count;
        return count;
    }

public:
    static void initMain()
    {
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); // for root there is none
        HostSchemeHandler::registerScheme();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(!setTemporaryDirectory(m_root.filePath(u"tmp"_s)));
        for (HttpTestServer *server : {&own, &foreign}) {
            server->on("/page", HttpTestServer::html("<!doctype html><title>Page</title>"));
            server->on("/next", HttpTestServer::html("<!doctype html>"));
            server->on("/a.txt", HttpTestServer::answer("hello"));
        }
    }
    void cleanup() { m_host.reset(); }

    void showsWhatTheServerSends_data() { addRows({"app/host_application.json"}); }
    void showsWhatTheServerSends()
    {
        const Row row;
        const bool isShown = row.is("isShown");
        const QByteArray type = row["type"].toString(u"text/html"_s).toLatin1();
        own.on("/start",
               row["status"].isUndefined()
                   ? QByteArray()
                   : HttpTestServer::answer(row.bytes("body"), "Content-Type: " + type + "\r\n",
                                            row.bytes("status")));
        start(own.url(u"/start"_s));
        QSignalSpy loaded(&m_host->webViewController(), &WebViewController::loaded);
        QSignalSpy failed(&m_host->webViewController(), &WebViewController::failed);
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size() + failed.size(), 1, 20000);
        QCOMPARE(tryAgain()->isVisible(), !isShown);
        QCOMPARE(loaded.size(), isShown ? 1 : 0);
    }

    void theScriptIsForTheMainFrameOnly()
    {
        // Frames have no channel either, so this could not be seen in them.
        start(own.url(u"/page"_s));
        const auto scripts = m_host->page().scripts().toList();
        QCOMPARE(scripts.size(), 1);
        QVERIFY(!scripts.first().runsOnSubFrames());
    }

    void tryingAgainAsksAsWhoeverAskedFirst_data() { addRows({"app/host_application.json"}); }
    void tryingAgainAsksAsWhoeverAskedFirst()
    {
        const Row row;
        const QString from = at(row.text("from"));
        own.on("/later", QByteArray());
        start(from.isEmpty() ? own.url(u"/later"_s) : from);
        if (!from.isEmpty()) {
            QTRY_VERIFY_WITH_TIMEOUT(isThere(from), 20000);
            if (row.is("hasStopped")) {
                ::kill(pid_t(m_host->page().renderProcessPid()), SIGKILL);
                QTRY_VERIFY(tryAgain()->isVisible());
                tryAgain()->click();
                QTRY_VERIFY(isThere(from) && !tryAgain()->isVisible());
            }
            run(u"location.href = '%1'"_s.arg(own.url(u"/later"_s)));
        }
        QTRY_VERIFY_WITH_TIMEOUT(tryAgain()->isVisible(), 20000);
        own.on("/later", HttpTestServer::html("<!doctype html>"));
        tryAgain()->click();
        QTRY_VERIFY_WITH_TIMEOUT(isThere(own.url(u"/later"_s)), 20000);
        const auto requests = own.requests();
        const auto last = std::find_if(requests.crbegin(), requests.crend(),
                                       [](const auto &each) { return each.target == "/later"; });
        QCOMPARE(last->header("Sec-Fetch-Site"), row.bytes("site"));
    }

    void relativeAddressesBelongToTheCallingPage_data() { addRows({"app/host_application.json"}); }
    void relativeAddressesBelongToTheCallingPage()
    {
        const Row row;
        own.on("/redirect", HttpTestServer::redirect("302 Found", at(u"{foreign}/page"_s)));
        HostOptions options;
        options.realServerUrl = at(row.text("realServerUrl"));
        options.allowedOrigins = {*WebOrigin::fromText(at(u"{foreign}"_s))};
        start(at(row.text("start")), options);
        QTRY_COMPARE_WITH_TIMEOUT(m_host->page().title(), u"Page"_s, 20000);
        const QString call = u"ZelkamMobile.exec('fileDownload', {url: 'a.txt', open: false})"_s;
        if (const QString next = at(row.text("next")); !next.isEmpty()) {
            run(call); // the page before it must leave nothing behind
            QVERIFY(goTo(next));
        }
        const HttpTestServer &expected = row.is("isOwn") ? own : foreign;
        const auto before = requestsFor("/a.txt", expected);
        run(call + u".then(() => { document.title = 'done' })"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_host->page().title(), u"done"_s, 10000);
        QCOMPARE(requestsFor("/a.txt", expected), before + 1);
    }

    void aLeftDocumentTakesAlongWhatItStarted_data() { addRows({"app/host_application.json"}); }
    void aLeftDocumentTakesAlongWhatItStarted()
    {
        foreign.on("/sandbox",
                   HttpTestServer::html("<!doctype html>", "Content-Security-Policy: sandbox\r\n"));
        std::atomic<int> cut = 0;
        own.on("/slow", [&](const auto &, auto &connection) {
            connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n");
            for (int i = 0; i < 100 && connection.isOpen(); ++i) {
                connection.send("x");
                connection.pause(std::chrono::milliseconds(50));
            }
            cut += !connection.isOpen();
        });
        startOnPage();
        run(u"for (const url of ['a.txt', 'a.txt?2', 'slow'])"
            " ZelkamMobile.exec('fileDownload', {url, fileName: url.slice(-1)}).catch(() => {})"_s);
        QTRY_COMPARE_WITH_TIMEOUT(screens(), 2, 10000);
        run(u"ZelkamMobile.exec('filePicker', {extension: '', multiselect: false, maxcount: 1})"
            ".catch(() => {})"_s);
        QTRY_COMPARE_WITH_TIMEOUT(screens(), 3, 10000);
        QTRY_VERIFY(!m_host->window().isInTransition());
        if (const QString next = at(Row().text("next")); next.isEmpty())
            run(u"location.reload()"_s);
        else
            QVERIFY(goTo(next));
        QTRY_COMPARE_WITH_TIMEOUT(screens(), 0, 10000);
        QTRY_COMPARE_WITH_TIMEOUT(int(cut), 1, 4000);
        QTest::qWait(500);
        QCOMPARE(screens(), 0);
    }

    void aReplyReachesTheDocumentThatCalled()
    {
        own.on("/document", HttpTestServer::html(dataFile(u"app/document.html"_s)));
        const auto slow = [](const QByteArray &answer) {
            return [answer](const auto &, auto &connection) {
                connection.pause(
                    std::chrono::milliseconds(QRandomGenerator::global()->bounded(250)));
                connection.send(answer);
            };
        };
        own.on("/good", slow(HttpTestServer::answer("x")));
        own.on("/evil", slow(HttpTestServer::answer("x", {}, "404 Not Found")));
        const int rounds = qEnvironmentVariableIsSet("ZELKAM_LONG_TESTS") ? 500 : 20;
        QRandomGenerator random(20);
        startOnPage();
        for (int round = 1; round <= rounds; ++round) {
            const QString kind = random.bounded(2) == 0 ? u"good"_s : u"evil"_s;
            if (random.bounded(4) == 0)
                run(u"location.reload()"_s);
            else
                run(u"location.href = '%1'"_s.arg(
                    own.url(u"/document?%1%2"_s.arg(kind).arg(round))));
            QTest::qWait(random.bounded(120));
            if (round % 20 == 0)
                QTRY_COMPARE_WITH_TIMEOUT(m_host->page().title(), u"answered"_s, 10000);
        }
        for (const auto &request : own.requests())
            QVERIFY2(!request.target.startsWith("/wrong"), request.target.constData());
    }

    void fewPreviewsLieAboveEachOther()
    {
        startOnPage();
        QList<UIViewController *> came;
        connect(&m_host->window(), &UIWindow::screenDidAppear, this,
                [&](UIViewController *screen) { came.append(screen); });
        run(u"for (let i = 0; i < 12; i += 1)"
            " ZelkamMobile.call('fileDownload', {url: 'a.txt', fileName: `${i}.txt`}, () => {})"_s);
        QTRY_COMPARE_WITH_TIMEOUT(came.size(), 12, 30000);
        QCOMPARE(m_host->window().topMostViewController(), came.last());
        QVERIFY2(screens() > 1 && screens() <= 4, qPrintable(QString::number(screens())));
        for (int i = screens(); i > 0; --i) {
            QTRY_VERIFY(!m_host->window().isInTransition());
            m_host->window().topMostViewController()->cancelOperation();
            QTRY_COMPARE_WITH_TIMEOUT(screens(), i - 1, 5000);
        }
        QTRY_COMPARE(m_host->window().topMostViewController(), &m_host->webViewController());
    }
};

QTEST_MAIN(TestHostApplication)
#include "tst_host_application.moc"
