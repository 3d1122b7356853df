#include "app/script_bridge.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>
#include <thread>
#include <vector>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

const WebOrigin allowed = *WebOrigin::fromText(u"https://a.example"_s);
const WebOrigin foreign = *WebOrigin::fromText(u"https://a.example:8443"_s);

} // namespace

class Plugin : public ZelkamMobilePlugin
{
    Q_OBJECT

public:
    CallBackManagerPtr currentCallBack() const override { return held; }

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
        m_plugin = makePlugin<Plugin>();
        m_bridge->addPlugin(m_plugin);
        m_token = m_bridge->openSession(allowed).value_or(QByteArray());
        QVERIFY(!m_token.isEmpty());
    }

    void onlyAnAllowedOriginGetsASession()
    {
        QVERIFY(!m_bridge->openSession(foreign));
        for (const char *url : {"http://a.example", "https://a.example.evil.example", "null",
                                "data:text/html,x", "about:blank", "file:///a.html", ""})
            QVERIFY2(!m_bridge->openSession(WebOrigin::fromUrl(QUrl(QString::fromLatin1(url)))),
                     url);
        QVERIFY(m_bridge->openSession(WebOrigin::fromUrl(QUrl(u"HTTPS://A.example:443/x"_s))));
    }

    void aTokenIsOfNoUseToAnotherOrigin()
    {
        m_bridge->call(m_token, 1, u"echo"_s, u"[{}]"_s, {});
        QVERIFY(!m_bridge->takeReplies(m_token, foreign));
        QVERIFY(!m_bridge->takeReplies(m_token, std::nullopt));
        QVERIFY(!m_bridge->takeReplies("guessed"_ba, allowed));
        QCOMPARE(replies().size(), 2);
    }

    void onlyCommandsAreReached_data()
    {
        QTest::addColumn<QString>("command");
        for (const QString &name :
             {u"noCommand"_s, u"hidden"_s, u"deleteLater"_s, u"setViewController"_s,
              u"currentCallBack"_s, u"Echo"_s, u"echo(zelkam::CallBackManagerPtr)"_s, u""_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void onlyCommandsAreReached()
    {
        QFETCH(QString, command);
        m_bridge->call(m_token, 1, command, u"[{}]"_s, {});
        QCOMPARE(replies().first()[u"reply"_s][u"status"_s].toString(), u"COMMAND_NOT_FOUND"_s);
    }

    void aCallThatIsLetGoSaysSo()
    {
        m_bridge->call(m_token, 1, u"hold"_s, u"[{}]"_s, {});
        QVERIFY(replies().isEmpty());
        m_bridge->call(m_token, 2, u"hold"_s, u"[{}]"_s, {});
        const QJsonArray taken = replies();
        QCOMPARE(taken.size(), 2);
        QCOMPARE(taken.at(0)[u"call"_s].toInt(), 1);
        QCOMPARE(taken.at(0)[u"reply"_s][u"status"_s].toString(), u"NO_REPLY"_s);
        QVERIFY(!taken.at(1).toObject().contains(u"reply"_s));
    }

    void repliesOfALeftDocumentAreDropped()
    {
        m_bridge->call(m_token, 1, u"hold"_s, u"[{}]"_s, {});
        m_bridge->channel()->begin();
        QSignalSpy wakes(m_bridge->channel(), &ScriptChannel::repliesWait);
        m_plugin->held->success(false);
        m_plugin->held.reset();
        QVERIFY(!m_bridge->takeReplies(m_token, allowed));
        m_bridge->call(m_token, 2, u"echo"_s, u"[{}]"_s, {});
        QCoreApplication::processEvents();
        QCOMPARE(wakes.size(), 0);
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
