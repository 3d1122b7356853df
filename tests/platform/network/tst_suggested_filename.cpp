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
        if (row["header"].isString()) {
            const QByteArray header =
                row.bytes("header").replace("{200}", QByteArray("\u20ac").repeated(200));
            fields.insert(u"content-disposition"_s, headerText(header));
        }
        if (row["type"].isString())
            fields.insert(u"Content-Type"_s, row.text("type"));
        const URL url = *URL::fromString(row["url"].toString(u"http://h/"_s));
        const HTTPURLResponse response(url, 200, fields);
        // Where we depart from the published name, "ours" is set and may be null.
        QCOMPARE(response.suggestedFilename().value_or(QString()),
                 row["because"].isString() ? row.text("ours") : row.text("file"));
    }
};

QTEST_GUILESS_MAIN(TestSuggestedFilename)
#include "tst_suggested_filename.moc"
