#include "platform/foundation/dispatch_queue.h"

#include <QThread>
#include <QTimer>
#include <QtTest>
#include <atomic>
#include <chrono>
#include <semaphore>
#include <thread>

using namespace zelkam;

class TestDispatchQueue : public QObject
{
    Q_OBJECT

private slots:
    void backgroundWorkRunsInOrderAndOneAtATime()
    {
        std::binary_semaphore done(0);
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
                    if (i == 499)
                        done.release();
                });
            }
        } // work that was queued outlives the handle
        QVERIFY(done.try_acquire_for(std::chrono::seconds(10)));
        QVERIFY(!overlapped);
        QVERIFY(std::is_sorted(order.begin(), order.end()));
    }

    void oneSlowQueueDoesNotHoldUpAnother()
    {
        // Not Qt's semaphore: the thread sanitizer cannot see it.
        std::binary_semaphore gate(0);
        std::binary_semaphore done(0);
        DispatchQueue slow;
        DispatchQueue quick;
        slow.async([&] { gate.acquire(); });
        quick.async([&] { done.release(); });
        QVERIFY(done.try_acquire_for(std::chrono::seconds(10)));
        slow.async([&] { done.release(); });
        gate.release();
        QVERIFY(done.try_acquire_for(std::chrono::seconds(10)));
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

    void mainWorkLeavesTurnsToOthers()
    {
        std::vector<int> order;
        int before = 0;
        QTimer::singleShot(5, this, [&] { before = int(order.size()); });
        for (int i = 0; i < 20; ++i) {
            DispatchQueue::main().async([&order, i] {
                QThread::msleep(10);
                order.push_back(i);
            });
        }
        QTRY_COMPARE(order.size(), 20U);
        QVERIFY(std::is_sorted(order.begin(), order.end()));
        QVERIFY2(before > 0 && before < 10, qPrintable(QString::number(before)));
    }
};

QTEST_GUILESS_MAIN(TestDispatchQueue)
#include "tst_dispatch_queue.moc"
