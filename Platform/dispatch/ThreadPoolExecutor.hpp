#pragma once
// A concurrent queue: a few threads taking work in the order it was queued.
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/dispatch/Executor.hpp"

namespace qrv::platform {

class ThreadPoolExecutor final : public Executor {
  public:
    explicit ThreadPoolExecutor(unsigned threadCount);
    // Runs what is still queued, then joins the threads.
    ~ThreadPoolExecutor() override;

    void async(Work work) override;

    unsigned threadCount() const { return static_cast<unsigned>(threads_.size()); }

  private:
    void run();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Work> queue_;
    bool stopping_ = false;
    std::vector<std::thread> threads_;
};

// The process's background global queue: 2 to 4 threads, created on first use and
// kept to the end of the process (work still running at exit is not waited for).
std::shared_ptr<Executor> globalBackgroundQueue();

}  // namespace qrv::platform
