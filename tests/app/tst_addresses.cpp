#include "app/container_address.h"
#include "app/local_page.h"
#include "platform/foundation/file_manager.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>
#include <unistd.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestAddresses : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;

    QString write(const QString &path)
    {
        const QString whole = m_root.filePath(path);
        QDir().mkpath(QFileInfo(whole).path());
        QFile file(whole);
        return file.open(QIODevice::WriteOnly) && file.write("x") == 1 ? whole : QString();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(!setTemporaryDirectory(m_root.filePath(u"app/tmp"_s)));
        QVERIFY(!write(u"outside.txt"_s).isEmpty());
    }

    void anAddressLeadsBackToItsFile()
    {
        for (const QString &name : {u"plain.txt"_s, u"Download/two words.pdf"_s,
                                    u"50% of #1?.txt"_s, u"größe \U0001F600.png"_s, u"%2e%2e"_s}) {
            const QString path = write(u"app/tmp/"_s + name);
            const auto address = containerAddress(URL::fromFilePath(path));
            QVERIFY(address);
            QCOMPARE(containerPath(address->toQUrl()), path);
            QVERIFY(openContainerFile(*containerPath(address->toQUrl())));
        }
    }

    void noAddressLeadsOutOfTheContainer()
    {
        QVERIFY(!containerAddress(URL::fromFilePath(m_root.filePath(u"outside.txt"_s))));
        QVERIFY(!containerAddress(*URL::fromString(u"https://a.example/x"_s)));
        for (const char *address :
             {"zelkam://container/../outside.txt", "zelkam://container/%2e%2e/outside.txt",
              "zelkam://container/a%2f..%2f..%2foutside.txt", "zelkam://container//etc/passwd",
              "zelkam://container/%00", "zelkam://container/", "zelkam://app/plain.txt",
              "file:///etc/passwd"}) {
            const auto path = containerPath(QUrl(QString::fromLatin1(address)));
            QVERIFY2(!path || !openContainerFile(*path), address);
        }
    }

    void onlyRegularFilesAreOpened()
    {
        const QString container = m_root.filePath(u"app/tmp/"_s);
        QFile::link(m_root.filePath(u"outside.txt"_s), container + u"link"_s);
        QFile::link(m_root.path(), container + u"up"_s);
        ::mkfifo(QFile::encodeName(container + u"pipe"_s).constData(), 0600);
        for (const QString &name : {u"link"_s, u"up/outside.txt"_s, u"pipe"_s, u"."_s, u"gone"_s})
            QVERIFY2(!openContainerFile(container + name), qPrintable(name));
    }

    void aLocalPageServesItsFolderWithoutTheDownloads()
    {
        const LocalPage page(write(u"app/my page.html"_s));
        write(u"app/sub/style.css"_s);
        write(u"app/tmp/evil.html"_s);
        QCOMPARE(page.address().toEncoded(), "zelkam://app/my%20page.html"_ba);
        QVERIFY(page.open(page.address()));
        QVERIFY(page.open(QUrl(u"zelkam://app/sub/style.css?v=2#x"_s)));
        for (const char *address : {"zelkam://app/tmp/evil.html", "zelkam://app/%2e%2e/outside.txt",
                                    "zelkam://app/sub", "zelkam://container/my%20page.html"})
            QVERIFY2(!page.open(QUrl(QString::fromLatin1(address))), address);
        QFile::link(m_root.filePath(u"outside.txt"_s), m_root.filePath(u"app/link.txt"_s));
        QFile::link(m_root.path(), m_root.filePath(u"app/up"_s));
        QFile::link(m_root.filePath(u"app/sub/style.css"_s), m_root.filePath(u"app/in.css"_s));
        QFile::link(u"/proc/self"_s, m_root.filePath(u"app/self"_s));
        for (const char *name : {"link.txt", "up/outside.txt", "in.css", "self/environ",
                                 "up/app/tmp/evil.html", "sub/../sub/style.css"})
            QVERIFY2(!page.open(QUrl(u"zelkam://app/"_s + QLatin1String(name))), name);
    }
};

QTEST_GUILESS_MAIN(TestAddresses)
#include "tst_addresses.moc"
