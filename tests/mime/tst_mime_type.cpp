#include "mime/mime_type.h"
#include "mime/mime_types.h"
#include "platform/foundation/system_version.h"
#include "platform/foundation/url.h"

#include <QSet>
#include <QThreadPool>
#include <QUrl>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

const QString unknown = u"application/octet-stream"_s;

QString ofUrl(const QString &text)
{
    return mimeType(URL::fromString(text).value());
}

} // namespace

class TestMimeType : public QObject
{
    Q_OBJECT

private slots:
    void init() { setSystemVersion(QVersionNumber(13, 9)); }

    void theTableIsWhole()
    {
        QSet<QString> extensions;
        QByteArray text;
        for (const MimeTypesRow &row : mimeTypes()) {
            const QString extension = row.extension.toString();
            extensions.insert(extension);
            text += extension.toLatin1() + ' ' + row.mimeType.toLatin1() + '\n';
            const QString expected = row.mimeType.toString();
            for (const QString &path : {u"/tmp/a."_s + extension, u"a.b."_s + extension.toUpper(),
                                        u"é/"_s + extension + u"."_s + extension + u"//"_s}) {
                QCOMPARE(mimeType(path), expected);
                QCOMPARE(mimeType(QStringView(path)), expected);
                QCOMPARE(mimeType(URL::fromFilePath(path)), expected);
                QCOMPARE(mimeType(QUrl::fromLocalFile(path)), expected);
            }
            QCOMPARE(mimeType(extension), unknown);
        }
        QCOMPARE(extensions.size(), 94);
        // Of all rows as they stand: no extension or type can change unseen.
        QCOMPARE(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().left(16),
                 "d612fd3d91989dce");
    }

    void takesTheExtension_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("registry");
        const auto both = [](const char *name, const QString &path, const QString &type) {
            QTest::newRow(name) << path << type << type;
        };
        both("a file in capitals", u"/tmp/Report.PDF"_s, u"application/pdf"_s);
        both("no extension", u"/tmp/Makefile"_s, unknown);
        both("a bare extension", u"pdf"_s, unknown);
        both("nothing", u""_s, unknown);
        both("a root", u"/"_s, unknown);
        both("a hidden file", u"/tmp/.pdf"_s, unknown);
        both("a hidden file with an extension", u"/tmp/.a.pdf"_s, u"application/pdf"_s);
        both("a dot at the end", u"a.pdf."_s, unknown);
        both("two dots", u"a..pdf"_s, u"application/pdf"_s);
        both("a folder with an extension", u"/x.pdf/a"_s, unknown);
        both("blanks and signs", u"/a b/100%#?.png"_s, u"image/png"_s);
        both("a blank behind", u"a.png "_s, unknown);
        both("right-to-left marks", u"a\u202Egnp.exe\u202C.png"_s, u"image/png"_s);
        both("a letter whose lower case is ASCII", u"a.\u212Aml"_s,
             u"application/vnd.google-earth.kml+xml"_s);
        both("a NUL before it", u"a.\0pdf"_s, unknown);
        both("longer than any", u"a.pdfpdfpdf"_s, unknown);
        both("a pattern of the registry", u"a.*"_s, unknown);
        both("two kinds of one extension", u"clip.ts"_s, u"video/mp2t"_s);
        both("a kind that the table knows twice", u"movie.3gpp"_s, u"video/3gpp"_s);
        QTest::newRow("an archive") << u"archive.tar.gz"_s << unknown << u"application/gzip"_s;
        QTest::newRow("a script") << u"a.js"_s << u"application/javascript"_s
                                  << u"text/javascript"_s;
        QTest::newRow("a photo") << u"a.HEIC"_s << unknown << u"image/heic"_s;
        QTest::newRow("a letter case that has a meaning")
            << u"a.C"_s << unknown << u"text/x-c++src"_s;
        QTest::newRow("and the other case") << u"a.c"_s << unknown << u"text/x-csrc"_s;
    }
    void takesTheExtension()
    {
        QFETCH(QString, path);
        QFETCH(QString, table);
        QFETCH(QString, registry);
        for (int i = 0; i < 2; ++i) { // the second time it is remembered
            setSystemVersion(QVersionNumber(13, 9));
            QCOMPARE(mimeType(path), table);
            setSystemVersion(QVersionNumber(14, 0));
            QCOMPARE(mimeType(path), registry);
            QCOMPARE(mimeType(URL::fromFilePath(path)), registry);
        }
    }

    void takesThePathOfAUrl()
    {
        QCOMPARE(ofUrl(u"https://host/a.png?b=c.pdf#d.txt"_s), u"image/png"_s);
        QCOMPARE(ofUrl(u"https://host.pdf"_s), unknown);
        QCOMPARE(ofUrl(u"file:///a%2Epdf"_s), u"application/pdf"_s);
        QCOMPARE(mimeType(QUrl()), unknown);
        QCOMPARE(mimeType(QUrl(u"file:///a%2F.pdf"_s)), unknown);
        // As text, the same address is a path, and its query a part of the name.
        QCOMPARE(mimeType(u"https://host/a.png?b=c.pdf"_s), u"application/pdf"_s);
    }

    void answersManyThreadsAtOnce()
    {
        setSystemVersion(QVersionNumber(14, 0));
        QThreadPool pool;
        pool.setMaxThreadCount(8);
        std::atomic<int> wrong = 0;
        for (int thread = 0; thread < 8; ++thread) {
            pool.start([&wrong, thread] {
                for (int i = 0; i < 3000; ++i) {
                    const int name = (i * 7 + thread) % 3000;
                    wrong += mimeType(u"a.no%1"_s.arg(name)) != unknown;
                    wrong += mimeType(u"a.png"_s) != u"image/png"_s;
                    wrong += mimeType(u"a.odt"_s) != u"application/vnd.oasis.opendocument.text"_s;
                }
            });
        }
        QVERIFY(pool.waitForDone());
        QCOMPARE(wrong, 0);
    }
};

QTEST_GUILESS_MAIN(TestMimeType)
#include "tst_mime_type.moc"
