#include "platform/foundation/base64.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace zelkam;

class TestBase64 : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithAPlainEncoder()
    {
        QRandomGenerator random(1);
        // Shorter and a little longer than any vector, then many vectors.
        for (int size = 0; size <= 60000; size += size < 300 ? 1 : 1237) {
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
};

QTEST_GUILESS_MAIN(TestBase64)
#include "tst_base64.moc"
