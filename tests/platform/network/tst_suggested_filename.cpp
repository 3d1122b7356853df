#include "platform/network/header_text.h"
#include "platform/network/url_response.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

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
            QTest::newRow(title) << disposition << u"http://h/url.bin"_s << QString() << name;
        };
        const auto url = [](const char *title, const QString &address, const QString &type,
                            const QString &name) {
            QTest::newRow(title) << QString() << address << type << name;
        };
        server("quoted", u"attachment; filename=\"a b.pdf\""_s, u"a b.pdf"_s);
        server("token, odd case and blanks", u"INLINE ;FileName = a.pdf ; x=y"_s, u"a.pdf"_s);
        server("unquoted with blanks", u"attachment; filename=a b.pdf"_s, u"a b.pdf"_s);
        server("escapes and a semicolon in quotes", u"attachment; filename=\"a\\\";b.pdf\""_s,
               u"a\";b.pdf"_s);
        server("no end of quotes", u"attachment; filename=\"a.pdf"_s, u"a.pdf"_s);
        server("extended goes first",
               u"attachment; filename*=UTF-8'de'%e2%82%ac.pdf; filename=e.pdf"_s, u"\u20ac.pdf"_s);
        server("extended in Latin-1", u"a; filename*=iso-8859-1''%e9.pdf"_s, u"\u00e9.pdf"_s);
        server("unknown charset", u"a; filename*=koi8-r''%e9.pdf; filename=e.pdf"_s, u"e.pdf"_s);
        server("bad extended bytes", u"a; filename*=UTF-8''%ff.pdf; filename=e.pdf"_s, u"e.pdf"_s);
        server("bad escape", u"a; filename*=UTF-8''%4; filename=e.pdf"_s, u"e.pdf"_s);
        server("raw UTF-8", u"a; filename=\"\u00e9.pdf\""_s, u"\u00e9.pdf"_s);
        server("raw Latin-1", u"a; filename=\""_s + QChar(0xDCE9) + u".pdf\""_s, u"\u00e9.pdf"_s);
        server("path of a server", u"a; filename=\"/etc/passwd.txt\""_s, u"passwd.txt"_s);
        server("way up", u"a; filename=\"../../a.pdf\""_s, u"a.pdf"_s);
        server("other separator", u"a; filename*=UTF-8''..%5Ca.pdf"_s, u"a.pdf"_s);
        server("encoded way up", u"a; filename=\"%2e%2e%2fa.pdf\""_s, u"a.pdf"_s);
        server("twice encoded way up", u"a; filename=\"%252fb%2Fc%2Fa.pdf\""_s, u"a.pdf"_s);
        server("harmless escapes", u"a; filename=\"%ED%95%9C.pdf\""_s, u"\ud55c.pdf"_s);
        server("a real percent sign", u"a; filename=\"50% off.pdf\""_s, u"50_ off.pdf"_s);
        server("what a URL reads as more than a name", u"a; filename=\"a%2525?b#c[1].pdf\""_s,
               u"a_25_b_c_1_.pdf"_s);
        server("control characters", u"a; filename*=UTF-8''a%00%0a%7f%c2%85b.pdf"_s, u"ab.pdf"_s);
        server("direction override", u"a; filename*=UTF-8''a%e2%80%aefdp.exe"_s, u"afdp.exe"_s);
        server("only dots", u"a; filename=\"..\""_s, u"url.bin"_s);
        server("nothing left", u"a; filename=\"/\""_s, u"url.bin"_s);
        server("blanks and dots at the end", u"a; filename=\" a.pdf . \""_s, u"a.pdf"_s);
        server("no name", u"attachment"_s, u"url.bin"_s);

        url("last piece, decoded once", u"http://h/a/%E2%82%AC%2525.pdf?x=/y"_s, {},
            u"\u20ac_.pdf"_s);
        url("encoded separator", u"http://h/a%2Fb.pdf"_s, {}, u"b.pdf"_s);
        url("folder", u"http://h/dir/"_s, {}, u"dir"_s);
        url("extension of the type", u"http://h/report"_s, u"application/pdf; x=y"_s,
            u"report.pdf"_s);
        url("type in capitals", u"http://h/photo"_s, u"IMAGE/JPEG"_s, u"photo.jpg"_s);
        url("extension stays", u"http://h/a.cgi"_s, u"application/pdf"_s, u"a.cgi"_s);
        url("dot in front is no extension", u"http://h/.profile"_s, u"text/plain"_s,
            u".profile.txt"_s);
        url("type that says nothing", u"http://h/data"_s, u"application/octet-stream"_s, u"data"_s);
        url("type that nobody knows", u"http://h/data"_s, u"x/y"_s, u"data"_s);
        url("root", u"http://h/"_s, u"text/html"_s, {});
        url("no path", u"http://h"_s, u"text/html"_s, {});
        url("dots", u"http://h/a/%2E%2E"_s, {}, {});
    }

    void name()
    {
        QFETCH(const QString, disposition);
        QFETCH(const QString, url);
        QFETCH(const QString, type);
        QFETCH(const QString, name);
        QMap<QString, QString> fields;
        if (!disposition.isEmpty())
            fields.insert(u"content-disposition"_s, disposition);
        if (!type.isEmpty())
            fields.insert(u"Content-Type"_s, type);
        const HTTPURLResponse response(*URL::fromString(url), 200, fields);
        QCOMPARE(response.suggestedFilename().value_or(QString()), name);
    }

    void publishedFields_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("name"); // null: absent
        QFile file(QFINDTESTDATA("../../data/content_disposition.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto fields = QJsonDocument::fromJson(file.readAll())[u"fields"_s].toArray();
        QVERIFY(!fields.isEmpty());
        for (const auto &row : fields) {
            const bool departs = !row[u"because"_s].toString().isEmpty();
            QTest::newRow(qPrintable(row[u"name"_s].toString()))
                << headerText(row[u"header"_s].toString().toLatin1())
                << row[departs ? u"ours"_s : u"file"_s].toString();
        }
    }
    void publishedFields()
    {
        QFETCH(const QString, field);
        const HTTPURLResponse response(*URL::fromString(u"http://h/"_s), 200,
                                       {{u"Content-Disposition"_s, field}});
        QTEST(response.suggestedFilename().value_or(QString()), "name");
    }

    void longNamesAreCutBeforeTheExtension()
    {
        const QString character = u"\u20ac"_s;
        const QString longName = u'a' + character.repeated(200) + u".docx"_s;
        const HTTPURLResponse response(*URL::fromString(u"http://h/"_s), 200,
                                       {{u"Content-Disposition"_s, u"a; filename="_s + longName}});
        const QString name = *response.suggestedFilename();
        QVERIFY(name.toUtf8().size() <= 255 && name.toUtf8().size() > 245);
        QVERIFY(name.endsWith(character + u".docx"_s));
        QVERIFY(longName.startsWith(name.chopped(5)));
    }
};

QTEST_GUILESS_MAIN(TestSuggestedFilename)
#include "tst_suggested_filename.moc"
