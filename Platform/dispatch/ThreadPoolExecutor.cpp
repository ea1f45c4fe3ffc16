#include "Platform/dispatch/ThreadPoolExecutor.hpp"

#include <algorithm>

namespace qrv::platform {

ThreadPoolExecutor::ThreadPoolExecutor(unsigned threadCount) {
    threadCount = std::max(1u, threadCount);
    threads_.reserve(threadCount);
    for (unsigned i = 0; i < threadCount; ++i) threads_.emplace_back([this] { run(); });
}

ThreadPoolExecutor::~ThreadPoolExecutor() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    for (auto& thread : threads_) thread.join();
}

void ThreadPoolExecutor::async(Work work) {
    {
        std::lock_guard lock(mutex_);
        queue_.push_back(std::move(work));
    }
    wake_.notify_one();
}

void ThreadPoolExecutor::run() {
    for (;;) {
        Work work;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
            if (queue_.empty()) return;  // stopping, and nothing left to run
            work = std::move(queue_.front());
            queue_.pop_front();
        }
        work();
    }
}

std::shared_ptr<Executor> globalBackgroundQueue() {
    // Never destroyed: work submitted just before exit may still touch other
    // process-wide objects, and joining it from a static destructor would race them.
    static auto* const queue = new std::shared_ptr<Executor>(
        std::make_shared<ThreadPoolExecutor>(std::clamp(std::thread::hardware_concurrency(), 2u, 4u)));
    return *queue;
}

}  // namespace qrv::platform
