#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QWebSocket>
#include <memory>

/// The host application as its users have it: the built program, off screen, with a page in its
/// web view. Scripts run in the page through the debugging port, as a developer's would.
class HostProcess : public QObject
{
    Q_OBJECT

public:
    HostProcess();
    ~HostProcess() override;

    /// Starts the program on a page and waits until the page can be scripted. Fails the running
    /// test, and returns false, when that takes more than half a minute.
    bool start(const QString &page, const QStringList &options = {});

    /// Runs the body of an async function in the page ("return await ...") and gives what it
    /// returned. A rejection gives { "rejected": { status, code, message } }, and a script that has
    /// not returned in time { "late": true }.
    QJsonValue run(const QString &body, int timeoutMilliseconds = 20000);

    /// Clicks at a place of the page, in points, as a person does.
    void click(int x, int y);

    /// Waits for the program to end and gives its exit status; -1 when it does not end.
    int waitForEnd(int timeoutMilliseconds = 20000);

    /// What the program has written to standard output so far, as lines.
    QStringList output();
    /// Waits for a line of standard output that begins so.
    bool waitForOutput(const QString &beginning, int timeoutMilliseconds = 10000);

    QString temporaryDirectory() const { return m_root.filePath(QStringLiteral("tmp")); }
    QString picturesDirectory() const { return m_root.filePath(QStringLiteral("pictures")); }
    QString screenshotsDirectory() const { return m_root.filePath(QStringLiteral("screenshots")); }

private:
    QString debuggerAddress();
    /// Sends a command to the debugging port and gives its answer; empty when none came in time.
    QJsonObject ask(const QString &method, const QJsonObject &parameters, int timeoutMilliseconds);

    QTemporaryDir m_root;
    QProcess m_process;
    QWebSocket m_debugger;
    QByteArray m_output;
    int m_port = 0;
    int m_lastId = 0;
};
