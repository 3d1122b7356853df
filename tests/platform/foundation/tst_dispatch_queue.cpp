#include "platform/foundation/dispatch_queue.h"

#include <QSemaphore>
#include <QtTest>
#include <atomic>
#include <thread>

using namespace zelkam;

class TestDispatchQueue : public QObject
{
    Q_OBJECT

private slots:
    void backgroundWorkRunsInOrderAndOneAtATime()
    {
        QSemaphore done;
        std::vector<int> order; // without a lock: that the queue is serial is what is tested
        std::atomic<int> running = 0;
        std::atomic<bool> overlapped = false;
        {
            DispatchQueue queue;
            for (int i = 0; i < 500; ++i) {
                queue.async([&, i] {
                    overlapped = overlapped || running.fetch_add(1) != 0;
                    order.push_back(i);
                    running.fetch_sub(1);
                    done.release();
                });
            }
        } // work that was queued outlives the handle
        QVERIFY(done.tryAcquire(500, 10000));
        QVERIFY(!overlapped);
        QVERIFY(std::is_sorted(order.begin(), order.end()));
    }

    void oneSlowQueueDoesNotHoldUpAnother()
    {
        QSemaphore gate;
        QSemaphore done;
        DispatchQueue slow;
        DispatchQueue quick;
        slow.async([&] { gate.acquire(); });
        quick.async([&] { done.release(); });
        QVERIFY(done.tryAcquire(1, 10000));
        slow.async([&] { done.release(); });
        gate.release();
        QVERIFY(done.tryAcquire(1, 10000));
    }

    void mainWorkRunsLaterOnTheMainThreadInOrder()
    {
        std::vector<int> order;
        std::thread other([&] {
            QVERIFY(!isMainThread());
            for (int i = 0; i < 100; ++i) {
                DispatchQueue::main().async([&order, i] {
                    QVERIFY(isMainThread());
                    order.push_back(i);
                });
            }
        });
        other.join();
        DispatchQueue::main().async([&] { order.push_back(100); });
        QVERIFY(order.empty());
        QTRY_COMPARE(order.size(), 101U);
        QVERIFY(std::is_sorted(order.begin(), order.end()));
    }
};

QTEST_GUILESS_MAIN(TestDispatchQueue)
#include "tst_dispatch_queue.moc"
