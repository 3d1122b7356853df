#include "platform/foundation/background_work.h"

#include <QCoreApplication>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace zelkam {

namespace {

struct Running
{
    std::mutex mutex;
    std::condition_variable ended;
    int count = 0;
};

Running &running()
{
    // Never destroyed: a thread may outlive the program's statics.
    static Running &instance = *new Running;
    return instance;
}

void waitForTheEnd()
{
    Running &all = running();
    std::unique_lock lock(all.mutex);
    all.ended.wait_for(lock, std::chrono::seconds(2), [&all] { return all.count == 0; });
}

} // namespace

void runInBackground(std::function<void()> work)
{
    Running &all = running();
    {
        const std::lock_guard lock(all.mutex);
        static const bool registered = [] {
            qAddPostRoutine(waitForTheEnd);
            return true;
        }();
        Q_UNUSED(registered)
        ++all.count;
    }
    std::thread([work = std::move(work), &all]() mutable {
        work();
        work = nullptr; // what it holds goes before the count does
        const std::lock_guard lock(all.mutex);
        --all.count;
        all.ended.notify_all();
    }).detach();
}

} // namespace zelkam
