#include "app/script_bridge.h"

#include "support/data_table.h"

#include <thread>
#include <vector>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

const WebOrigin allowed = *WebOrigin::fromText(u"https://a.example"_s);
const WebOrigin foreign = *WebOrigin::fromText(u"https://a.example:8443"_s);

} // namespace

class Plugin : public ZelkamMobilePlugin
{
    Q_OBJECT

public:
    Q_INVOKABLE void echo(zelkam::CallBackManagerPtr call)
    {
        call->success(call->argumentDic().value_or(QVariantMap()), false);
    }
    Q_INVOKABLE void hold(zelkam::CallBackManagerPtr call) { held = std::move(call); }
    Q_INVOKABLE void noCommand(const QString &) { QFAIL("called with a text"); }
    void hidden(zelkam::CallBackManagerPtr) { QFAIL("not invokable"); }

    CallBackManagerPtr held;
};

class TestScriptBridge : public QObject
{
    Q_OBJECT

    std::shared_ptr<Plugin> m_plugin;
    std::unique_ptr<ScriptBridge> m_bridge;
    QByteArray m_token;

    QJsonArray replies()
    {
        const auto body = m_bridge->takeReplies(m_token, allowed);
        return body ? QJsonDocument::fromJson(body->first())[u"replies"_s].toArray() : QJsonArray();
    }

private slots:
    void init()
    {
        m_bridge = std::make_unique<ScriptBridge>(AllowedOrigins{allowed}, nullptr);
        m_bridge->addPlugin([this](const WebOrigin &origin) {
            Q_ASSERT(origin == allowed);
            m_plugin = makePlugin<Plugin>();
            return m_plugin;
        });
        m_token = m_bridge->openSession(allowed).value_or(QByteArray());
        QVERIFY(!m_token.isEmpty());
    }

    void onlyAnAllowedOriginGetsASession()
    {
        QVERIFY(!m_bridge->openSession(foreign));
        // What looks like "https://a.example", or is read as that by somebody.
        const auto urls = QJsonDocument::fromJson(dataFile(u"app/foreign_origins.json"_s)).array();
        QVERIFY(!urls.isEmpty());
        for (const auto &url : urls)
            QVERIFY2(!m_bridge->openSession(WebOrigin::fromUrl(QUrl(url.toString()))),
                     qPrintable(url.toString()));
        for (const char *url : {"HTTPS://A.example:443/x", "https://u:p@a.example/"})
            QVERIFY2(m_bridge->openSession(WebOrigin::fromUrl(QUrl(QString::fromUtf8(url)))), url);
    }

    void aDocumentOpensNoSessionsWithoutEnd()
    {
        int opened = 1;
        while (opened < 1000 && m_bridge->openSession(allowed))
            ++opened;
        QVERIFY(opened < 100);
        m_bridge->endSessions();
        QVERIFY(m_bridge->openSession(allowed));
    }

    void onlyADocumentWithASessionClosesTheWindow()
    {
        QSignalSpy closes(m_bridge.get(), &ScriptBridge::closeRequested);
        for (const QString &token : {u""_s, u"guessed"_s, QString::fromLatin1(m_token)}) {
            QCOMPARE(closes.size(), 0);
            m_bridge->channel()->close(token);
        }
        QCOMPARE(closes.size(), 1);
    }

    void aPartOfALongTextIsGivenOnce()
    {
        m_bridge->call(m_token, 1, u"hold"_s, u"[{}]"_s, {});
        const QByteArray text = QByteArray(1'000'000, 'a') + QByteArray(1'000'001, 'b');
        m_plugin->held->success(text, false);
        replies();
        QVERIFY(!m_bridge->takePart(m_token, 0, 0, foreign));
        QByteArray taken;
        for (int part = -1; part <= keptTextParts; ++part) {
            const auto given = m_bridge->takePart(m_token, 0, part, allowed);
            QCOMPARE(given.has_value(), part >= 0 && part < keptTextParts);
            if (given)
                taken += given->text.mid(given->start, given->size);
            QVERIFY(!m_bridge->takePart(m_token, 0, part, allowed));
            QVERIFY(!m_bridge->takePart(m_token, 1, part, allowed));
        }
        QCOMPARE(taken, text);
    }

    void aTokenIsOfNoUseToAnotherOrigin()
    {
        m_bridge->call(m_token, 1, u"echo"_s, u"[{}]"_s, {});
        QVERIFY(!m_bridge->takeReplies(m_token, foreign));
        QVERIFY(!m_bridge->takeReplies(m_token, std::nullopt));
        QVERIFY(!m_bridge->takeReplies("guessed"_ba, allowed));
        QCOMPARE(replies().size(), 2);
    }

    void onlyCommandsAreReached()
    {
        for (const QString &name :
             {u"noCommand"_s, u"hidden"_s, u"deleteLater"_s, u"setViewController"_s,
              u"setCurrentCallBack"_s, u"currentCallBack"_s, u"Echo"_s,
              u"echo(zelkam::CallBackManagerPtr)"_s, u""_s}) {
            m_bridge->call(m_token, 1, name, u"[{}]"_s, {});
            QCOMPARE(replies().first()[u"reply"_s][u"status"_s].toString(), u"COMMAND_NOT_FOUND"_s);
        }
    }

    void aLeftDocumentGetsNothingAndLeavesNothing()
    {
        m_bridge->call(m_token, 1, u"hold"_s, u"[{}]"_s, {});
        const auto left = m_plugin;
        m_bridge->channel()->begin();
        QVERIFY(left->isInvalidated());
        QSignalSpy wakes(m_bridge->channel(), &ScriptChannel::repliesWait);
        const QByteArray next = m_bridge->openSession(allowed).value();
        m_bridge->call(next, 1, u"hold"_s, u"[{}]"_s, {});
        QVERIFY(m_plugin != left && !m_plugin->isInvalidated());
        // The plug-in of the last document replies to the last document's call only.
        left->held->success(false);
        left->held.reset();
        QVERIFY(!m_bridge->takeReplies(m_token, allowed));
        m_bridge->call(m_token, 2, u"echo"_s, u"[{}]"_s, {});
        QCoreApplication::processEvents();
        QCOMPARE(wakes.size(), 0);
        m_token = next;
        QVERIFY(replies().isEmpty());
        m_bridge->showsOrigin(allowed);
        QVERIFY(!m_plugin->isInvalidated());
        m_bridge->showsOrigin(foreign); // where no script may begin
        QVERIFY(m_plugin->isInvalidated());
    }

    void repliesFromManyThreadsKeepTheOrderOfEach()
    {
        constexpr int threads = 4;
        constexpr int each = 200;
        m_bridge->call(m_token, 1, u"hold"_s, u"[{}]"_s, {});
        std::vector<std::thread> workers;
        for (int t = 0; t < threads; ++t) {
            workers.emplace_back([call = m_plugin->held, t] {
                for (int i = 0; i < each; ++i)
                    call->success(QVariantList{t, i}, true);
            });
        }
        QJsonArray taken;
        const auto collect = [&] {
            const QJsonArray some = replies();
            for (const QJsonValue &reply : some)
                taken.append(reply);
            return taken.size() == threads * each;
        };
        QTRY_VERIFY(collect());
        for (std::thread &worker : workers)
            worker.join();
        QList<int> next(threads, 0);
        for (const QJsonValue &reply : std::as_const(taken)) {
            const QJsonValue data = reply[u"reply"_s][u"data"_s];
            QCOMPARE(data[1].toInt(), next[data[0].toInt()]++);
        }
    }
};

QTEST_GUILESS_MAIN(TestScriptBridge)
#include "tst_script_bridge.moc"
