#include "Platform/dispatch/ManualExecutor.hpp"

namespace qrv::platform {

void ManualExecutor::async(Work work) {
    std::lock_guard lock(mutex_);
    queue_.push_back(std::move(work));
}

bool ManualExecutor::runNext() {
    Work work;
    {
        std::lock_guard lock(mutex_);
        if (queue_.empty()) return false;
        work = std::move(queue_.front());
        queue_.pop_front();
    }
    work();  // outside the lock: the item may queue more work
    return true;
}

std::size_t ManualExecutor::drain() {
    std::size_t ran = 0;
    while (runNext()) ++ran;
    return ran;
}

std::size_t ManualExecutor::pending() const {
    std::lock_guard lock(mutex_);
    return queue_.size();
}

}  // namespace qrv::platform
