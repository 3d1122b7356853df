// A test of its own, as the thread sanitizer allows no new threads after the fork of a process.
#include "download_probe.h"
#include "support/data_table.h"

#include <QProcess>
#include <QTemporaryDir>
#include <curl/curl.h>

using namespace Qt::StringLiterals;
using namespace zelkam::test;

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

private slots:
    void initTestCase()
    {
        write(u"index"_s, {});
        write(u"ca.cnf"_s, dataFile(u"tls/ca.cnf"_s));
        openssl(u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Authority "
                "-keyout ca-key.pem -out ca.pem"_s);
        qputenv("OPENSSL_CONF", ZELKAM_TEST_DATA "/tls/old.cnf");
        authority = QFile::encodeName(m_folder.filePath(u"ca.pem"_s));
        write(u"hello"_s, "HTTP/1.0 200 OK\r\n\r\nhello");
    }

    void trustsWhomItMay_data() { addRows({"tls/trust.json"}); }

    void trustsWhomItMay()
    {
        const Row row;
        const QString subject = row["subject"].toString(u"IP:127.0.0.1"_s);
        const QString from = row["from"].toString(u"20200101000000Z"_s);
        const QString to = row["to"].toString(u"20990101000000Z"_s);
        const QString signer = row["signer"].toString(u"ca-key.pem -cert ca.pem"_s);
        openssl(u"req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj /CN=Server "
                "-addext subjectAltName=%1 -keyout key.pem -out request.pem"_s.arg(subject));
        openssl(u"ca -batch -config ca.cnf -notext -in request.pem -out server.pem "
                "-startdate %1 -enddate %2 -keyfile %3"_s.arg(from, to, signer));
        QProcess server;
        server.setWorkingDirectory(m_folder.path());
        const QString options = u"s_server -accept 127.0.0.1:0 -HTTP -key key.pem -cert server.pem "
                                "%1"_s.arg(row.text("server"));
        server.start(u"openssl"_s, options.split(u' ', Qt::SkipEmptyParts));
        QByteArray printed;
        while ((!printed.contains("ACCEPT") || !printed.endsWith('\n')) &&
               server.waitForReadyRead())
            printed += server.readAllStandardOutput();
        const int port = printed.trimmed().split(':').last().toInt();
        const Outcome outcome = download(requestFor(u"https://127.0.0.1:%1/hello"_s.arg(port)));
        QCOMPARE(outcome.failure(), row.text("failure"));
        QCOMPARE(outcome.data, outcome.error ? "" : "hello");
        server.kill();
        QVERIFY(server.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(TestTls)
#include "tst_tls.moc"
