#include "platform/network/http_cookie_storage.h"

#include <QtTest>
#include <thread>

using namespace zelkam;

namespace {

URL urlOf(const char *text)
{
    return *URL::fromString(QString::fromLatin1(text));
}

QList<HTTPCookie> parsed(const QString &setCookie, const char *url)
{
    return HTTPCookie::cookies({{QStringLiteral("set-cookie"), setCookie}}, urlOf(url));
}

HTTPCookie cookie(const QString &name, const QString &value = QStringLiteral("v"),
                  const QString &domain = QStringLiteral("h.example"))
{
    return HTTPCookie(name, value, domain, {});
}

QString valueIn(const HTTPCookieStorage &store, const QString &name)
{
    QStringList values;
    const QList<HTTPCookie> cookies = *store.cookies();
    for (const HTTPCookie &stored : cookies) {
        if (stored.name == name)
            values += stored.value;
    }
    return values.join(u',');
}

} // namespace

class TestHTTPCookie : public QObject
{
    Q_OBJECT

private slots:
    void parsing_data()
    {
        QTest::addColumn<QString>("setCookie");
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<QStringList>("cookies"); // name=value domain path flags
        const auto row = [](const char *title, const char *setCookie, const char *url,
                            const QStringList &cookies) {
            QTest::newRow(title) << QString::fromUtf8(setCookie) << QByteArray(url) << cookies;
        };
        const QString plain = QStringLiteral("a=1 h.example / host");
        row("no attributes", "a=1", "http://h.example", {plain});
        row("default path", "a=1", "http://h.example/x/y?z",
            {QStringLiteral("a=1 h.example /x host")});
        row("comma in the date",
            "a=1; Expires=Wed, 09 Jun 2120 10:18:14 GMT\nb=2; Secure; HttpOnly",
            "http://h.example/",
            {QStringLiteral("a=1 h.example / host dated"),
             QStringLiteral("b=2 h.example / host secure http")});
        row("domain as written", "a=1; Domain=example.org", "http://h.example.org/",
            {QStringLiteral("a=1 example.org /")});
        row("somebody else's domain", "a=1; Domain=other.org", "http://h.example.org/", {});
        row("domain below the host", "a=1; Domain=x.example.org", "http://example.org/", {});
        row("public suffix", "a=1; Domain=com", "http://h.com/", {});
        row("no host to compare with", "a=1\nb=2; Domain=h.org; Path=/p", "file://",
            {QStringLiteral("a=1  / host"), QStringLiteral("b=2 h.org /p")});
        row("Max-Age goes before Expires",
            "a=1; Max-Age=100; Expires=Wed, 09 Jun 2010 10:18:14 GMT", "http://h.example/",
            {QStringLiteral("a=1 h.example / host dated")});
        row("gone at once", "a=1; Max-Age=0", "http://h.example/",
            {QStringLiteral("a=1 h.example / host dated expired")});
        row("no name", "=1\n;;\n\nb=2", "http://h.example/",
            {QStringLiteral("b=2 h.example / host")});
        row("value with equals signs", "a=b=c==", "http://h.example/",
            {QStringLiteral("a=b=c== h.example / host")});
    }

    void parsing()
    {
        QFETCH(const QString, setCookie);
        QFETCH(const QByteArray, url);
        QStringList found;
        for (const HTTPCookie &c : parsed(setCookie, url.constData())) {
            QString text = QStringLiteral("%1=%2 %3 %4").arg(c.name, c.value, c.domain, c.path);
            text += c.isHostOnly ? QStringLiteral(" host") : QString();
            text += c.isSecure ? QStringLiteral(" secure") : QString();
            text += c.isHTTPOnly ? QStringLiteral(" http") : QString();
            text += c.isSessionOnly() ? QString() : QStringLiteral(" dated");
            text += c.isExpired() ? QStringLiteral(" expired") : QString();
            found += text;
        }
        QTEST(found, "cookies");
    }

    void matching_data()
    {
        QTest::addColumn<QString>("setCookie");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<bool>("sent");
        const auto row = [](const char *title, const char *setCookie, const char *from,
                            const char *to, bool sent) {
            QTest::newRow(title) << QString::fromLatin1(setCookie) << QByteArray(from)
                                 << QByteArray(to) << sent;
        };
        row("same host", "a=1", "http://h.org/", "http://H.org:81/x", true);
        row("host only", "a=1", "http://h.org/", "http://x.h.org/", false);
        row("domain and below", "a=1; Domain=h.org", "http://h.org/", "http://x.h.org/", true);
        row("not only the same ending", "a=1; Domain=h.org", "http://h.org/", "http://xh.org/",
            false);
        row("path below", "a=1; Path=/p", "http://h.org/", "http://h.org/p/q", true);
        row("path with the same start", "a=1; Path=/p", "http://h.org/", "http://h.org/pq", false);
        row("secure over http", "a=1; Secure", "https://h.org/", "http://h.org/", false);
        row("secure over https", "a=1; Secure", "https://h.org/", "https://h.org/", true);
        row("expired", "a=1; Max-Age=0", "http://h.org/", "http://h.org/", false);
        row("address is no domain", "a=1; Domain=0.0.1", "http://127.0.0.1/", "http://127.0.0.1/",
            false);
        row("of nobody", "a=1", "file:///x", "http://h.org/", false);
    }

    void matching()
    {
        QFETCH(const QString, setCookie);
        QFETCH(const QByteArray, from);
        QFETCH(const QByteArray, to);
        HTTPCookieStorage store;
        for (const HTTPCookie &c : parsed(setCookie, from.constData()))
            store.setCookie(c);
        QTEST(!store.cookies(urlOf(to.constData())).isEmpty(), "sent");
    }

    void bytesSurviveTheWayThroughText()
    {
        const QString field = QStringLiteral("a=") + QChar(0xDCB0) + QChar(0xDCA1);
        const auto cookies = parsed(field, "http://h.org/");
        QCOMPARE(cookies.first().toNetworkCookie().value(), "\xB0\xA1");
        QCOMPARE(HTTPCookie::requestHeaderFields(cookies).value(QStringLiteral("Cookie")), field);
    }

    void headerOfAllCookies()
    {
        HTTPCookie bad = cookie(QStringLiteral("c"), QStringLiteral("x\r\nX-Evil: 1"));
        const auto fields = HTTPCookie::requestHeaderFields(
            {cookie(QStringLiteral("a")), bad, cookie(QStringLiteral("b"), {}, {})});
        QCOMPARE(fields,
                 (QMap<QString, QString>{{QStringLiteral("Cookie"), QStringLiteral("a=v; b=")}}));
        QVERIFY(HTTPCookie::requestHeaderFields({bad}).isEmpty());
    }

    void identity()
    {
        HTTPCookieStorage store;
        const QString name = QStringLiteral("n");
        store.setCookie(cookie(name, QStringLiteral("1")));
        store.setCookie(cookie(name, QStringLiteral("2"), QStringLiteral("H.example")));
        store.setCookie(cookie(name, QStringLiteral("3"), QStringLiteral(".h.example")));
        HTTPCookie deeper = cookie(name, QStringLiteral("4"));
        deeper.path = QStringLiteral("/p");
        store.setCookie(deeper);
        QCOMPARE(valueIn(store, name), QStringLiteral("2,3,4"));
        QCOMPARE(store.cookies(urlOf("http://h.example/p")).first().value, QStringLiteral("4"));
        HTTPCookie past = cookie(name);
        past.expiresDate = QDateTime::currentDateTimeUtc().addSecs(-1);
        store.setCookie(past);
        QCOMPARE(valueIn(store, name), QStringLiteral("3,4"));
    }

    void limits()
    {
        HTTPCookieStorage store;
        store.setCookie(cookie(QStringLiteral("big"), QString(4097, u'x')));
        QCOMPARE(store.cookies()->size(), 0);
        for (int i = 0; i < 51; ++i)
            store.setCookie(cookie(QString::number(i)));
        QCOMPARE(store.cookies()->size(), 50);
        QCOMPARE(store.cookies()->first().name, QStringLiteral("1"));
        for (int i = 0; i < 3000; ++i)
            store.setCookie(
                cookie(QStringLiteral("n"), QStringLiteral("v"), QStringLiteral("h%1.org").arg(i)));
        QCOMPARE(store.cookies()->size(), 3000);
        QCOMPARE(store.cookies()->first().domain, QStringLiteral("h0.org"));
    }

    void observersHearChangesAndMayAnswer()
    {
        HTTPCookieStorage store;
        QStringList heard;
        auto observation =
            store.observe([&](HTTPCookieStorage::Change change, const HTTPCookie &c) {
                heard += (change == HTTPCookieStorage::Change::set ? u'+' : u'-') + c.name;
                // What a web view does: it tells every cookie back, with the domain written out.
                if (change == HTTPCookieStorage::Change::set)
                    store.setCookie(HTTPCookie::fromNetworkCookie(c.toNetworkCookie()));
            });
        HTTPCookie given = cookie(QStringLiteral("a"), QStringLiteral("1"), {});
        given.originHost = QStringLiteral("h.example");
        given.expiresDate = QDateTime::currentDateTimeUtc().addSecs(1000);
        store.setCookie(given);
        QCOMPARE(store.cookies()->first().domain, QString());
        store.deleteCookie(given);
        store.deleteCookie(given);
        observation.reset();
        store.setCookie(given);
        QCOMPARE(heard, (QStringList{QStringLiteral("+a"), QStringLiteral("-a")}));
    }

    void manyThreads()
    {
        HTTPCookieStorage store;
        const auto observation = store.observe([&](auto, const auto &) { (void)store.cookies(); });
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&store, t] {
                for (int i = 0; i < 200; ++i) {
                    const HTTPCookie own = cookie(QStringLiteral("%1-%2").arg(t).arg(i % 10));
                    store.setCookie(own);
                    if (i < 190 && i % 3 == 0)
                        store.deleteCookie(own);
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(store.cookies()->size(), 40);
    }
};

QTEST_GUILESS_MAIN(TestHTTPCookie)
#include "tst_http_cookie.moc"
