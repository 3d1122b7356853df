// A test of its own, as the thread sanitizer allows no new threads after the fork of a process.
#include "download_probe.h"
#include "support/http_test_server.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <curl/curl.h>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(zelkam::URLError::Code)

namespace {

QByteArray authority; ///< the file of the one that is trusted besides those of the system

} // namespace

// The linker puts this in the place of curl's function, so the product needs no door for it.
extern "C" void __real_curl_easy_reset(CURL *handle);
extern "C" void __wrap_curl_easy_reset(CURL *handle)
{
    __real_curl_easy_reset(handle);
    curl_easy_setopt(handle, CURLOPT_CAINFO, authority.constData());
}

class TestTls : public QObject
{
    Q_OBJECT

private:
    using Code = zelkam::URLError::Code;
    QTemporaryDir m_folder;

    void openssl(const QString &arguments)
    {
        QProcess program;
        program.setWorkingDirectory(m_folder.path());
        program.start(u"openssl"_s, arguments.split(u' '));
        QVERIFY(program.waitForFinished());
        QVERIFY2(program.exitCode() == 0, program.readAllStandardError().constData());
    }
    void write(const QString &name, const QByteArray &content)
    {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    /// Serves files that hold whole answers, and gives its address without a path.
    QString serve(QProcess &server, const QString &certificate, const QString &options = {})
    {
        server.setWorkingDirectory(m_folder.path());
        const QString arguments =
            u"s_server -accept 127.0.0.1:0 -HTTP -key key.pem -cert %1 %2"_s.arg(certificate,
                                                                                 options);
        server.start(u"openssl"_s, arguments.split(u' ', Qt::SkipEmptyParts));
        QByteArray printed;
        while ((!printed.contains("ACCEPT") || !printed.endsWith('\n')) &&
               server.waitForReadyRead())
            printed += server.readAllStandardOutput();
        return u"https://127.0.0.1:%1/"_s.arg(printed.trimmed().split(':').last().toInt());
    }

private slots:
    void initTestCase()
    {
        // A system that allows every protocol there ever was.
        write(u"old.cnf"_s, "openssl_conf = c\n[c]\nssl_conf = s\n[s]\nsystem_default = d\n"
                            "[d]\nMinProtocol = None\nCipherString = ALL:@SECLEVEL=0\n");
        write(u"ca.cnf"_s, "[ca]\ndefault_ca = d\n[d]\ndatabase = index\nnew_certs_dir = .\n"
                           "rand_serial = yes\ndefault_md = sha256\npolicy = p\n"
                           "copy_extensions = copy\nunique_subject = no\n"
                           "[p]\ncommonName = supplied\n");
        write(u"index"_s, {});
        openssl(u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Authority "
                "-keyout ca-key.pem -out ca.pem"_s);
        qputenv("OPENSSL_CONF", QFile::encodeName(m_folder.filePath(u"old.cnf"_s)));
        authority = QFile::encodeName(m_folder.filePath(u"ca.pem"_s));
        write(u"hello"_s, "HTTP/1.0 200 OK\r\n\r\nhello");
    }

    void trustsWhomItMay_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("options");
        QTest::addColumn<Code>("code"); // unknown: none
        const auto row = [](const char *title, const QString &name, int from, int to,
                            const QString &options, Code code) {
            const QString newYear = u"0101000000Z"_s;
            QTest::newRow(title) << name << QString::number(from) + newYear
                                 << QString::number(to) + newYear << options << code;
        };
        const QString own = u"IP:127.0.0.1"_s;
        const Code untrusted = Code::serverCertificateUntrusted;
        row("the server's own certificate", own, 2020, 2099, {}, Code::unknown);
        row("one of another name", u"DNS:example.org"_s, 2020, 2099, {}, untrusted);
        row("one that has expired", own, 2019, 2020, {}, untrusted);
        row("one that is not yet valid", own, 2098, 2099, {}, untrusted);
        row("an authority that nobody knows", own, 2020, 2099, u"self-signed"_s, untrusted);
        row("TLS 1.2", own, 2020, 2099, u"-tls1_2"_s, Code::unknown);
        for (const char *version : {"-tls1_1", "-tls1"})
            row(version, own, 2020, 2099, QString::fromLatin1(version),
                Code::secureConnectionFailed);
    }
    void trustsWhomItMay()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, from);
        QFETCH(const QString, to);
        QFETCH(QString, options);
        openssl(u"req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Server "
                "-addext subjectAltName=%1 -keyout key.pem -out request.pem"_s.arg(name));
        const bool isSelfSigned = options == u"self-signed"_s;
        if (isSelfSigned)
            options.clear();
        openssl(
            u"ca -batch -config ca.cnf -notext -in request.pem -out server.pem "
            "-startdate %1 -enddate %2 -keyfile %3"_s.arg(
                from, to, isSelfSigned ? u"key.pem -selfsign"_s : u"ca-key.pem -cert ca.pem"_s));
        QProcess server;
        const Outcome outcome =
            download(requestFor(serve(server, u"server.pem"_s, options) + u"hello"_s));
        QTEST(outcome.code(), "code");
        QCOMPARE(outcome.data,
                 outcome.code() == Code::unknown ? QByteArray("hello") : QByteArray());
        server.kill();
        QVERIFY(server.waitForFinished());
    }

    void leavesHttpsOnlyWhereItMay()
    {
        HttpTestServer plain;
        plain.on("/", HttpTestServer::answer("plain"));
        openssl(u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=127.0.0.1 "
                "-keyout key.pem -out ca.pem"_s);
        write(u"away"_s, HttpTestServer::redirect("302 F", plain.url(u"/"_s)));
        QProcess server;
        const auto request = requestFor(serve(server, u"ca.pem"_s) + u"away"_s);
        zelkam::URLSessionConfiguration configuration;
        QCOMPARE(download(request, configuration).code(), Code::redirectNotAllowed);
        QCOMPARE(plain.requests().size(), 0);
        configuration.ownServer = zelkam::URL::fromString(plain.url({}));
        QCOMPARE(download(request, configuration).data, "plain");
        configuration.ownServer = zelkam::URL::fromString(u"http://127.0.0.1"_s); // another port
        QCOMPARE(download(request, configuration).code(), Code::redirectNotAllowed);
        configuration.allowsUnsafeRedirects = true;
        QCOMPARE(download(request, configuration).data, "plain");
        server.kill();
        QVERIFY(server.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestTls)
#include "tst_tls.moc"
