#include "platform/foundation/file_name.h"
#include "platform/foundation/url.h"
#include "support/data_table.h"

using namespace zelkam;

class TestFileName : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatANameIs_data() { test::addRows({"file_name.json"}); }
    void showsWhatANameIs()
    {
        const test::Row row;
        const QByteArray bytes =
            row["bytes"].isString() ? row.bytes("bytes") : row.text("text").toUtf8();
        const QString name = decodeFileName(bytes);
        QCOMPARE(displayName(name), row.text("shown"));
        QCOMPARE(encodeFileName(name), bytes);
        const URL url = URL::fromFilePath(u'/' + name);
        QCOMPARE(URL::fromString(url.absoluteString()).value().path(), u'/' + name);
    }
};

QTEST_GUILESS_MAIN(TestFileName)
#include "tst_file_name.moc"
