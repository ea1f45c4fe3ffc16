#include "Platform/dispatch/MainQueue.hpp"

namespace qrv::platform {

void MainQueue::async(Work work) {
    // Notified under the lock: once the loop has taken this item it may destroy
    // the queue, and this thread must not touch it after that.
    std::lock_guard lock(mutex_);
    queue_.push_back(std::move(work));
    wake_.notify_all();
}

bool MainQueue::runOnce() {
    Work work;
    {
        std::lock_guard lock(mutex_);
        if (queue_.empty()) return false;
        work = std::move(queue_.front());
        queue_.pop_front();
    }
    work();
    return true;
}

std::size_t MainQueue::drain() {
    std::size_t ran = 0;
    while (runOnce()) ++ran;
    return ran;
}

std::size_t MainQueue::pending() const {
    std::lock_guard lock(mutex_);
    return queue_.size();
}

bool MainQueue::waitForWork(std::chrono::steady_clock::time_point deadline) {
    std::unique_lock lock(mutex_);
    return wake_.wait_until(lock, deadline, [this] { return !queue_.empty(); });
}

std::shared_ptr<MainQueue> mainQueue() {
    static auto* const queue = new std::shared_ptr<MainQueue>(std::make_shared<MainQueue>());
    return *queue;
}

}  // namespace qrv::platform
