#pragma once
// A queue that runs only when told to: tests queue work through it and then run
// it item by item, so what runs when is decided by the test, not by threads.
#include <cstddef>
#include <deque>
#include <mutex>

#include "Platform/dispatch/Executor.hpp"

namespace qrv::platform {

class ManualExecutor final : public Executor {
  public:
    ManualExecutor() = default;

    void async(Work work) override;

    // Runs the oldest queued item on the calling thread; answers whether one ran.
    bool runNext();
    // Runs items until none is left, including those queued meanwhile; answers how many ran.
    std::size_t drain();
    std::size_t pending() const;
    // Nothing queued: a manual executor runs only when told.
    bool idle() const override { return pending() == 0; }

  private:
    mutable std::mutex mutex_;
    std::deque<Work> queue_;
};

}  // namespace qrv::platform
