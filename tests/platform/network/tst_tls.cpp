// A test of its own, as the thread sanitizer allows no new threads after the fork of a process.
#include "download_probe.h"

#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestTls : public QObject
{
    Q_OBJECT

private slots:
    void untrustedCertificateIsRefused()
    {
        QTemporaryDir folder;
        const QString key = folder.filePath(u"key.pem"_s);
        const QString certificate = folder.filePath(u"certificate.pem"_s);
        const QString openssl = u"openssl"_s;
        const QString make = QStringLiteral("req -x509 -newkey rsa:2048 -nodes -days 1 "
                                            "-subj /CN=127.0.0.1 -keyout %1 -out %2");
        QCOMPARE(QProcess::execute(openssl, make.arg(key, certificate).split(u' ')), 0);
        QProcess server;
        server.start(openssl,
                     u"s_server -accept 127.0.0.1:0 -www -key %1 -cert %2"_s.arg(key, certificate)
                         .split(u' '));
        QByteArray printed;
        while (!printed.contains("ACCEPT") || !printed.endsWith('\n')) {
            QVERIFY(server.waitForReadyRead());
            printed += server.readAllStandardOutput();
        }
        const int port = printed.trimmed().split(':').last().toInt();
        const QString address = u"https://127.0.0.1:%1/"_s.arg(port);
        QCOMPARE(download(requestFor(address)).code(),
                 zelkam::URLError::Code::serverCertificateUntrusted);
        server.kill();
        QVERIFY(server.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestTls)
#include "tst_tls.moc"
