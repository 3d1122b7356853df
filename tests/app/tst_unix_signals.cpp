#include "app/unix_signals.h"

#include <QSignalSpy>
#include <QTest>
#include <csignal>

using namespace zelkam;

class TestUnixSignals : public QObject
{
    Q_OBJECT

private slots:
    void endTheProgramThroughItsEventLoop()
    {
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            const UnixSignals signals_;
            QSignalSpy quit(&signals_, &UnixSignals::quitRequested);
            std::raise(number);
            QTRY_COMPARE(quit.size(), 1);
        }
    }

    void leaveAloneWhatIsIgnored()
    {
        std::signal(SIGHUP, SIG_IGN); // as nohup does
        {
            const UnixSignals signals_;
            QSignalSpy quit(&signals_, &UnixSignals::quitRequested);
            std::raise(SIGHUP);
            QTest::qWait(20);
            QCOMPARE(quit.size(), 0);
        }
        QVERIFY(std::signal(SIGHUP, SIG_DFL) == SIG_IGN);
    }
};

QTEST_GUILESS_MAIN(TestUnixSignals)
#include "tst_unix_signals.moc"
