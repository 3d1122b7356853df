// A test of its own, as the thread sanitizer allows no new threads after the fork of a process.
#include "download_probe.h"

#include <QProcess>
#include <QTemporaryDir>

class TestTls : public QObject
{
    Q_OBJECT

private slots:
    void untrustedCertificateIsRefused()
    {
        QTemporaryDir folder;
        const QString key = folder.filePath(QStringLiteral("key.pem"));
        const QString certificate = folder.filePath(QStringLiteral("certificate.pem"));
        const QString openssl = QStringLiteral("openssl");
        const QString make = QStringLiteral("req -x509 -newkey rsa:2048 -nodes -days 1 "
                                            "-subj /CN=127.0.0.1 -keyout %1 -out %2");
        QCOMPARE(QProcess::execute(openssl, make.arg(key, certificate).split(u' ')), 0);
        QProcess server;
        server.start(openssl, QStringLiteral("s_server -accept 127.0.0.1:0 -www -key %1 -cert %2")
                                  .arg(key, certificate)
                                  .split(u' '));
        QByteArray printed;
        while (!printed.contains("ACCEPT") || !printed.endsWith('\n')) {
            QVERIFY(server.waitForReadyRead());
            printed += server.readAllStandardOutput();
        }
        const int port = printed.trimmed().split(':').last().toInt();
        const QString address = QStringLiteral("https://127.0.0.1:%1/").arg(port);
        QCOMPARE(download(requestFor(address)).code(),
                 zelkam::URLError::Code::serverCertificateUntrusted);
        server.kill();
        QVERIFY(server.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestTls)
#include "tst_tls.moc"
