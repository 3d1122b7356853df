#include "platform/network/header_text.h"
#include "platform/network/url_response.h"
#include "support/data_table.h"

using namespace zelkam;
using namespace Qt::StringLiterals;
using zelkam::test::Row;

class TestSuggestedFilename : public QObject
{
    Q_OBJECT

private slots:
    void suggestsNames_data()
    {
        test::addRows({"suggested_filename.json", "content_disposition.json"});
    }

    void suggestsNames()
    {
        const Row row;
        QMap<QString, QString> fields;
        if (row["header"].isString())
            fields.insert(u"content-disposition"_s, headerText(row.bytes("header")));
        if (row["type"].isString())
            fields.insert(u"Content-Type"_s, row.text("type"));
        const URL url = *URL::fromString(row["url"].toString(u"http://h/"_s));
        const HTTPURLResponse response(url, 200, fields);
        // Where we depart from the published name, "ours" is set and may be null.
        QCOMPARE(response.suggestedFilename().value_or(QString()),
                 row["because"].isString() ? row.text("ours") : row.text("file"));
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
