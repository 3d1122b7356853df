#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/system_version.h"
#include "platform/foundation/url.h"

#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestUrl : public QObject
{
    Q_OBJECT

private slots:
    void decodesOnce_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("decoded");
        QTest::newRow("an escape") << u"a%20b"_s << true << u"a b"_s;
        QTest::newRow("an escaped percent sign stays one") << u"a%2520b"_s << true << u"a%20b"_s;
        QTest::newRow("several bytes of one character")
            << u"%C3%A9%f0%9f%98%80"_s << true << u"é😀"_s;
        QTest::newRow("nothing to decode") << u"ümlaut/?#"_s << true << u"ümlaut/?#"_s;
        QTest::newRow("a lone percent sign") << u"100%"_s << false << QString();
        QTest::newRow("one digit at the end") << u"a%2"_s << false << QString();
        QTest::newRow("a letter that is no digit") << u"a%2gb"_s << false << QString();
        QTest::newRow("bytes that are no UTF-8") << u"%FF%FE"_s << false << QString();
        QTest::newRow("an overlong slash") << u"%C0%AF"_s << false << QString();
        QTest::newRow("half a surrogate pair") << QString(QChar(0xD800)) << false << QString();
    }
    void decodesOnce()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(QString, decoded);
        const auto result = removingPercentEncoding(text);
        QCOMPARE(result.has_value(), valid);
        QCOMPARE(result.value_or(QString()), decoded);
    }

    void encodesForQueries()
    {
        QCOMPARE(addingPercentEncodingForUrlQuery(u"/a b/ü?x=1&y=[2]#%\"{}|"_s).value(),
                 u"/a%20b/%C3%BC?x=1&y=%5B2%5D%23%25%22%7B%7D%7C"_s);
        QCOMPARE(addingPercentEncodingForUrlQuery(u"-._~!$&'()*+,;=:@/?"_s).value(),
                 u"-._~!$&'()*+,;=:@/?"_s);
        QCOMPARE(addingPercentEncodingForUrlQuery(u"a\0b"_s).value(), u"a%00b"_s);
        QVERIFY(!addingPercentEncodingForUrlQuery(u"a"_s + QChar(0xDC00)));
    }

    void parses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("newest"); // empty: no URL
        QTest::addColumn<QString>("older");
        const auto same = [](const char *row, const QString &text) {
            QTest::newRow(row) << text << text << text;
        };
        same("an address", u"https://example.org:8443/a%20b?c=d#e"_s);
        same("a bare path", u"/tmp/a.pdf"_s);
        same("a relative path that begins with http", u"httpdocs/a.pdf"_s);
        same("a root without a host", u"file://"_s);
        same("an address of version six", u"http://[::1]:80/"_s);
        QTest::newRow("nothing") << u""_s << u""_s << u""_s;
        QTest::newRow("a blank") << u"/my file"_s << u"/my%20file"_s << u""_s;
        QTest::newRow("a lone percent sign") << u"/50%.png"_s << u"/50%25.png"_s << u""_s;
        QTest::newRow("letters beyond ASCII") << u"/ü"_s << u"/%C3%BC"_s << u""_s;
        QTest::newRow("an encoded bracket in the host") << u"http://%5B::1%5D/"_s << u""_s << u""_s;
        QTest::newRow("a port that is none") << u"http://h:99999/"_s << u""_s << u""_s;
        QTest::newRow("half a surrogate pair") << u"/"_s + QChar(0xD800) << u""_s << u""_s;
    }
    void parses()
    {
        QFETCH(QString, text);
        QFETCH(QString, newest);
        QFETCH(QString, older);
        const auto parse = [&](const QVersionNumber &version) {
            setSystemVersion(version);
            const auto url = URL::fromString(text);
            return url ? url->absoluteString() : QString();
        };
        QCOMPARE(parse(QVersionNumber(18, 0)), newest);
        QCOMPARE(parse(QVersionNumber(16, 4)), older);
        setSystemVersion(QVersionNumber(18, 0));
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

    void keepsAnyPathInAFileUrl_data()
    {
        QTest::addColumn<QString>("path");
        for (const char *path : {"/a b/ü", "/100%", "/a%20b", "/a?b#c", "/a:b;c", "/~"})
            QTest::newRow(path) << QString::fromUtf8(path);
    }
    void keepsAnyPathInAFileUrl()
    {
        QFETCH(QString, path);
        const URL url = URL::fromFilePath(path);
        QVERIFY(url.isFileURL());
        QCOMPARE(url.path(), path);
        QCOMPARE(URL::fromString(url.absoluteString()).value().path(), path);
    }
};

QTEST_GUILESS_MAIN(TestUrl)
#include "tst_url.moc"
