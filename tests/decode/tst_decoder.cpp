#include "platform/images/decoder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <array>
#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

using namespace zelkam;

namespace {

const QString endingProgram = QStringLiteral("end");

Decoded ask(const QByteArray &file, const DecodeCancel &cancel = {})
{
    DecodeWish wish;
    wish.task = DecodeWish::Task::text;
    return decode(wish, file, DecodeUrgency::waitedFor, cancel);
}

/// The decoder processes of this program or another, by their numbers.
QStringList decoders(qint64 application = QCoreApplication::applicationPid())
{
    QStringList found;
    for (const QString &process : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        const QByteArrayList fields = status.readAll().split(' ');
        if (fields.value(1).startsWith("(misbehaving") && fields.value(2) != "Z" &&
            fields.value(3).toLongLong() == application)
            found.append(process);
    }
    return found;
}

/// An application that asks for what never ends, and dies meanwhile.
int endWhileADecoderSpins(int argc, char **argv)
{
    const QCoreApplication program(argc, argv);
    setDecoderProgram(qEnvironmentVariable("ZELKAM_MISBEHAVING_DECODE"));
    std::thread([] { ask("spins"); }).detach();
    while (decoders().isEmpty())
        QThread::msleep(10);
    QThread::msleep(200);
    std::printf("%s\n", qPrintable(decoders().join(u' ')));
    std::fflush(stdout);
    ::raise(SIGKILL);
    return 0;
}

} // namespace

class TestDecoder : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        setDecoderProgram(qEnvironmentVariable("ZELKAM_MISBEHAVING_DECODE"));
        QCOMPARE(ask("behaves").bytes, QByteArray("content"));
    }

    void nothingComesOfMisbehaving_data()
    {
        QTest::addColumn<QByteArray>("how");
        for (const char *how :
             {"reads a file", "writes a file", "opens a socket", "forks", "runs a program",
              "makes a program of memory", "takes 8 GiB", "spins", "crashes", "ends",
              "replies without end", "hands over more than it has", "hands over too much",
              "hands over what may change", "answers the next"})
            QTest::newRow(how) << QByteArray(how);
    }
    void nothingComesOfMisbehaving()
    {
        QFETCH(const QByteArray, how);
        QVERIFY(!ask(how).isDone());
        QVERIFY(!QFile::exists(QStringLiteral("/tmp/zelkam-was-here")));
        QCOMPARE_LT(QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::System).size(), 100);
        QCOMPARE(ask("behaves").bytes, QByteArray("content")); // the next one works
    }

    void whatIsNoLongerWantedEndsAtOnce()
    {
        // Three on two processes: one of them waits.
        const std::array<DecodeCancel, 3> cancels;
        std::atomic_int done = 0;
        std::vector<std::thread> jobs;
        for (const DecodeCancel &cancel : cancels)
            jobs.emplace_back([&done, &cancel] { done += ask("spins", cancel).isDone(); });
        QTest::qWait(200);
        QCOMPARE(decoders().size(), 2);
        QElapsedTimer time;
        time.start();
        for (const DecodeCancel &cancel : cancels)
            cancel.cancel();
        for (std::thread &job : jobs)
            job.join();
        QCOMPARE(done, 0);
        QCOMPARE_LT(time.elapsed(), 1000); // of two seconds for each
    }

    void aProcessThatEndsInBetweenCostsNoJob()
    {
        QTRY_COMPARE(decoders().size(), 2); // one may be on its way
        const QStringList idle = decoders();
        for (const QString &process : idle)
            ::kill(process.toInt(), SIGKILL);
        QTRY_VERIFY(decoders().isEmpty());
        for (int i = 0; i < 3; ++i)
            QCOMPARE(ask("behaves").bytes, QByteArray("content"));
    }

    void processesGoWithTheApplication()
    {
        QProcess application;
        application.start(QCoreApplication::applicationFilePath(), {endingProgram});
        QVERIFY(application.waitForFinished());
        QCOMPARE(application.exitStatus(), QProcess::CrashExit);
        const QStringList left =
            QString::fromLatin1(application.readAllStandardOutput()).simplified().split(u' ');
        QVERIFY(!left.first().isEmpty());
        for (const QString &process : left)
            QTRY_VERIFY(
                !QFile::exists(QStringLiteral("/proc/%1/exe").arg(process)) ||
                QFileInfo(QStringLiteral("/proc/%1/exe").arg(process)).symLinkTarget().isEmpty());
    }
};

int main(int argc, char **argv)
{
    if (argc > 1 && QString::fromLocal8Bit(argv[1]) == endingProgram)
        return endWhileADecoderSpins(argc, argv);
    QCoreApplication application(argc, argv);
    TestDecoder test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_decoder.moc"
