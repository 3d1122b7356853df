#include "app/cookie_mirror.h"
#include "support/data_table.h"

#include <QApplication>
#include <QWebEngineCookieStore>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QtTest>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

/// A real web view's cookies beside a store. "view" rows speak for a page of https://h.example.
class TestCookieMirror : public QObject
{
    Q_OBJECT

    QMap<QString, QString> m_view; // what it told, by domain, path and name

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

public:
    static void initMain()
    {
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    } // for root there is none

private slots:
    void keepsBothInStep_data() { addRows({"app/cookie_mirror.json"}); }
    void keepsBothInStep()
    {
        const Row row;
        QWebEngineProfile profile;
        QWebEnginePage page(&profile); // before the first page is loaded, the store does nothing
        QSignalSpy loaded(&page, &QWebEnginePage::loadFinished);
        page.load(QUrl(u"about:blank"_s));
        QVERIFY(loaded.wait(20000));
        QWebEngineCookieStore &view = *profile.cookieStore();
        m_view.clear();
        connect(&view, &QWebEngineCookieStore::cookieAdded, this, [this](const auto &cookie) {
            if (!cookie.domain().endsWith(u".invalid"))
                m_view.insert(identity(cookie), QString::fromUtf8(cookie.toRawForm()));
        });
        connect(&view, &QWebEngineCookieStore::cookieRemoved, this,
                [this](const auto &cookie) { m_view.remove(identity(cookie)); });
        HTTPCookieStorage store;
        CookieMirror mirror(view, store);
        for (const QString &step : row.texts("steps")) {
            // One that ends with "&" waits for nothing.
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
        QStringList inView = m_view.values();
        inView.sort();
        QCOMPARE(inView, row.texts("view"));
        QCOMPARE(texts(store), row.texts("store"));
    }
};

QTEST_MAIN(TestCookieMirror)
#include "tst_cookie_mirror.moc"
