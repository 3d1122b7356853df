#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/system_version.h"
#include "platform/foundation/url.h"
#include "support/data_table.h"

using namespace zelkam;
using namespace Qt::StringLiterals;
using zelkam::test::Row;

class TestUrl : public QObject
{
    Q_OBJECT

private slots:
    void decodesOnce_data() { test::addRows({"url.json"}); }
    void decodesOnce()
    {
        const Row row;
        const auto decoded = removingPercentEncoding(row.text("text"));
        QCOMPARE(decoded.has_value(), row["decoded"].isString());
        QCOMPARE(decoded.value_or(QString()), row.text("decoded"));
    }

    void encodesForQueries_data() { test::addRows({"url.json"}); }
    void encodesForQueries()
    {
        const Row row;
        const auto encoded = addingPercentEncodingForUrlQuery(row.text("text"));
        QCOMPARE(encoded.has_value(), row["encoded"].isString());
        QCOMPARE(encoded.value_or(QString()), row.text("encoded"));
    }

    void parses_data() { test::addRows({"url.json"}); }
    void parses()
    {
        const Row row;
        const auto parse = [&row](const QVersionNumber &version) {
            setSystemVersion(version);
            const auto url = URL::fromString(row.text("text"));
            return url ? url->absoluteString() : QString(); // empty: no URL
        };
        QCOMPARE(parse(QVersionNumber(16, 4)), row.text("older"));
        QCOMPARE(parse(QVersionNumber(18, 0)), row.text("newest"));
    }

    void refusesWhatMayNotStandInAUrl()
    {
        setSystemVersion(QVersionNumber(16, 4));
        const QString unfit = u" \\\"<>^`{|}\u0001\t\n\u007f\u0085\u00a0\u00fc"_s;
        for (const QChar c : unfit) {
            for (const auto &form : {u"/a%1b"_s, u"http://h/?a%1"_s, u"http://h/#%1a"_s,
                                     u"http://h%1/"_s, u"http://u%1@h/"_s, u"%1"_s})
                QVERIFY2(!URL::fromString(form.arg(c)), qPrintable(form.arg(c)));
        }
        setSystemVersion(QVersionNumber(18, 0));
    }

    void takesApart()
    {
        const URL url =
            URL::fromString(u"http://user@b%C3%BCcher.de:8080/a/My%20Report.pdf"_s).value();
        QCOMPARE(url.scheme().value(), u"http"_s);
        QCOMPARE(url.host().value(), u"bücher.de"_s);
        QCOMPARE(url.port().value(), 8080);
        QCOMPARE(url.lastPathComponent(), u"My Report.pdf"_s);
        const URL path = URL::fromString(u"/tmp/x/"_s).value();
        QVERIFY(!path.scheme() && !path.host() && !path.port());
        QCOMPARE(path.lastPathComponent(), u"x"_s);
    }

    void keepsAnyPathInAFileUrl()
    {
        for (const QString &path :
             {u"/a b/ü"_s, u"/100%"_s, u"/a%20b"_s, u"/a?b#c"_s, u"/a:b;c"_s, u"/~"_s}) {
            const URL url = URL::fromFilePath(path);
            QVERIFY(url.isFileURL());
            QCOMPARE(url.path(), path);
            QCOMPARE(URL::fromString(url.absoluteString()).value().path(), path);
        }
    }
};

QTEST_GUILESS_MAIN(TestUrl)
#include "tst_url.moc"
