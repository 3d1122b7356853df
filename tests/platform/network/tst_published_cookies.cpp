// The published cases of tests/data/cookies, on a day on which their dates make sense.
#include "platform/network/header_text.h"
#include "platform/network/http_cookie_storage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>
#include <sys/time.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

static time_t clockTime = 1'300'000'000; // in March 2011

// Takes the place of the C library's own, for Qt too.
extern "C" int gettimeofday(timeval *now, void *) noexcept
{
    *now = {clockTime, 0};
    return 0;
}

namespace {

using Form = QString (*)(const QString &);

QByteArray published(const char *name)
{
    QFile file(QStringLiteral(ZELKAM_TEST_DATA "/cookies/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<HTTPCookie> parsed(const QByteArray &fields, const QString &url)
{
    return HTTPCookie::cookies({{u"Set-Cookie"_s, headerText(fields)}}, *URL::fromString(url));
}

/// Where the store does something else on purpose.
const char *const control = "RFC 6265bis drops a cookie that holds a control character";
const QMap<QString, const char *> departures{{u"DISABLED_CHROMIUM0022"_s, control},
                                             {u"DISABLED_CHROMIUM0023"_s, control}};

} // namespace

class TestPublishedCookies : public QObject
{
    Q_OBJECT

private slots:
    void aStoredCookieIsSentUntilItExpires()
    {
        const QString url = u"http://h.example/"_s;
        HTTPCookieStorage store;
        store.setCookie(parsed("a=1; Max-Age=100", url).first());
        clockTime += 99;
        QCOMPARE(store.cookies()->size(), 1);
        clockTime += 1;
        QCOMPARE(store.cookies()->size(), 0);
        QCOMPARE(store.cookies(*URL::fromString(url)).size(), 0);
    }

    void cases_data()
    {
        QTest::addColumn<QJsonObject>("given");
        const QJsonArray cases = QJsonDocument::fromJson(published("cases.json")).array();
        for (const auto &one : cases)
            QTest::newRow(qPrintable(one[u"test"_s].toString())) << one.toObject();
        QCOMPARE(cases.size(), 222);
    }

    void cases()
    {
        QFETCH(const QJsonObject, given);
        const QString name = given[u"test"_s].toString();
        const QUrl from(u"http://home.example.org:8888/cookie-parser?"_s + name);
        const QUrl to =
            from.resolved(QUrl(given[u"sent-to"_s].toString(u"/cookie-parser-result?"_s + name)));
        QByteArrayList fields;
        const QJsonArray received = given[u"received"_s].toArray();
        for (const auto &field : received)
            fields += field.toString().toUtf8();
        HTTPCookieStorage store;
        for (const HTTPCookie &cookie : parsed(fields.join('\n'), from.toString()))
            store.setCookie(cookie);
        QStringList sent;
        for (const HTTPCookie &cookie : store.cookies(*URL::fromQUrl(to)))
            sent += cookie.name + u'=' + cookie.value;
        QStringList expected;
        const QJsonArray pairs = given[u"sent"_s].toArray();
        for (const auto &pair : pairs)
            expected += pair[u"name"_s].toString() + u'=' + pair[u"value"_s].toString();
        if (const char *reason = departures.value(name))
            QEXPECT_FAIL("", reason, Continue);
        QCOMPARE(sent, expected);
    }

    void dates_data()
    {
        QTest::addColumn<QString>("expected");
        const QJsonArray cases = QJsonDocument::fromJson(published("dates.json")).array();
        for (const auto &one : cases)
            QTest::addRow("%s", qPrintable(one[u"test"_s].toString()))
                << one[u"expected"_s].toString();
    }

    void dates()
    {
        QFETCH(const QString, expected);
        const QString date = QString::fromUtf8(QTest::currentDataTag());
        const auto cookies = parsed("a=1; Expires=" + date.toUtf8(), u"http://h.example/"_s);
        QCOMPARE(cookies.size(), 1);
        const auto found = cookies.first().expiresDate;
        QCOMPARE(found ? QLocale::c().toString(*found, u"ddd, dd MMM yyyy hh:mm:ss 'GMT'"_s)
                       : QString(),
                 expected);
    }

    void publicSuffixes_data()
    {
        QTest::addColumn<Form>("form");
        const auto row = [](const char *title, Form form) { QTest::newRow(title) << form; };
        row("as they are", [](const QString &name) { return name; });
        row("in upper case", [](const QString &name) { return name.toUpper(); });
        row("with a dot behind", [](const QString &name) { return name + u'.'; });
        row("with a dot in front", [](const QString &name) { return u'.' + name; });
        row("in ASCII", [](const QString &name) { return QString::fromLatin1(QUrl::toAce(name)); });
    }

    void publicSuffixes()
    {
        QFETCH(const Form, form);
        static const QRegularExpression line(
            u"^checkPublicSuffix\\('([^.'][^']*)', (?:null|'(.+)')\\);"_s,
            QRegularExpression::MultilineOption);
        const auto isTaken = [&](const QString &domain, const QString &host) {
            const QString url =
                u"http://"_s + host + (form(host).endsWith(u'.') ? u"./"_s : u"/"_s);
            return !parsed("a=1; Domain=" + form(domain).toUtf8(), url).isEmpty();
        };
        QStringList wrong;
        int count = 0;
        auto matches = line.globalMatch(QString::fromUtf8(published("public_suffixes.txt")));
        while (matches.hasNext()) {
            const auto match = matches.next();
            const QString name = match.captured(1);
            ++count;
            if (isTaken(name, u"any."_s + name) == match.captured(2).isEmpty())
                wrong += name;
        }
        QCOMPARE(wrong.join(u' '), QString());
        QCOMPARE(count, 73);
    }
};

QTEST_GUILESS_MAIN(TestPublishedCookies)
#include "tst_published_cookies.moc"
