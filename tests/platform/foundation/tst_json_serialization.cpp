#include "platform/foundation/json_serialization.h"

#include <QJsonDocument>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestJsonSerialization : public QObject
{
    Q_OBJECT

private slots:
    void writesWhatJsonCanHold()
    {
        for (const char *json : {"{\"a\":\"\\\"ü\\n\",\"b\":2.5,\"n\":null}", "[true,[-1]]",
                                 "9223372036854775807", "\"x\"", "{}"}) {
            const auto list = QJsonDocument::fromJson('[' + QByteArray(json) + ']');
            QCOMPARE(jsonData(list.toVariant().toList().first()).value_or("refused"), json);
        }
    }

    void refusesWhatItCannot()
    {
        const QVariantList refused{
            QVariantMap{{u"a"_s, QVariantList{qQNaN()}}},
            qInf(),
            QString(QChar(0xD800)),
            QVariantMap{{QString(QChar(0xDC00)), 1}}, // a key that is no text
            QSize(1, 2),
            QVariant()};
        for (const QVariant &value : refused)
            QVERIFY2(!jsonData(value), value.typeName());
    }
};

QTEST_GUILESS_MAIN(TestJsonSerialization)
#include "tst_json_serialization.moc"
