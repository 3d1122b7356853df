#include "app/reply_body.h"
#include "app/script_arguments.h"
#include "host/call_back_manager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <cmath>
#include <limits>
#include <sys/mman.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {
const QString tag = u"t-1"_s;
}

class TestScriptValues : public QObject
{
    Q_OBJECT

private slots:
    void readsArgumentsByTheirKind_data()
    {
        QTest::addColumn<QString>("json");
        QTest::addColumn<QMetaType>("type");
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char *name, const char *json, const QVariant &value) {
            QTest::newRow(name) << QString::fromUtf8(json) << value.metaType() << value;
        };
        row("a whole number is an integer", "7", 7LL);
        row("the largest integer", "9223372036854775807", std::numeric_limits<qlonglong>::max());
        row("a whole number beyond 64 bits is a double", "1e20", 1e20);
        row("a fraction is a double", "0.5", 0.5);
        row("a boolean is no number", "true", true);
        row("null is null", "null", QVariant::fromValue(nullptr));
        row("infinity comes under the tag", "{\"t-1\":\"-Infinity\"}",
            -std::numeric_limits<double>::infinity());
        row("a BigInt that fits is an integer", "{\"t-1\":\"-9007199254740993n\"}",
            -9007199254740993LL);
        row("another key is the page's own", "{\"t-2\":\"NaN\"}",
            QVariantMap{{u"t-2"_s, u"NaN"_s}});
        row("half a surrogate pair stays", "\"\\ud800\"", QString(QChar(0xd800)));
        row("text holds every character", "\"\\u0000\\\"\\\\\\ud83d\\ude00\"",
            QString(QChar(0)) + u"\"\\\U0001F600"_s);
    }

    void readsArgumentsByTheirKind()
    {
        QFETCH(QString, json);
        QFETCH(QMetaType, type);
        QFETCH(QVariant, value);
        const auto arguments = readScriptArguments(u"[{\"v\":%1}]"_s.arg(json), tag);
        QVERIFY(arguments && arguments->dictionary);
        const QVariant got = arguments->dictionary->value(u"v"_s);
        QCOMPARE(got.metaType(), type);
        if (type != QMetaType::fromType<std::nullptr_t>())
            QCOMPARE(got, value);
    }

    void readsWhatNothingCanHold()
    {
        const auto arguments = readScriptArguments(
            u"[{\"n\":{\"t-1\":\"NaN\"},\"b\":{\"t-1\":\"99999999999999999999n\"}}]"_s, tag);
        QVERIFY(std::isnan(arguments->dictionary->value(u"n"_s).toDouble()));
        QVERIFY(arguments->dictionary->value(u"b"_s).canConvert<UnrepresentableValue>());
    }

    void knowsNoDictionaryFromGarbage()
    {
        for (const QString &text :
             {u"[null]"_s, u"[5]"_s, u"[[1]]"_s, u"[\"a\"]"_s, u"[{\"t-1\":\"NaN\"}]"_s}) {
            const auto arguments = readScriptArguments(text, tag);
            QVERIFY2(arguments && !arguments->dictionary, qPrintable(text));
        }
        const QString deep =
            u"["_s + QString(u"{\"a\":"_s).repeated(3000) + u'1' + QString(3000, u'}') + u']';
        for (const QString &text : {QString(), u"{}"_s, u"[1,2]"_s, u"[{]"_s, deep})
            QVERIFY(!readScriptArguments(text, tag));
    }

    void writesRepliesAsAscii()
    {
        ScriptReply reply;
        reply.call = 3;
        reply.success = true;
        reply.hasData = true;
        reply.data = QVariantMap{{u"größe"_s, QVariantList{1, 2.5, true, QVariant()}},
                                 {u"nan"_s, std::nan("")},
                                 {u"names"_s, QStringList{u"\u2028\U0001F600"_s}},
                                 {u"small"_s, QByteArray("bytes")}};
        const QByteArray line = replyBody({reply}, "tag"_ba).first();
        QVERIFY(std::all_of(line.cbegin(), line.cend(), [](char c) { return (c & 0x80) == 0; }));
        const QJsonObject data =
            QJsonDocument::fromJson(line)[u"replies"_s][0][u"reply"_s][u"data"_s].toObject();
        QCOMPARE(data[u"größe"_s].toArray().toVariantList(),
                 (QVariantList{1, 2.5, true, QVariant::fromValue(nullptr)}));
        QVERIFY(data[u"nan"_s].isNull());
        QCOMPARE(data[u"names"_s][0].toString(), u"\u2028\U0001F600"_s);
        QCOMPARE(data[u"small"_s].toString(), u"bytes"_s);
    }

    void sharesLargeTexts()
    {
        const QByteArray large(100'000, 'x');
        const QByteArray other(70'000, 'y');
        ScriptReply reply;
        reply.success = true;
        reply.hasData = true;
        reply.data = QVariantList{large, QVariantMap{{u"data"_s, other}}};
        const QList<QByteArray> pieces = replyBody({reply}, "tag"_ba);
        QCOMPARE(pieces.size(), 3);
        QCOMPARE(static_cast<const void *>(pieces.at(1).constData()),
                 static_cast<const void *>(large.constData()));
        QVERIFY(pieces.first().size() < 300);

        PiecesDevice device(pieces);
        QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QCOMPARE(device.size(), pieces.join().size());
        QVERIFY(device.seek(pieces.first().size() + large.size() - 2));
        QCOMPARE(device.read(4), "xxyy"_ba);
        PiecesDevice stretch(pieces);
        stretch.setStretch(pieces.first().size() + large.size() - 2, 3);
        QVERIFY(stretch.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QCOMPARE(stretch.readAll(), "xxy"_ba);

        const QByteArray longest(1 << 20, 'z');
        reply.data = longest;
        QList<QByteArray> kept;
        QCOMPARE(replyBody({reply}, "tag"_ba, &kept).size(), 1);
        QCOMPARE(kept, QList<QByteArray>{longest});
    }

    void sendsNoMoreThanAPageCanHold()
    {
        // Shared memory that nobody reads: three replies that make two bodies, and one too long.
        const QByteArray half = QByteArray::fromRawData(m_zeros.data(), longestBody / 2 - 2000);
        const QByteArray tooLong = QByteArray::fromRawData(m_zeros.data(), longestBody + 1);
        QList<ScriptReply> replies(4);
        for (int i = 0; i < 4; ++i) {
            replies[i].call = i;
            replies[i].success = replies[i].hasData = true;
            replies[i].data = i == 1 ? tooLong : half;
        }
        const QList<ScriptReply> rest = cutToBody(replies, "tag"_ba);
        QCOMPARE(replies.size(), 3);
        QCOMPARE(replies.at(1).status, u"UNKNOWN"_s);
        QVERIFY(!replies.at(1).success && !replies.at(1).hasData);
        QVERIFY(bodySize(replyBody(replies, "tag"_ba)) <= longestBody);
        QCOMPARE(rest.size(), 1);
        QCOMPARE(rest.first().call, 3);
    }

    void carriesAReplyOfAnyLengthWhoseTextsFit_data()
    {
        QTest::addColumn<qint64>("length");
        QTest::addColumn<int>("count");
        QTest::newRow("the longest text, three times") << longestBody << 3;
        QTest::newRow("ten photos") << qint64(75'000'000) << 10;
        QTest::newRow("many that are too short to be kept one by one") << qint64(1'000'000) << 1000;
        QTest::newRow("many that belong into the line") << qint64(65'000) << 10'000;
    }

    void carriesAReplyOfAnyLengthWhoseTextsFit()
    {
        QFETCH(qint64, length);
        QFETCH(int, count);
        QList<ScriptReply> replies(2);
        replies[0].success = replies[0].hasData = true;
        replies[0].data = QVariantList(count, QByteArray::fromRawData(m_zeros.data(), length));
        QCOMPARE(cutToBody(replies, "tag"_ba).size(), 1);
        QVERIFY(replies.first().success);
        QList<QByteArray> kept;
        QVERIFY(bodySize(replyBody(replies, "tag"_ba, &kept)) <= longestBody);
    }

private:
    struct Zeros
    {
        Zeros()
            : memory(::mmap(nullptr, size_t(longestBody) + 1, PROT_READ,
                            MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))
        {
        }
        ~Zeros() { ::munmap(memory, size_t(longestBody) + 1); }
        const char *data() const { return static_cast<const char *>(memory); }
        void *memory;
    } m_zeros;
};

QTEST_GUILESS_MAIN(TestScriptValues)
#include "tst_script_values.moc"
