#pragma once
// A serial queue that runs nothing by itself: the thread that owns the loop (the
// host program's main thread, or a test) drains it. Work queued from any thread
// runs on the draining thread, one item at a time, in order.
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>

#include "Platform/dispatch/Executor.hpp"

namespace qrv::platform {

class MainQueue final : public Executor {
  public:
    MainQueue() = default;

    void async(Work work) override;

    // Runs the oldest queued item, if any; answers whether one ran.
    bool runOnce();
    // Runs queued items, waiting for new ones, until `done()` holds or `timeout`
    // has passed; answers `done()`. `done` is checked before each item.
    template <class Predicate>
    bool runUntil(Predicate done, std::chrono::steady_clock::duration timeout) {
        const auto deadline = std::chrono::steady_clock::now() + timeout;
        while (!done()) {
            if (!waitForWork(deadline)) return done();
            runOnce();
        }
        return true;
    }
    // Runs items until the queue is empty, including items queued meanwhile.
    std::size_t drain();
    std::size_t pending() const;
    // Nothing queued; meant for the draining thread, which runs nothing meanwhile.
    bool idle() const override { return pending() == 0; }

  private:
    // Waits until an item is queued or the deadline passes; answers whether one is.
    bool waitForWork(std::chrono::steady_clock::time_point deadline);

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Work> queue_;
};

// The process's main queue, kept to the end of the process.
std::shared_ptr<MainQueue> mainQueue();

}  // namespace qrv::platform
