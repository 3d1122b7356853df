#include "platform/foundation/json_serialization.h"

#include <QtTest>
#include <limits>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestJsonSerialization : public QObject
{
    Q_OBJECT

private slots:
    void writes_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("json"); // with ' for "; null: refused
        QTest::newRow("a record") << QVariant(QVariantMap{{u"b"_s, 2.5},
                                                          {u"a"_s, u"\"ü\n"_s},
                                                          {u"n"_s, QVariant::fromValue(nullptr)}})
                                  << QByteArray("{'a':'\\'ü\\n','b':2.5,'n':null}");
        QTest::newRow("a list in a list")
            << QVariant(QVariantList{true, QVariantList{qlonglong(-1)}})
            << QByteArray("[true,[-1]]");
        QTest::newRow("a whole number of 64 bits")
            << QVariant(std::numeric_limits<qlonglong>::max()) << QByteArray("9223372036854775807");
        QTest::newRow("a bare text") << QVariant(u"x"_s) << QByteArray("'x'");
        QTest::newRow("an empty record") << QVariant(QVariantMap()) << QByteArray("{}");
        QTest::newRow("not a number, deep inside")
            << QVariant(QVariantMap{{u"a"_s, QVariantList{qQNaN()}}}) << QByteArray();
        QTest::newRow("infinity") << QVariant(qInf()) << QByteArray();
        QTest::newRow("half a surrogate pair") << QVariant(QString(QChar(0xD800))) << QByteArray();
        QTest::newRow("a key that is no text")
            << QVariant(QVariantMap{{QString(QChar(0xDC00)), 1}}) << QByteArray();
        QTest::newRow("a type without a counterpart") << QVariant(QSize(1, 2)) << QByteArray();
        QTest::newRow("no value") << QVariant() << QByteArray();
    }
    void writes()
    {
        QFETCH(QVariant, value);
        QFETCH(QByteArray, json);
        json.replace('\'', '"');
        const auto result = jsonData(value);
        QCOMPARE(result.has_value(), !json.isNull());
        QCOMPARE(result.value_or(QByteArray()), json);
    }
};

QTEST_GUILESS_MAIN(TestJsonSerialization)
#include "tst_json_serialization.moc"
