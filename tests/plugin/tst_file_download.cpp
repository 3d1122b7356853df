#include "download/zelkam_mobile_file_download_util.h"
#include "host/zelkam_mobile_data.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/file_manager.h"
#include "platform/network/connectivity.h"
#include "platform/network/http_cookie_storage.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "preview/zelkam_mobile_contents_pre_view_vc.h"
#include "support/http_test_server.h"
#include "support/own_network.h"
#include "support/recording_call.h"
#include "toast/toast_completion.h"

#include <QAccessible>
#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>
#include <atomic>
#include <sys/resource.h>
#include <unistd.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

const QString getFailure = u"error 2043: Failed to download file using GET method"_s;
const QString noConnection = u"error NETWORK_RESPONSE_ERROR: Could not connect to the server."_s;

QString postFailure(int status)
{
    return u"error 2044: Failed to download file using POST method.-httpStatus:%1"_s.arg(status);
}

class WebView : public HostWebView
{
public:
    QString webViewId() const override { return u"view"_s; }
};

QByteArray png()
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

/// The command through the plug-in's meta-object, as a host calls it, against a real server, with
/// real files and screens.
class TestFileDownload : public QObject
{
    Q_OBJECT

private:
    const bool ownNetwork = enterOwnNetwork({"203.0.113.1"}); // before the server is there
    HttpTestServer server;
    WebView webView;
    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<UIWindow> window;
    std::shared_ptr<UIViewController> page;
    std::shared_ptr<ZelkamMobileContentsPlugin> plugin;

    std::shared_ptr<RecordingCall> start(std::optional<QVariantMap> arguments)
    {
        auto call = std::make_shared<RecordingCall>(std::move(arguments));
        QMetaObject::invokeMethod(plugin.get(), "fileDownload",
                                  Q_ARG(zelkam::CallBackManagerPtr, call));
        return call;
    }

    /// Runs a download without a preview to its last reply.
    QStringList replies(QVariantMap arguments, int count = 1)
    {
        arguments.insert(u"open"_s, false);
        const auto call = start(arguments);
        if (QTest::qWaitFor([&] { return call->replies().size() >= count; }, 20000))
            QTest::qWait(50); // for a reply too many
        return call->replies();
    }

    QVariantMap get(const QString &path) { return {{u"url"_s, server.url(path)}}; }
    QString downloadFolder() const { return NSTemporaryDirectory() + u"Download/"_s; }
    QStringList downloads() const { return QDir(downloadFolder()).entryList(QDir::Files); }
    QByteArray content(const QString &name) const
    {
        QFile file(downloadFolder() + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// What a screen reader finds in the toasts on the page.
    QStringList toastTexts() const
    {
        QStringList texts;
        const auto children = page->view()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        for (QWidget *child : children)
            texts += QAccessible::queryAccessibleInterface(child)->text(QAccessible::Name);
        return texts;
    }
    std::atomic<bool> indicatorSwitchedElsewhere = false; // than on the main thread
    bool indicator() const { return UIApplication::shared().isNetworkActivityIndicatorVisible(); }

private slots:
    void initTestCase()
    {
        installTranslations(QLocale(QLocale::English));
        setConnectivityCheck([] { return true; });
        connect(
            &UIApplication::shared(), &UIApplication::networkActivityIndicatorVisibleChanged, this,
            [this] {
                if (QThread::currentThread() != thread())
                    indicatorSwitchedElsewhere = true;
            },
            Qt::DirectConnection);
    }
    void init()
    {
        root = std::make_unique<QTemporaryDir>();
        QVERIFY(!setTemporaryDirectory(root->filePath(u"tmp"_s)));
        setPicturesDirectory(root->filePath(u"pictures"_s));
        window = std::make_unique<UIWindow>();
        window->resize(390, 844);
        page = std::make_shared<UIViewController>();
        window->setRootViewController(page);
        window->makeKeyAndVisible();
        plugin = makePlugin<ZelkamMobileContentsPlugin>();
        plugin->setWebView(&webView);
        ZelkamMobileData::shared().setOptions(u"view"_s, WebViewOptions{server.url(QString())});
        UIApplication::shared().setNetworkActivityIndicatorVisible(false);
        server.on("/a.txt", HttpTestServer::answer("hello"));
    }
    void cleanup()
    {
        QVERIFY(!indicatorSwitchedElsewhere.exchange(false));
        plugin.reset();
        page.reset();
        window.reset();
        const auto cookies = HTTPCookieStorage::shared().cookies().value();
        for (const auto &cookie : cookies)
            HTTPCookieStorage::shared().deleteCookie(cookie);
    }

    void refusesArguments_data()
    {
        QTest::addColumn<std::optional<QVariantMap>>("arguments");
        const auto row = [](const char *name, const std::optional<QVariantMap> &arguments) {
            QTest::newRow(name) << arguments;
        };
        row("none", std::nullopt);
        row("no address", QVariantMap());
        row("a number for an address", QVariantMap{{u"url"_s, 5}});
        row("a percent sign that encodes nothing", QVariantMap{{u"url"_s, u"/100%"_s}});
        row("a port that is none", QVariantMap{{u"url"_s, u"http://h:99999/"_s}});
        row("half a surrogate pair", QVariantMap{{u"url"_s, u"/"_s + QChar(0xD800)}});
    }
    void refusesArguments()
    {
        QFETCH(std::optional<QVariantMap>, arguments);
        const auto before = server.requests().size();
        const auto call = start(arguments);
        QCOMPARE(call->replies(), QStringList{u"error INVALID_PARAM"_s});
        QCOMPARE(plugin->currentCallBack(), call);
        QCOMPARE(server.requests().size(), before);
    }

    void refusesARelativeAddressOfAnUnknownWebView()
    {
        ZelkamMobileData::shared().setOptions(u"view"_s, std::nullopt);
        QCOMPARE(start(QVariantMap{{u"url"_s, u"a.txt"_s}})->replies(),
                 QStringList{u"error INVALID_PARAM"_s});
    }

    void makesAddresses_data()
    {
        QTest::addColumn<QString>("address"); // {server} stands for the server's root
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("relative") << u"files/a.pdf"_s << QByteArray("/files/a.pdf");
        QTest::newRow("from the root") << u"/files/a.pdf"_s << QByteArray("/files/a.pdf");
        QTest::newRow("absolute") << u"{server}/a.pdf?x=1"_s << QByteArray("/a.pdf?x=1");
        QTest::newRow("not encoded")
            << u"/my file ü.pdf"_s << QByteArray("/my%20file%20%C3%BC.pdf");
        QTest::newRow("encoded") << u"/my%20file.pdf"_s << QByteArray("/my%20file.pdf");
        QTest::newRow("half encoded") << u"/a%20b c"_s << QByteArray("/a%20b%20c");
        QTest::newRow("a scheme in capitals is relative")
            << u"HTTP://h/a"_s << QByteArray("/HTTP://h/a");
        QTest::newRow("a fragment is a part of the path") << u"/a#b"_s << QByteArray("/a%23b");
        QTest::newRow("an encoded slash is a slash") << u"/a%2Fb"_s << QByteArray("/a/b");
        QTest::newRow("dots stay") << u"/a/./../b/.."_s << QByteArray("/a/./../b/..");
    }
    void makesAddresses()
    {
        QFETCH(QString, address);
        const auto before = server.requests().size();
        replies({{u"url"_s, address.replace(u"{server}"_s, server.url(QString()))}});
        QCOMPARE(server.requests().size(), before + 1);
        QTEST(server.requests().last().target, "target");
    }

    void beginsWithTheDefaults()
    {
        const ZelkamMobileFileDownloadUtil engine;
        QVERIFY(engine.fileOpen() && engine.showProgress() && !engine.pluginObj.get());
        QVERIFY(!engine.showNotify() && !engine.shareFile() && !engine.saveAlbum());
        QVERIFY(!engine.fileName() && engine.httpHeaders().isEmpty());
        QVERIFY(engine.requestData().isEmpty());
        QCOMPARE(engine.requestType() + engine.dataType(), u"getapplication/json"_s);
    }

    void makesRequests_data()
    {
        QTest::addColumn<QVariantMap>("options");
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("body");
        const QByteArray json = "application/json";
        const QVariantMap data{{u"a"_s, u"1 &ü"_s}, {u"n"_s, 5}, {u"o"_s, QVariantMap()}};
        QTest::newRow("no options") << QVariantMap() << QByteArray("GET") << json << QByteArray();
        QTest::newRow("GET ignores the data")
            << QVariantMap{{u"requestType"_s, u"get"_s}, {u"data"_s, data}} << QByteArray("GET")
            << json << QByteArray();
        QTest::newRow("PUT is GET") << QVariantMap{{u"requestType"_s, u"put"_s}}
                                    << QByteArray("GET") << json << QByteArray();
        QTest::newRow("POST in mixed case, as JSON")
            << QVariantMap{{u"requestType"_s, u"PoSt"_s}, {u"data"_s, data}} << QByteArray("POST")
            << json << QByteArray("{\"a\":\"1 &ü\",\"n\":5,\"o\":{}}");
        QTest::newRow("POST of nothing, as JSON")
            << QVariantMap{{u"requestType"_s, u"post"_s}, {u"data"_s, u"text"_s}}
            << QByteArray("POST") << json << QByteArray("{}");
        const QString form = u"application/x-www-form-urlencoded"_s;
        QTest::newRow("POST as a form, not encoded, without what is no text")
            << QVariantMap{{u"requestType"_s, u"post"_s}, {u"dataType"_s, form}, {u"data"_s, data}}
            << QByteArray("POST") << form.toLatin1() << QByteArray("a=1 &ü&n=&o=&");
        QTest::newRow("an empty form")
            << QVariantMap{{u"requestType"_s, u"post"_s}, {u"dataType"_s, form}}
            << QByteArray("POST") << form.toLatin1() << QByteArray();
        QTest::newRow("a form with a charset is no form")
            << QVariantMap{{u"requestType"_s, u"post"_s}, {u"dataType"_s, form + u";charset=x"_s}}
            << QByteArray("POST") << form.toLatin1() + ";charset=x" << QByteArray("{}");
        QTest::newRow("a header of the page's own replaces the type")
            << QVariantMap{{u"httpHeaders"_s, QVariantMap{{u"content-type"_s, u"text/plain"_s}}}}
            << QByteArray("GET") << QByteArray("text/plain") << QByteArray();
        QTest::newRow("one header that is no text spoils them all")
            << QVariantMap{{u"httpHeaders"_s,
                            QVariantMap{{u"content-type"_s, u"text/plain"_s}, {u"X-A"_s, 1}}}}
            << QByteArray("GET") << json << QByteArray();
    }
    void makesRequests()
    {
        QFETCH(QVariantMap, options);
        options.insert(get(u"/a.txt"_s));
        QCOMPARE(replies(options), QStringList{u"success"_s});
        const auto request = server.requests().last();
        QTEST(request.method, "method");
        QTEST(request.header("Content-Type"), "type");
        QTEST(request.body, "body");
    }

    void replies_data()
    {
        QTest::addColumn<QByteArray>("answer"); // "" for a server that is not there
        QTest::addColumn<QVariantMap>("options");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("indicatorStays");
        const auto row = [](const char *name, const QByteArray &answer, const QVariantMap &options,
                            const QStringList &expected, const QStringList &files, bool stays) {
            QTest::newRow(name) << answer << options << expected << files << stays;
        };
        const QByteArray ok = HttpTestServer::answer("x");
        const QVariantMap post{{u"requestType"_s, u"post"_s}};
        const QStringList none;
        const QStringList old{u"old"_s};
        row("an empty file", HttpTestServer::answer(""), {}, {u"success"_s}, {u"f"_s}, false);
        for (const int status : {201, 204, 206, 304, 404, 500}) {
            const QByteArray line = QByteArray::number(status) + " Status";
            const QByteArray answer = status == 204 || status == 304
                                          ? "HTTP/1.1 " + line + "\r\n\r\n"
                                          : HttpTestServer::answer("x", {}, line);
            row(qPrintable(u"GET and %1"_s.arg(status)), answer, {}, {getFailure}, none, false);
            row(qPrintable(u"POST and %1"_s.arg(status)), answer, post, {postFailure(status)}, none,
                false);
        }
        row("no server", "", {}, {noConnection}, none, true);
        row("a body cut short", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nx", {},
            {u"error NETWORK_RESPONSE_ERROR: The server sent only a part of the file."_s}, none,
            true);
        row("JSON that cannot be", ok,
            {{u"requestType"_s, u"post"_s}, {u"data"_s, QVariantMap{{u"a"_s, qQNaN()}}}},
            {u"error INVALID_PARAM"_s, u"error INVALID_PARAM"_s}, none, false);
        row("JSON that cannot be, but is not sent", ok,
            {{u"data"_s, QVariantMap{{u"a"_s, qQNaN()}}}}, {u"success"_s}, {u"f"_s}, false);
        row("a header that cannot be", ok,
            {{u"httpHeaders"_s, QVariantMap{{u"X"_s, u"a\r\nY: b"_s}}}},
            {u"error NETWORK_RESPONSE_ERROR: The address or a header of the request is not valid."_s},
            none, true);
        const QStringList twice{u"error INVALID_PARAM"_s, u"error INVALID_PARAM"_s};
        row("no image for the album", ok, {{u"saveAlbum"_s, true}}, twice, {u"f"_s}, true);
        row("an image for the album", HttpTestServer::answer(png()), {{u"saveAlbum"_s, true}},
            {u"success"_s}, {u"f"_s}, false);
        const auto named = [](const QString &name) { return QVariantMap{{u"fileName"_s, name}}; };
        row("a name with escapes", ok, named(u"a%20%C3%BC.txt"_s), {u"success"_s}, {u"a ü.txt"_s},
            false);
        row("a name that cannot be decoded", ok, named(u"100%"_s), {getFailure}, none, true);
        row("a name that leads out", ok, named(u"../../x"_s), {getFailure}, none, true);
        row("a name that leads out, encoded", ok, named(u"%2e%2e%2fx"_s), {getFailure}, none, true);
        row("a name in a folder that is not there", ok, named(u"a/b"_s), {getFailure}, none, true);
        row("the folder itself", ok, named(u"."_s), {getFailure}, none, true);
        row("the folder above", ok, named(u".."_s), {getFailure}, none, true);
        row("an empty name", ok, named(u""_s), {getFailure}, none, true);
        row("a name of 300 characters", ok, named(QString(300, u'n')), {getFailure}, none, true);
        row("a name with a null", ok, named(u"a%00b"_s), {getFailure}, none, true);
        row("options of the wrong type", ok,
            {{u"saveAlbum"_s, u"true"_s}, {u"notify"_s, 1}, {u"requestType"_s, true}},
            {u"success"_s}, {u"f"_s}, false);
    }
    void replies()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QVariantMap, options);
        QFETCH(QStringList, expected);
        server.on("/f", answer);
        options.insert(answer.isEmpty() ? QVariantMap{{u"url"_s, u"http://127.0.0.1:1/f"_s}}
                                        : get(u"/f"_s));
        QCOMPARE(replies(options, int(expected.size())), expected);
        QTEST(downloads(), "files");
        QTEST(indicator(), "indicatorStays");
        // Nothing else lies in the container, and nothing was lost: the next download works.
        QTRY_COMPARE(QDir(NSTemporaryDirectory()).entryList(QDir::Files | QDir::Hidden),
                     QStringList());
        QCOMPARE(replies(get(u"/a.txt"_s)), QStringList{u"success"_s});
        QCOMPARE(content(u"a.txt"_s), "hello");
    }

    void namesFiles()
    {
        server.on("/d", HttpTestServer::answer(
                            "x", "Content-Disposition: attachment; filename=\"../r.pdf\"\r\n"));
        QCOMPARE(replies(get(u"/d"_s)), QStringList{u"success"_s});
        QCOMPARE(downloads().size(), 1);
        QVERIFY(downloads().first().endsWith(u"r.pdf"_s));
        QFile::remove(downloadFolder() + downloads().first());

        server.on("/", HttpTestServer::answer("x", "Content-Type: x-a/b\r\n"));
        QCOMPARE(replies(get(u"/"_s)), QStringList{u"success"_s});
        static const QRegularExpression stamp(u"^1[0-9]{12}\\.[0-9]+$"_s);
        QVERIFY2(stamp.match(downloads().value(0)).hasMatch(), qPrintable(downloads().value(0)));
    }

    void replacesAnEarlierFileAndLosesItToAFailure()
    {
        server.on("/f", HttpTestServer::answer("first"));
        replies(get(u"/f"_s));
        server.on("/f", HttpTestServer::answer("second"));
        replies(get(u"/f"_s));
        QCOMPARE(content(u"f"_s), "second");
        server.on("/f", HttpTestServer::answer("x", {}, "404 Not Found"));
        QCOMPARE(replies(get(u"/f"_s)), QStringList{getFailure});
        QCOMPARE(content(u"f"_s), "(no file)");
    }

    void failsWhereTheFolderCannotBe()
    {
        QVERIFY(QFile::link(root->path(), NSTemporaryDirectory() + u"Download"_s));
        auto options = get(u"/a.txt"_s);
        options.insert(u"requestType"_s, u"post"_s);
        QCOMPARE(replies(options), QStringList{getFailure}); // the GET wording, whatever the method
        QVERIFY(!QFile::exists(root->filePath(u"a.txt"_s)));
    }

    void storesCookiesAndSendsThemAll()
    {
        server.on("/set", HttpTestServer::answer(
                              "x", "Set-Cookie: a=1; HttpOnly\r\nSet-Cookie: JSESSIONID=no\r\n"
                                   "Set-Cookie: JSESSIONID=yes; Domain=127.0.0.1; Path=/x\r\n"
                                   "Set-Cookie: other=2; Domain=example.org\r\n"));
        QCOMPARE(replies(get(u"/set"_s)), QStringList{u"success"_s});
        auto options = get(u"/a.txt"_s);
        options.insert(u"httpHeaders"_s, QVariantMap{{u"Cookie"_s, u"page=own"_s}});
        replies(options);
        QCOMPARE(server.requests().last().header("Cookie"), "a=1; JSESSIONID=yes; other=2");

        server.on("/fail", HttpTestServer::answer("x", "Set-Cookie: b=1\r\n", "404 Not Found"));
        replies(get(u"/fail"_s));
        QCOMPARE(HTTPCookieStorage::shared().cookies()->size(), 3);
    }

    void keepsThePagesOwnCookieHeaderWhenTheStoreIsEmpty()
    {
        auto options = get(u"/a.txt"_s);
        options.insert(u"httpHeaders"_s, QVariantMap{{u"Cookie"_s, u"page=own"_s}});
        replies(options);
        QCOMPARE(server.requests().last().header("Cookie"), "page=own");
    }

    void carriesSuggestedNamesToTheAlbumAndThePreview_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name : {"my picture.png", "50% off.png", "what?.png", "C#[1] 100%41.png",
                                 " !\"$&'()*+,-.:;<=>@^_`{|}~.png"})
            QTest::newRow(name) << QByteArray(name);
    }
    void carriesSuggestedNamesToTheAlbumAndThePreview()
    {
        QFETCH(QByteArray, name);
        server.on("/i", HttpTestServer::answer(png(), "Content-Disposition: a; filename=\"" +
                                                          name.replace('"', "\\\"") + "\"\r\n"));
        auto options = get(u"/i"_s);
        options.insert(u"saveAlbum"_s, true);
        const auto call = start(options);
        QTRY_VERIFY(page->presentedViewController());
        QCOMPARE(toastTexts(), QStringList());
        QTRY_COMPARE(call->replies(), QStringList{u"success"_s});
        QVERIFY(waitForAlbumWrites(std::chrono::seconds(10)));
        QCOMPARE(QDir(picturesDirectory()).entryList(QDir::Files).size(), 1);
        const auto preview = std::dynamic_pointer_cast<ZelkamMobileContentsPreViewVC>(
            page->presentedViewController());
        QVERIFY(QFileInfo(preview->filePath->path()).isFile());
    }

    void readsNoMoreThanAPictureForTheAlbum_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<int>("mebibytes");
        QTest::newRow("no picture") << QByteArray() << 100;
        QTest::newRow("a picture that is longer than any") << png() << 256;
    }
    void readsNoMoreThanAPictureForTheAlbum()
    {
        QFETCH(QByteArray, head);
        QFETCH(int, mebibytes);
        server.on("/large", [&](const auto &, auto &connection) {
            connection.send("HTTP/1.1 200 OK\r\n\r\n" + head);
            for (int i = 0; i < mebibytes; ++i)
                connection.send(QByteArray(1 << 20, '\0'));
        });
        const auto peakMemory = [] {
            rusage usage{};
            ::getrusage(RUSAGE_SELF, &usage);
            return usage.ru_maxrss / 1024; // MiB
        };
        const auto before = peakMemory();
        auto options = get(u"/large"_s);
        options.insert(u"saveAlbum"_s, true);
        const QString refused = u"error INVALID_PARAM"_s;
        QCOMPARE(replies(options, 2), QStringList({refused, refused}));
        QVERIFY2(peakMemory() - before < 50, qPrintable(QString::number(peakMemory() - before)));
    }

    void fiftyDownloadsOfOneNameLeaveOneFile()
    {
        const auto options = get(u"/a.txt"_s);
        for (int i = 0; i < 49; ++i)
            start(QVariantMap{{u"url"_s, server.url(u"/a.txt"_s)}, {u"open"_s, false}});
        const QStringList got = replies(options, 50); // those of all, as it is the last call
        QCOMPARE(got.count(u"success"_s) + got.count(getFailure), 50);
        QVERIFY(got.contains(u"success"_s));
        QCOMPARE(downloads(), QStringList{u"a.txt"_s});
        QCOMPARE(content(u"a.txt"_s), "hello");
        QCOMPARE(QDir(NSTemporaryDirectory()).entryList(QDir::Files | QDir::Hidden), QStringList());
    }

    void redirectsReachThePagesOwnServer()
    {
        if (!ownNetwork)
            QSKIP("This process may not make a network namespace.");
        HttpTestServer open(true);
        open.on("/", HttpTestServer::redirect("302 F", server.url(u"/a.txt"_s)));
        const QVariantMap options{{u"url"_s, open.url(u"/"_s, u"203.0.113.1"_s)}};
        QCOMPARE(replies(options), QStringList{u"success"_s});
        ZelkamMobileData::shared().setOptions(u"view"_s, WebViewOptions{open.url(QString())});
        const QString refused = u"error NETWORK_RESPONSE_ERROR: The server redirected the request "
                                "to a place that is not allowed."_s;
        QCOMPARE(replies(options), QStringList{refused});
    }

    void toastNamesTheFileAsOneLine()
    {
        auto options = get(u"/a.txt"_s);
        options.insert(
            {{u"notify"_s, true},
             {u"open"_s, false},
             {u"fileName"_s, u"\u202Eb\n\u2028\u200Dc\u00AD\U0001F468\u200D\U0001F469\u200D.x"_s}});
        replies(options);
        QCOMPARE(toastTexts(),
                 QStringList{u"bc\U0001F468\u200D\U0001F469.x has been downloaded."_s});
    }

    void showsThePreviewOverTheScreenThatIsUp()
    {
        const auto up = std::make_shared<UIViewController>();
        page->present(up, false);
        const auto call = start(get(u"/a.txt"_s));
        QTRY_COMPARE(call->replies(), QStringList{u"success"_s});
        QVERIFY(dynamic_cast<ZelkamMobileContentsPreViewVC *>(up->presentedViewController().get()));
    }

    void showsTheToastAndThenThePreview()
    {
        auto options = get(u"/a.txt"_s);
        options.insert({{u"notify"_s, true}, {u"share"_s, true}, {u"fileName"_s, u"%61.txt"_s}});
        const auto call = start(options);
        QVERIFY(!indicator()); // not at once, but from the main queue
        QTRY_VERIFY(page->presentedViewController());
        QVERIFY(call->replies().isEmpty()); // not before the screen has come up
        QCOMPARE(toastTexts(), QStringList{u"%61.txt has been downloaded."_s});
        QTRY_COMPARE(call->replies(), QStringList{u"success"_s});
        QTRY_VERIFY(page->view()->findChild<ToastTimer *>()); // it has faded in
        QCOMPARE(page->view()->findChild<ToastTimer *>()->interval(), 500);
        const auto preview = std::dynamic_pointer_cast<ZelkamMobileContentsPreViewVC>(
            page->presentedViewController());
        QVERIFY(preview);
        QCOMPARE(preview->filePath->path(), downloadFolder() + u"a.txt"_s);
        QVERIFY(preview->shareOpt);
        const auto others =
            QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(downloadFolder() + u"a.txt"_s) & others));
        QCOMPARE(preview->modalPresentationStyle, UIModalPresentationStyle::overFullScreen);
        QVERIFY(indicator() == false);
    }

    void tellsNoSecretToPageOrLog()
    {
        HTTPCookieStorage::shared().setCookie(
            HTTPCookie(u"sid"_s, u"canary-cookie"_s, u"127.0.0.1"_s, {}));
        const QByteArray cookie = "Set-Cookie: set=canary-set\r\n";
        const auto to = [&](const QString &target) {
            return HttpTestServer::redirect("302 F", target, cookie);
        };
        const QList<QByteArray> answers{
            HttpTestServer::answer("x", cookie),
            HttpTestServer::answer("x", cookie, "404 N"),
            HttpTestServer::answer("x", "Content-Length: 9\r\n" + cookie),
            "canary-garbage",
            HttpTestServer::answer("x", "Content-Encoding: gzip\r\n" + cookie),
            "",
            "HTTP/1.1 200 OK\r\nX: " + QByteArray("canary-x").repeated(99'999) + "\r\n\r\n",
            to(u"/canary-path"_s),
            to(u"http://127.0.0.1:1/canary-path"_s),
            to(u"canary:a"_s)};
        QFile log(root->filePath(u"log"_s));
        QVERIFY(log.open(QIODevice::ReadWrite));
        const int out = ::dup(STDOUT_FILENO);
        const int err = ::dup(STDERR_FILENO);
        ::dup2(log.handle(), STDOUT_FILENO);
        ::dup2(log.handle(), STDERR_FILENO);
        const auto before =
            qInstallMessageHandler([](QtMsgType, const auto &, const QString &text) {
                std::fprintf(stderr, "%s\n", qPrintable(text));
            });
        QStringList told;
        for (const QByteArray &answer : answers) {
            server.on("/canary-path", answer);
            for (const char *method : {"get", "post"}) {
                auto options = get(u"/canary-path?canary-query"_s);
                options[u"url"_s] =
                    options[u"url"_s].toString().replace(u"//"_s, u"//canary-user:canary-pass@"_s);
                options.insert(
                    {{u"httpHeaders"_s, QVariantMap{{u"Authorization"_s, u"canary-token"_s}}},
                     {u"data"_s, QVariantMap{{u"key"_s, u"canary-data"_s}}},
                     {u"requestType"_s, QString::fromLatin1(method)},
                     {u"fileName"_s, u"f"_s}});
                told += replies(options);
            }
        }
        qInstallMessageHandler(before);
        std::fflush(stdout);
        ::dup2(out, STDOUT_FILENO);
        ::dup2(err, STDERR_FILENO);
        ::close(out);
        ::close(err);
        QCOMPARE(told.size(), 2 * answers.size());
        QCOMPARE(told.count(u"success"_s), 2);
        QVERIFY2(!told.join(u'\n').contains(u"canary"_s), qPrintable(told.join(u'\n')));
        log.seek(0);
        const QByteArray logged = log.readAll();
        QVERIFY(logged.contains("saveFile(url:_:)") && logged.contains("URLError."));
        QVERIFY2(!logged.contains("canary"), logged.constData());
    }

    void saysSoWhenThereIsNothingToPresentFrom()
    {
        window.reset();
        const auto call = start(get(u"/a.txt"_s));
        QTRY_COMPARE(call->replies(),
                     QStringList{u"error OBJECT_REFERENCE_FAILED: not found rootVC"_s});
    }

    void aSecondCallTakesOverTheFirst()
    {
        server.on("/slow", [](const auto &, auto &connection) {
            connection.pause(std::chrono::milliseconds(300));
            connection.send(HttpTestServer::answer("slow"));
        });
        auto options = get(u"/slow"_s);
        options.insert(u"open"_s, false);
        const std::weak_ptr<RecordingCall> first = start(options);
        options = get(u"/a.txt"_s);
        options.insert(u"open"_s, false);
        const auto second = start(options);
        QVERIFY(first.expired()); // nobody holds it: the host tells its page that no reply comes
        QTRY_COMPARE(second->replies().size(), 2);
        QCOMPARE(downloads(), QStringList({u"a.txt"_s, u"slow"_s}));
    }
};

QTEST_MAIN(TestFileDownload)
#include "tst_file_download.moc"
