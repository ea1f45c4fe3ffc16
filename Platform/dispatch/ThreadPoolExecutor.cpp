#include "Platform/dispatch/ThreadPoolExecutor.hpp"

#include <algorithm>

namespace qrv::platform {

ThreadPoolExecutor::ThreadPoolExecutor(unsigned threadCount) {
    threadCount = std::max(1u, threadCount);
    threads_.reserve(threadCount);
    for (unsigned i = 0; i < threadCount; ++i) threads_.emplace_back([state = state_] { run(state); });
}

ThreadPoolExecutor::~ThreadPoolExecutor() {
    {
        std::lock_guard lock(state_->mutex);
        state_->stopping = true;
    }
    state_->wake.notify_all();
    for (auto& thread : threads_) {
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();  // released by its own work: it cannot join itself
        else
            thread.join();
    }
}

void ThreadPoolExecutor::async(Work work) {
    // Nothing of `this` is touched once the work is queued: the work may release
    // the last owner of the pool before this call returns.
    const auto state = state_;
    {
        std::lock_guard lock(state->mutex);
        state->queue.push_back(std::move(work));
    }
    state->wake.notify_one();
}

void ThreadPoolExecutor::run(const std::shared_ptr<State>& state) {
    for (;;) {
        Work work;
        {
            std::unique_lock lock(state->mutex);
            state->wake.wait(lock, [&] { return state->stopping || !state->queue.empty(); });
            if (state->queue.empty()) return;  // stopping, and nothing left to run
            work = std::move(state->queue.front());
            state->queue.pop_front();
            ++state->running;
        }
        work();
        // Released before the count drops, so that whatever the work queued
        // elsewhere is there by the time the pool reads as idle.
        work = nullptr;
        std::lock_guard lock(state->mutex);
        --state->running;
    }
}

bool ThreadPoolExecutor::idle() const {
    std::lock_guard lock(state_->mutex);
    return state_->queue.empty() && state_->running == 0;
}

std::shared_ptr<Executor> globalBackgroundQueue() {
    // Never destroyed: work submitted just before exit may still touch other
    // process-wide objects, and joining it from a static destructor would race them.
    static auto* const queue = new std::shared_ptr<Executor>(
        std::make_shared<ThreadPoolExecutor>(std::clamp(std::thread::hardware_concurrency(), 2u, 4u)));
    return *queue;
}

}  // namespace qrv::platform
