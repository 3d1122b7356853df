#include "platform/foundation/base64.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace zelkam;

class TestBase64 : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithAPlainEncoder_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("step");
        QTest::newRow("shorter and a little longer than any vector") << 0 << 300 << 1;
        QTest::newRow("many vectors") << 5000 << 60000 << 1237;
    }
    void agreesWithAPlainEncoder()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(int, step);
        QRandomGenerator random(1);
        for (int size = from; size <= to; size += step) {
            const int shift = random.bounded(64);
            // Exactly as long as needed: the address sanitizer sees a byte read or written beyond.
            const auto memory = std::make_unique<char[]>(size_t(shift + size));
            for (int i = 0; i < size; ++i)
                memory[size_t(shift + i)] = char(random.bounded(256));
            const char *bytes = memory.get() + shift;
            const auto length = qsizetype(base64Length(size));
            const int textShift = random.bounded(64);
            QByteArray text(textShift + length + 1, '#');
            base64Encode(bytes, size, text.data() + textShift);
            QCOMPARE(text.mid(textShift), QByteArray::fromRawData(bytes, size).toBase64() + '#');
            QVERIFY(text.startsWith(QByteArray(textShift, '#')));
        }
    }

    void givesEverySixBitsTheirLetter()
    {
        QByteArray bytes;
        for (int i = 0; i < 64 * 64; ++i) { // each value in each place of a group
            const unsigned group = unsigned(i / 64) << 18 | unsigned(i % 64) << 12 |
                                   unsigned(i / 64) << 6 | unsigned(i % 64);
            bytes += char(group >> 16);
            bytes += char(group >> 8);
            bytes += char(group);
        }
        QCOMPARE(base64Encoded(bytes), bytes.toBase64());
    }
};

QTEST_GUILESS_MAIN(TestBase64)
#include "tst_base64.moc"
