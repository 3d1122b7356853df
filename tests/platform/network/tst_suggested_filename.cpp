#include "platform/network/url_response.h"

#include <QtTest>

using namespace zelkam;

class TestSuggestedFilename : public QObject
{
    Q_OBJECT

private slots:
    void name_data()
    {
        QTest::addColumn<QString>("disposition");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("name"); // null: absent
        const auto server = [](const char *title, const QString &disposition, const QString &name) {
            QTest::newRow(title) << disposition << QStringLiteral("http://h/url.bin") << QString()
                                 << name;
        };
        const auto url = [](const char *title, const QString &address, const QString &type,
                            const QString &name) {
            QTest::newRow(title) << QString() << address << type << name;
        };
#define S(text) QStringLiteral(text)
        server("quoted", S("attachment; filename=\"a b.pdf\""), S("a b.pdf"));
        server("token, odd case and blanks", S("INLINE ;FileName = a.pdf ; x=y"), S("a.pdf"));
        server("unquoted with blanks", S("attachment; filename=a b.pdf"), S("a b.pdf"));
        server("escapes and a semicolon in quotes", S("attachment; filename=\"a\\\";b.pdf\""),
               S("a\";b.pdf"));
        server("no end of quotes", S("attachment; filename=\"a.pdf"), S("a.pdf"));
        server("extended goes first",
               S("attachment; filename*=UTF-8'de'%e2%82%ac.pdf; filename=e.pdf"), S("\u20ac.pdf"));
        server("extended in Latin-1", S("a; filename*=iso-8859-1''%e9.pdf"), S("\u00e9.pdf"));
        server("unknown charset", S("a; filename*=koi8-r''%e9.pdf; filename=e.pdf"), S("e.pdf"));
        server("bad extended bytes", S("a; filename*=UTF-8''%ff.pdf; filename=e.pdf"), S("e.pdf"));
        server("bad escape", S("a; filename*=UTF-8''%4; filename=e.pdf"), S("e.pdf"));
        server("raw UTF-8", S("a; filename=\"\u00e9.pdf\""), S("\u00e9.pdf"));
        server("raw Latin-1", S("a; filename=\"") + QChar(0xDCE9) + S(".pdf\""), S("\u00e9.pdf"));
        server("path of a server", S("a; filename=\"/etc/passwd.txt\""), S("passwd.txt"));
        server("way up", S("a; filename=\"../../a.pdf\""), S("a.pdf"));
        server("other separator", S("a; filename*=UTF-8''..%5Ca.pdf"), S("a.pdf"));
        server("encoded way up", S("a; filename=\"%2e%2e%2fa.pdf\""), S("a.pdf"));
        server("twice encoded way up", S("a; filename=\"%252fb%2Fc%2Fa.pdf\""), S("a.pdf"));
        server("harmless escapes stay", S("a; filename=\"%ED%95%9C.pdf\""), S("%ED%95%9C.pdf"));
        server("a real percent sign", S("a; filename=\"50% off.pdf\""), S("50% off.pdf"));
        server("control characters", S("a; filename*=UTF-8''a%00%0a%7f%c2%85b.pdf"), S("ab.pdf"));
        server("direction override", S("a; filename*=UTF-8''a%e2%80%aefdp.exe"), S("afdp.exe"));
        server("only dots", S("a; filename=\"..\""), S("url.bin"));
        server("nothing left", S("a; filename=\"/\""), S("url.bin"));
        server("blanks and dots at the end", S("a; filename=\" a.pdf . \""), S("a.pdf"));
        server("no name", S("attachment"), S("url.bin"));

        url("last piece, decoded once", S("http://h/a/%E2%82%AC%2525.pdf?x=/y"), {},
            S("\u20ac%25.pdf"));
        url("encoded separator", S("http://h/a%2Fb.pdf"), {}, S("b.pdf"));
        url("folder", S("http://h/dir/"), {}, S("dir"));
        url("extension of the type", S("http://h/report"), S("application/pdf; x=y"),
            S("report.pdf"));
        url("type in capitals", S("http://h/photo"), S("IMAGE/JPEG"), S("photo.jpg"));
        url("extension stays", S("http://h/a.cgi"), S("application/pdf"), S("a.cgi"));
        url("dot in front is no extension", S("http://h/.profile"), S("text/plain"),
            S(".profile.txt"));
        url("type that says nothing", S("http://h/data"), S("application/octet-stream"), S("data"));
        url("type that nobody knows", S("http://h/data"), S("x/y"), S("data"));
        url("root", S("http://h/"), S("text/html"), {});
        url("no path", S("http://h"), S("text/html"), {});
        url("dots", S("http://h/a/%2E%2E"), {}, {});
#undef S
    }

    void name()
    {
        QFETCH(const QString, disposition);
        QFETCH(const QString, url);
        QFETCH(const QString, type);
        QFETCH(const QString, name);
        QMap<QString, QString> fields;
        if (!disposition.isEmpty())
            fields.insert(QStringLiteral("content-disposition"), disposition);
        if (!type.isEmpty())
            fields.insert(QStringLiteral("Content-Type"), type);
        const HTTPURLResponse response(*URL::fromString(url), 200, fields);
        QCOMPARE(response.suggestedFilename().value_or(QString()), name);
    }

    void longNamesAreCutBeforeTheExtension()
    {
        const QString longName = u'a' + QString(200, QChar(0x20AC)) + QStringLiteral(".docx");
        const HTTPURLResponse response(
            *URL::fromString(QStringLiteral("http://h/")), 200,
            {{QStringLiteral("Content-Disposition"), QStringLiteral("a; filename=") + longName}});
        const QByteArray name = response.suggestedFilename()->toUtf8();
        QVERIFY(name.size() <= 255 && name.size() > 250);
        QVERIFY(name.endsWith("\xE2\x82\xAC.docx"));
        QVERIFY(longName.startsWith(QString::fromUtf8(name.chopped(5))));
    }
};

QTEST_GUILESS_MAIN(TestSuggestedFilename)
#include "tst_suggested_filename.moc"
