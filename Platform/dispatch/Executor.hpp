#pragma once
// Somewhere to run work later: the phone's dispatch queues, played by a thread
// pool (the background global queue), a serial queue drained by whoever runs the
// loop (the main queue), and a queue that tests drain step by step.
#include <functional>

namespace qrv::platform {

class Executor {
  public:
    using Work = std::function<void()>;

    virtual ~Executor() = default;
    // Queues `work` and returns at once; the work runs later, never inside this call.
    virtual void async(Work work) = 0;
    // Whether nothing is queued and nothing is running: then none of this
    // executor's work can start anything more. An executor that cannot tell
    // answers false.
    virtual bool idle() const { return false; }

  protected:
    Executor() = default;
    Executor(const Executor&) = delete;
    Executor& operator=(const Executor&) = delete;
};

}  // namespace qrv::platform
