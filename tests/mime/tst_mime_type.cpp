#include "mime/mime_type.h"
#include "mime/mime_types.h"
#include "platform/foundation/system_version.h"
#include "platform/foundation/url.h"
#include "support/data_table.h"

#include <QThreadPool>
#include <QUrl>

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
        QByteArray text;
        for (const MimeTypesRow &row : mimeTypes()) {
            const QString extension = row.extension.toString();
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
        // Of all rows as they stand: no extension or type can change unseen.
        QCOMPARE(QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().left(16),
                 "d612fd3d91989dce");
    }

    void takesTheExtension_data() { test::addRows({"mime_type.json"}); }
    void takesTheExtension()
    {
        const test::Row row;
        const QString path = row.text("path");
        for (int i = 0; i < 2; ++i) { // the second time it is remembered
            setSystemVersion(QVersionNumber(13, 9));
            QCOMPARE(mimeType(path), row.text("table"));
            setSystemVersion(QVersionNumber(14, 0));
            QCOMPARE(mimeType(path), row.text("registry"));
            QCOMPARE(mimeType(URL::fromFilePath(path)), row.text("registry"));
        }
    }

    void takesThePathOfAUrl()
    {
        QCOMPARE(ofUrl(u"https://host/a.png?b=c.pdf#d.txt"_s), u"image/png"_s);
        QCOMPARE(ofUrl(u"https://host.pdf"_s), unknown);
        QCOMPARE(ofUrl(u"file:///a%2Epdf"_s), u"application/pdf"_s);
        QCOMPARE(mimeType(QUrl()), unknown);
        QCOMPARE(mimeType(QUrl(u"file:///a%2F.pdf"_s)), unknown);
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
