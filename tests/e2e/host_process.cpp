#include "host_process.h"

#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

int freePort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

HostProcess::HostProcess()
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this,
            [this] { m_output += m_process.readAllStandardOutput(); });
}

HostProcess::~HostProcess()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished(5000);
}

bool HostProcess::start(const QString &page, const QStringList &options)
{
    m_port = freePort();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QTWEBENGINE_REMOTE_DEBUGGING"_s, QString::number(m_port));
    environment.remove(u"DISPLAY"_s);
    // The web engine deletes its own objects by another size than it made them with, and leaves
    // some behind when the program ends.
    environment.insert(u"ASAN_OPTIONS"_s, u"new_delete_type_mismatch=0:detect_leaks=0"_s);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(ZELKAM_MOBILE),
                    QStringList{u"--offscreen"_s, u"--temp-dir"_s, temporaryDirectory(),
                                u"--pictures-dir"_s, picturesDirectory()} +
                        options + QStringList{page});
    for (int attempt = 0; attempt < 150; ++attempt) {
        if (m_process.state() == QProcess::NotRunning && attempt > 0)
            break;
        const QString address = debuggerAddress();
        if (!address.isEmpty()) {
            m_debugger.open(QUrl(address));
            if (QTest::qWaitFor(
                    [this] { return m_debugger.state() == QAbstractSocket::ConnectedState; }) &&
                run(u"return location.href + document.readyState"_s, 3000)
                    .toString()
                    .endsWith(u"complete"_s) &&
                run(u"return typeof ZelkamMobile"_s, 3000) == u"object"_s)
                return true;
            m_debugger.abort();
        }
        QTest::qWait(200);
    }
    QTest::qFail("the page did not come up", __FILE__, __LINE__);
    return false;
}

QString HostProcess::debuggerAddress()
{
    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(
        network.get(QNetworkRequest(QUrl(u"http://127.0.0.1:%1/json"_s.arg(m_port)))));
    QEventLoop loop;
    connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    const auto targets = QJsonDocument::fromJson(reply->readAll()).array();
    for (const auto &target : targets) {
        if (target.toObject().value(u"type"_s) == u"page"_s)
            return target.toObject().value(u"webSocketDebuggerUrl"_s).toString();
    }
    return {};
}

QJsonObject HostProcess::ask(const QString &method, const QJsonObject &parameters,
                             int timeoutMilliseconds)
{
    const int id = ++m_lastId;
    const QJsonObject request{{u"id"_s, id}, {u"method"_s, method}, {u"params"_s, parameters}};
    QEventLoop loop;
    QJsonObject answer;
    const auto connection =
        connect(&m_debugger, &QWebSocket::textMessageReceived, &loop, [&](const QString &text) {
            const auto message = QJsonDocument::fromJson(text.toUtf8()).object();
            if (message.value(u"id"_s) == id) {
                answer = message;
                loop.quit();
            }
        });
    QTimer::singleShot(timeoutMilliseconds, &loop, &QEventLoop::quit);
    m_debugger.sendTextMessage(
        QString::fromUtf8(QJsonDocument(request).toJson(QJsonDocument::Compact)));
    loop.exec();
    disconnect(connection);
    return answer;
}

QJsonValue HostProcess::run(const QString &body, int timeoutMilliseconds)
{
    const QString expression =
        u"(async () => { try { return (await (async () => { %1 })()) ?? null } catch (e) {"
        " return { rejected: { status: e.status ?? null, code: e.code ?? null,"
        " message: String(e.message) } } } })()"_s.arg(body);
    const QJsonObject answer =
        ask(u"Runtime.evaluate"_s,
            {{u"expression"_s, expression}, {u"awaitPromise"_s, true}, {u"returnByValue"_s, true}},
            timeoutMilliseconds);
    if (answer.isEmpty())
        return QJsonObject{{u"late"_s, true}};
    const auto result = answer.value(u"result"_s).toObject();
    if (result.contains(u"exceptionDetails"_s))
        return result;
    return result.value(u"result"_s).toObject().value(u"value"_s);
}

void HostProcess::click(int x, int y)
{
    for (const QString &type : {u"mousePressed"_s, u"mouseReleased"_s})
        ask(u"Input.dispatchMouseEvent"_s,
            {{u"type"_s, type},
             {u"x"_s, x},
             {u"y"_s, y},
             {u"button"_s, u"left"_s},
             {u"clickCount"_s, 1}},
            5000);
}

int HostProcess::waitForEnd(int timeoutMilliseconds)
{
    if (!QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; },
                         timeoutMilliseconds))
        return -1;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QStringList HostProcess::output()
{
    return QString::fromUtf8(m_output).split(u'\n', Qt::SkipEmptyParts);
}

bool HostProcess::waitForOutput(const QString &beginning, int timeoutMilliseconds)
{
    return QTest::qWaitFor(
        [&] {
            const auto lines = output();
            return std::any_of(lines.begin(), lines.end(),
                               [&](const QString &line) { return line.startsWith(beginning); });
        },
        timeoutMilliseconds);
}
