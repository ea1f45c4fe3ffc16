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
    // Lets the threads run what is still queued, then joins them. Should the last
    // owner be work running on the pool itself, that thread finishes on its own.
    ~ThreadPoolExecutor() override;

    void async(Work work) override;
    bool idle() const override;

    unsigned threadCount() const { return static_cast<unsigned>(threads_.size()); }

  private:
    // Shared with the threads, so that a thread left to finish alone keeps it.
    struct State {
        std::mutex mutex;
        std::condition_variable wake;
        std::deque<Work> queue;
        std::size_t running = 0;  // items taken and not yet finished
        bool stopping = false;
    };
    static void run(const std::shared_ptr<State>& state);

    std::shared_ptr<State> state_ = std::make_shared<State>();
    std::vector<std::thread> threads_;
};

// The process's background global queue: 2 to 4 threads, created on first use and
// kept to the end of the process (work still running at exit is not waited for).
std::shared_ptr<Executor> globalBackgroundQueue();

}  // namespace qrv::platform
