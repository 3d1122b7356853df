#include "platform/network/http_cookie_storage.h"

#include <QtTest>
#include <thread>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

URL urlOf(const char *text)
{
    return *URL::fromString(QString::fromLatin1(text));
}

QList<HTTPCookie> parsed(const QString &setCookie, const char *url)
{
    return HTTPCookie::cookies({{u"set-cookie"_s, setCookie}}, urlOf(url));
}

HTTPCookie cookie(const QString &name, const QString &value = u"v"_s,
                  const QString &domain = u"h.example"_s)
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
        const QString plain = u"a=1 h.example / host"_s;
        row("no attributes", "a=1", "http://h.example", {plain});
        row("default path", "a=1", "http://h.example/x/y?z", {u"a=1 h.example /x host"_s});
        row("comma in the date",
            "a=1; Expires=Wed, 09 Jun 2120 10:18:14 GMT\nb=2; Secure; HttpOnly",
            "https://h.example/",
            {u"a=1 h.example / host dated"_s, u"b=2 h.example / host secure http"_s});
        row("domain as written", "a=1; Domain=example.org", "http://h.example.org/",
            {u"a=1 example.org /"_s});
        row("domain of an address or of one label",
            "a=1; Domain=127.0.0.1\nb=2; Domain=.127.0.0.1\nc=3; Domain=localhost",
            "http://127.0.0.1/", {u"a=1 127.0.0.1 / host"_s, u"b=2 .127.0.0.1 / host"_s});
        row("one label", "a=1; Domain=LocalHost", "http://localhost/", {u"a=1 localhost / host"_s});
        row("somebody else's domain", "a=1; Domain=other.org", "http://h.example.org/", {});
        row("domain below the host", "a=1; Domain=x.example.org", "http://example.org/", {});
        row("a public suffix's own host", "a=1; Domain=co.uk", "http://co.uk/",
            {u"a=1 co.uk / host"_s});
        row("secure in the clear", "a=1; Secure", "http://h.example/", {});
        row("promises that are kept",
            "__Host-a=1; Secure; Path=/\n__Secure-b=2; Secure; Domain=h.org", "https://h.org/",
            {u"__Host-a=1 h.org / host secure"_s, u"__Secure-b=2 h.org / secure"_s});
        row("promises that are broken",
            "__host-a=1; Path=/\n__Host-b=2; Secure; Path=/x\n__Host-c=3; Secure\n"
            "__Host-d=4; Secure; Path=/; Domain=h.org\n__SECURE-e=5",
            "https://h.org/", {});
        row("no host to compare with", "a=1\nb=2; Domain=h.org; Path=/p", "file://",
            {u"a=1  / host"_s, u"b=2 h.org /p"_s});
        row("Max-Age goes before Expires",
            "a=1; Max-Age=100; Expires=Wed, 09 Jun 2010 10:18:14 GMT", "http://h.example/",
            {u"a=1 h.example / host dated"_s});
        row("an age beyond any number", "a=1; Max-Age=99999999999999999999", "http://h.example/",
            {u"a=1 h.example / host dated"_s});
        row("gone at once", "a=1; Max-Age=0", "http://h.example/",
            {u"a=1 h.example / host dated expired"_s});
        row("no name", "=1\n;;\n\nb=2", "http://h.example/", {u"b=2 h.example / host"_s});
        row("value with equals signs", "a=b=c==", "http://h.example/",
            {u"a=b=c== h.example / host"_s});
    }

    void parsing()
    {
        QFETCH(const QString, setCookie);
        QFETCH(const QByteArray, url);
        QStringList found;
        for (const HTTPCookie &c : parsed(setCookie, url.constData())) {
            QString text = u"%1=%2 %3 %4"_s.arg(c.name, c.value, c.domain, c.path);
            text += c.isHostOnly ? u" host"_s : QString();
            text += c.isSecure ? u" secure"_s : QString();
            text += c.isHTTPOnly ? u" http"_s : QString();
            text += c.isSessionOnly() ? QString() : u" dated"_s;
            text += c.isExpired() ? u" expired"_s : QString();
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
        const QString field = u"a="_s + QChar(0xDCB0) + QChar(0xDCA1);
        const auto cookies = parsed(field, "http://h.org/");
        QCOMPARE(cookies.first().toNetworkCookie().value(), "\xB0\xA1");
        QCOMPARE(HTTPCookie::requestHeaderFields(cookies).value(u"Cookie"_s), field);
    }

    void headerOfAllCookies()
    {
        HTTPCookie bad = cookie(u"c"_s, u"x\r\nX-Evil: 1"_s);
        const auto fields =
            HTTPCookie::requestHeaderFields({cookie(u"a"_s), bad, cookie(u"b"_s, {}, {})});
        QCOMPARE(fields, (QMap<QString, QString>{{u"Cookie"_s, u"a=v; b="_s}}));
        QVERIFY(HTTPCookie::requestHeaderFields({bad}).isEmpty());
    }

    void identity()
    {
        HTTPCookieStorage store;
        const QString name = u"n"_s;
        store.setCookie(cookie(name, u"1"_s));
        store.setCookie(cookie(name, u"2"_s, u"H.example"_s));
        store.setCookie(cookie(name, u"3"_s, u".h.example"_s));
        HTTPCookie deeper = cookie(name, u"4"_s);
        deeper.path = u"/p"_s;
        store.setCookie(deeper);
        QCOMPARE(valueIn(store, name), u"2,3,4"_s);
        QCOMPARE(store.cookies(urlOf("http://h.example/p")).first().value, u"4"_s);
        HTTPCookie past = cookie(name);
        past.expiresDate = QDateTime::currentDateTimeUtc().addSecs(-1);
        store.setCookie(past);
        QCOMPARE(valueIn(store, name), u"3,4"_s);
    }

    void limits()
    {
        HTTPCookieStorage store;
        QStringList heard;
        const auto observation =
            store.observe([&](HTTPCookieStorage::Change change, const auto &c) {
                if (change == HTTPCookieStorage::Change::removed)
                    heard += c.name;
            });
        const auto give = [&](int count, const QString &domain, const char *source) {
            for (int i = 0; i < count; ++i) {
                HTTPCookie given = cookie(QString::number(i), u"v"_s, domain);
                if (source)
                    given.setOrigin(urlOf(source));
                store.setCookie(given);
            }
        };
        store.setCookie(cookie(u"big"_s, QString(4094, u'x')));
        QCOMPARE(store.cookies()->size(), 0);
        give(180, u"h.example"_s, nullptr); // as many as a web view keeps
        give(401, u".h.example"_s, "http://other.example/");
        QCOMPARE(store.cookies()->size(), 580);
        QCOMPARE(store.cookies()->at(0).name, u"0"_s);
        QCOMPARE(store.cookies()->at(180).name, u"1"_s);
        for (int i = 0; i < 15; ++i)
            give(400, u"%1.x.example"_s.arg(i), qPrintable(u"http://x%1.example/"_s.arg(i)));
        QCOMPARE(store.cookies()->size(), 6000);
        QCOMPARE(store.cookies()->at(179).domain, u"h.example"_s);
        QVERIFY(heard.isEmpty());
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
        HTTPCookie given = cookie(u"a"_s, u"1"_s, {});
        given.setOrigin(urlOf("http://h.example/x"));
        given.expiresDate = QDateTime::currentDateTimeUtc().addSecs(1000);
        store.setCookie(given);
        QCOMPARE(store.cookies()->first().domain, QString());
        QCOMPARE(store.cookies(urlOf("http://h.example/")).size(), 1);
        QCOMPARE(store.cookies(urlOf("http://other.example/")).size(), 0);
        store.deleteCookie(given);
        store.deleteCookie(given);
        observation.reset();
        store.setCookie(given);
        QCOMPARE(heard, (QStringList{u"+a"_s, u"-a"_s}));
    }

    void manyThreads()
    {
        HTTPCookieStorage store;
        const auto observation = store.observe([&](auto, const auto &) { (void)store.cookies(); });
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&store, t] {
                for (int i = 0; i < 200; ++i) {
                    const HTTPCookie own = cookie(u"%1-%2"_s.arg(t).arg(i % 10));
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
