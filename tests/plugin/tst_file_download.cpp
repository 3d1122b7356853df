#include "host/zelkam_mobile_data.h"
#include "platform/foundation/bundle.h"
#include "platform/network/connectivity.h"
#include "platform/network/http_cookie_storage.h"
#include "platform/ui/ui_application.h"
#include "plugin/plugin_on_screen.h"
#include "preview/zelkam_mobile_contents_pre_view_vc.h"
#include "support/captured_output.h"
#include "support/data_table.h"
#include "support/http_test_server.h"
#include "support/own_network.h"
#include "toast/toast_completion.h"

#include <QAccessible>
#include <atomic>
#include <sys/resource.h>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

const QString getFailure = u"error 2043: Failed to download file using GET method"_s;
class WebView : public HostWebView
{
public:
    QString webViewId() const override { return u"view"_s; }
};

QByteArray png()
{
    return sample::image({8, 8}, "png");
}

} // namespace

/// The command against a real server, with real files and screens.
class TestFileDownload : public PluginOnScreen
{
    Q_OBJECT

private:
    const bool ownNetwork = enterOwnNetwork({"203.0.113.1"}); // before the server is there
    HttpTestServer server;
    WebView webView;

    std::shared_ptr<RecordingCall> start(const std::optional<QVariantMap> &arguments)
    {
        return call("fileDownload", arguments);
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
    QByteArray content(const QString &name) const { return sample::read(downloadFolder() + name); }
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
        begin();
        setMotionReduced(false);
        plugin->setWebView(&webView);
        ZelkamMobileData::shared().setOptions(u"view"_s, WebViewOptions{server.url(QString())});
        UIApplication::shared().setNetworkActivityIndicatorVisible(false);
        server.on("/a.txt", HttpTestServer::answer("hello"));
    }
    void cleanup()
    {
        QVERIFY(!indicatorSwitchedElsewhere.exchange(false));
        end();
        const auto cookies = HTTPCookieStorage::shared().cookies().value();
        for (const auto &cookie : cookies)
            HTTPCookieStorage::shared().deleteCookie(cookie);
    }

    void refusesArguments_data()
    {
        addRows({"plugin/file_download.json"});
        const QJsonObject half{{u"url"_s, u"/"_s + QChar(0xD800)}};
        QTest::newRow("half a surrogate pair") << QJsonObject{{u"arguments"_s, half}};
    }
    void refusesArguments()
    {
        const Row row;
        if (row.is("isViewUnknown"))
            ZelkamMobileData::shared().setOptions(u"view"_s, std::nullopt);
        const auto before = server.requests().size();
        const auto call =
            start(row["arguments"].isObject() ? std::optional(row.map("arguments")) : std::nullopt);
        QCOMPARE(call->replies(), QStringList{u"error INVALID_PARAM"_s});
        QCOMPARE(plugin->currentCallBack(), call);
        QCOMPARE(server.requests().size(), before);
    }

    void makesAddresses_data() { addRows({"plugin/file_download.json"}); }
    void makesAddresses()
    {
        const Row row;
        const QString address = row.text("address");
        const auto before = server.requests().size();
        replies({{u"url"_s, QString(address).replace(u"{server}"_s, server.url(QString()))}});
        QCOMPARE(server.requests().size(), before + 1);
        QCOMPARE(server.requests().last().target, row.text("target").toUtf8());
    }

    void makesRequests_data() { addRows({"plugin/file_download.json"}); }
    void makesRequests()
    {
        const Row row;
        QVariantMap options = row.map("options");
        options.insert(get(u"/a.txt"_s));
        QCOMPARE(replies(options), QStringList{u"success"_s});
        const auto request = server.requests().last();
        QCOMPARE(request.method, row.text("method").toUtf8());
        QCOMPARE(request.header("Content-Type"), row.text("type").toUtf8());
        QCOMPARE(request.body, row.text("body").toUtf8());
    }

    void replies_data()
    {
        addRows({"plugin/file_download.json"});
        const auto row = [](const char *name, const QJsonObject &options, const QJsonArray &replies,
                            QJsonObject more = {}) {
            more.insert(u"options"_s, options);
            more.insert(u"replies"_s, replies);
            QTest::newRow(name) << more;
        };
        const QString success = u"success"_s;
        const QString invalid = u"error INVALID_PARAM"_s;
        const QJsonObject notANumber{{u"a"_s, qQNaN()}};
        row("JSON that cannot be", {{u"requestType"_s, u"post"_s}, {u"data"_s, notANumber}},
            {invalid, invalid});
        row("JSON that cannot be, but is not sent", {{u"data"_s, notANumber}}, {success},
            {{u"file"_s, u"f"_s}});
        row("a name of 300 characters", {{u"fileName"_s, QString(300, u'n')}}, {getFailure},
            {{u"indicatorStays"_s, true}});
        row("an image for the album", {{u"saveAlbum"_s, true}}, {success},
            {{u"file"_s, u"f"_s},
             {u"answer"_s, QString::fromLatin1(HttpTestServer::answer(png()))}});
    }
    void replies()
    {
        const Row row;
        server.on(
            "/f",
            row["answer"].toString(QString::fromLatin1(HttpTestServer::answer("x"))).toLatin1());
        QVariantMap options = get(u"/f"_s);
        options.insert(row.map("options"));
        const QStringList expected = row.texts("replies");
        QCOMPARE(replies(options, int(expected.size())), expected);
        QCOMPARE(downloads().join(u','), row.text("file"));
        QCOMPARE(indicator(), row.is("indicatorStays"));
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
        const auto sentWithThePagesOwn = [this] {
            auto options = get(u"/a.txt"_s);
            options.insert(u"httpHeaders"_s, QVariantMap{{u"Cookie"_s, u"page=own"_s}});
            replies(options);
            return server.requests().last().header("Cookie");
        };
        QCOMPARE(sentWithThePagesOwn(), "page=own");
        server.on("/set", HttpTestServer::answer(
                              "x", "Set-Cookie: a=1; HttpOnly\r\nSet-Cookie: JSESSIONID=no\r\n"
                                   "Set-Cookie: JSESSIONID=yes; Domain=127.0.0.1; Path=/x\r\n"
                                   "Set-Cookie: other=2; Domain=example.org\r\n"));
        QCOMPARE(replies(get(u"/set"_s)), QStringList{u"success"_s});
        QCOMPARE(sentWithThePagesOwn(), "a=1; JSESSIONID=yes; other=2");

        server.on("/fail", HttpTestServer::answer("x", "Set-Cookie: b=1\r\n", "404 Not Found"));
        replies(get(u"/fail"_s));
        QCOMPARE(HTTPCookieStorage::shared().cookies()->size(), 3);
    }

    void carriesSuggestedNamesToTheAlbumAndThePreview_data()
    {
        addRows({"plugin/file_download.json"});
    }
    void carriesSuggestedNamesToTheAlbumAndThePreview()
    {
        QByteArray name = QTest::currentDataTag();
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
        server.on("/large", [head, mebibytes](const auto &, auto &connection) {
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
        auto options = get(u"/a.txt"_s);
        options.insert(u"open"_s, false);
        const std::weak_ptr<RecordingCall> first = start(options);
        for (int i = 0; i < 48; ++i)
            start(options);
        QVERIFY(first.expired()); // nobody holds it: the host tells its page that no reply comes
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

    void showsNothingWhenTheCallerHasGone()
    {
        auto options = get(u"/a.txt"_s);
        options.insert(u"notify"_s, true);
        const auto call = start(options);
        for (int i = 0; i < 1000 && downloads().isEmpty(); ++i)
            QThread::msleep(10); // the rest waits for this thread
        QCOMPARE(downloads(), QStringList{u"a.txt"_s});
        plugin->invalidate();
        QTest::qWait(50);
        QVERIFY(toastTexts().isEmpty() && !page->presentedViewController());
        QCOMPARE(call->replies(), QStringList());
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

    void tellsNoSecretToPageOrLog_data() { addRows({"plugin/file_download.json"}); }
    void tellsNoSecretToPageOrLog()
    {
        HTTPCookieStorage::shared().setCookie(
            HTTPCookie(u"sid"_s, u"canary-cookie"_s, u"127.0.0.1"_s, {}));
        QStringList answers = Row().texts("answers");
        answers.append(u"HTTP/1.1 200 OK\r\nX: "_s + u"canary-x"_s.repeated(99'999) +
                       u"\r\n\r\n"_s);
        CapturedOutput output;
        const auto before =
            qInstallMessageHandler([](QtMsgType, const auto &, const QString &text) {
                std::fprintf(stderr, "%s\n", qPrintable(text));
            });
        QStringList told;
        for (const QString &answer : answers) {
            server.on("/canary-path", answer.toLatin1());
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
        const QByteArray logged = output.read();
        QCOMPARE(told.size(), 2 * answers.size());
        QCOMPARE(told.count(u"success"_s), 2);
        QVERIFY2(!told.join(u'\n').contains(u"canary"_s), qPrintable(told.join(u'\n')));
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
};

QTEST_MAIN(TestFileDownload)
#include "tst_file_download.moc"
