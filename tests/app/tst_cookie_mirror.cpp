#include "app/cookie_mirror.h"

#include <QApplication>
#include <QWebEngineCookieStore>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

/// A real web view's cookies beside a store. "view" rows speak for a page of https://h.example.
class TestCookieMirror : public QObject
{
    Q_OBJECT

    QMap<QString, QByteArray> m_view; // what it told, by domain, path and name

    static QString identity(const QNetworkCookie &c)
    {
        return c.domain() + c.path() + QString::fromUtf8(c.name());
    }
    static QStringList texts(const HTTPCookieStorage &store)
    {
        QStringList texts;
        const QList<HTTPCookie> cookies = *store.cookies();
        for (const HTTPCookie &c : cookies)
            texts += QString::fromUtf8(c.toNetworkCookie().toRawForm());
        texts.sort();
        return texts;
    }
    QStringList texts() const
    {
        QStringList texts;
        for (const QByteArray &text : m_view)
            texts += QString::fromUtf8(text);
        texts.sort();
        return texts;
    }
    /// As the download engine does it.
    static void download(HTTPCookieStorage &store, const QString &url, const QString &field)
    {
        auto cookies =
            HTTPCookie::cookies({{u"Set-Cookie"_s, field}}, *URL::fromString(u"file://"_s));
        for (HTTPCookie &cookie : cookies) {
            cookie.setOrigin(*URL::fromString(url));
            store.setCookie(cookie);
        }
    }

private slots:
    void keepsBothInStep_data()
    {
        QTest::addColumn<QStringList>("steps"); // those that end with "&" wait for nothing
        QTest::addColumn<QStringList>("inView");
        QTest::addColumn<QStringList>("inStore");
        const auto row = [](const char *title, const QStringList &steps, const QStringList &inView,
                            const QStringList &inStore) {
            QTest::newRow(title) << steps << inView << inStore;
        };
        const auto both = [&](const char *title, const QStringList &steps, const QStringList &is) {
            row(title, steps, is, is);
        };
        const QString secure = u"a=1; secure; HttpOnly; domain=h.example; path=/"_s;
        const QString guarded = u"view a=1; Secure; HttpOnly; Path=/"_s;
        both("everything of a cookie goes to the store", {guarded}, {secure});
        both("and to the view", {u"https://h.example/ a=1; Secure; HttpOnly"_s}, {secure});
        both("a cookie deleted in the page leaves the store",
             {u"view a=1; Path=/"_s, u"view a=; Max-Age=0; Path=/"_s}, {});
        both("a host's own cookie stays its own", {u"https://h.example/ a=1"_s},
             {u"a=1; domain=h.example; path=/"_s});
        both("one for the hosts below too", {u"https://x.h.example/ a=1; Domain=h.example"_s},
             {u"a=1; domain=.h.example; path=/"_s});
        row("somebody else's stays out", {u"https://x.example/ a=1; Domain=h.example"_s}, {},
            {u"a=1; domain=.h.example; path=/"_s});
        row("and changes none that is there",
            {u"view a=1; Domain=h.example; Path=/"_s, u"https://x.example/ a=2; Domain=h.example"_s,
             u"https://x.example/ a=; Domain=h.example; Max-Age=0"_s},
            {u"a=1; domain=.h.example; path=/"_s}, {u"a=1; domain=.h.example; path=/"_s});
        both("http replaces no secure cookie", {guarded, u"http://h.example/ a=2"_s}, {secure});
        both("nor one that the store was not told of", {guarded + u'&', u"http://h.example/ a=2"_s},
             {secure});
        both("and hides none", {guarded, u"http://x.h.example/ a=2; Domain=h.example"_s}, {secure});
        both("and deletes none that has just become secure",
             {u"https://h.example/ a=0"_s, guarded + u'&', u"http://h.example/ a=; Max-Age=0"_s},
             {secure});
        both("and deletes none", {guarded, u"http://h.example/ a=; Max-Age=0"_s}, {secure});
        both("and sets none", {u"http://h.example/ a=1; Secure"_s}, {});
        both("https replaces a secure cookie", {guarded, u"https://h.example/ a=2"_s},
             {u"a=2; domain=h.example; path=/"_s});
        both("loopback needs no https",
             {u"http://x.localhost/ a=1; Secure"_s, u"http://127.0.0.1/ a=1; Secure"_s},
             {u"a=1; secure; domain=127.0.0.1; path=/"_s,
              u"a=1; secure; domain=x.localhost; path=/"_s});
        both("a name that the view writes in punycode",
             {u"http://x.b\u00FCcher.de/ a=1; Domain=b\u00FCcher.de"_s},
             {u"a=1; domain=.xn--bcher-kva.de; path=/"_s});
        row("an address that the view puts in brackets", {u"http://[::1]/ a=1"_s},
            {u"a=1; domain=; path=/"_s}, {u"a=1; domain=[::1]; path=/"_s});
        row("only the view goes by SameSite, and takes None from secure cookies only",
            {u"https://h.example/ a=1; SameSite=None"_s}, {},
            {u"a=1; SameSite=None; domain=h.example; path=/"_s});
    }

    void keepsBothInStep()
    {
        QFETCH(const QStringList, steps);
        QWebEngineProfile profile;
        QWebEnginePage page(&profile); // before the first page is loaded, the store does nothing
        QSignalSpy loaded(&page, &QWebEnginePage::loadFinished);
        page.load(QUrl(u"about:blank"_s));
        QVERIFY(loaded.wait(20000));
        QWebEngineCookieStore &view = *profile.cookieStore();
        m_view.clear();
        connect(&view, &QWebEngineCookieStore::cookieAdded, this, [this](const auto &cookie) {
            if (!cookie.domain().endsWith(u".invalid"))
                m_view.insert(identity(cookie), cookie.toRawForm());
        });
        connect(&view, &QWebEngineCookieStore::cookieRemoved, this,
                [this](const auto &cookie) { m_view.remove(identity(cookie)); });
        HTTPCookieStorage store;
        CookieMirror mirror(view, store);
        for (const QString &step : steps) {
            const bool waits = !step.endsWith(u'&');
            const QString who = step.section(u' ', 0, 0);
            const QString field = (waits ? step : step.chopped(1)).section(u' ', 1);
            if (who == u"view")
                view.setCookie(QNetworkCookie::parseCookies(field.toUtf8()).first(),
                               QUrl(u"https://h.example/"_s));
            else
                download(store, who, field);
            bool isSettled = !waits;
            if (waits)
                mirror.flush([&] { mirror.flush([&] { isSettled = true; }); });
            QTRY_VERIFY(isSettled);
        }
        QTEST(texts(), "inView");
        QTEST(texts(store), "inStore");
    }
};

int main(int argc, char **argv)
{
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); // as root it cannot be set up
    QApplication application(argc, argv);
    TestCookieMirror test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_cookie_mirror.moc"
