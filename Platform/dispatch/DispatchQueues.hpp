#pragma once
// The two queues the widget code works with, injected together so that tests can
// replace both by manual executors.
#include <memory>

#include "Platform/dispatch/Executor.hpp"
#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/dispatch/ThreadPoolExecutor.hpp"

namespace qrv::platform {

struct DispatchQueues {
    std::shared_ptr<Executor> main;
    std::shared_ptr<Executor> background;

    // The process's main queue and background global queue.
    static DispatchQueues defaults() { return DispatchQueues{mainQueue(), globalBackgroundQueue()}; }
};

}  // namespace qrv::platform
