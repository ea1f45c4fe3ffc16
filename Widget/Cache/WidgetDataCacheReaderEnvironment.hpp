#pragma once
// What the cache reader, its strategies, the providers and the fetch analytics
// take from the world: the shared store, the calendar and clock that decide what
// "today" is, the two queues, and where the reader's lines go. Tests and the host
// replace any of them; defaults() is the phone's own.
#include "Platform/dispatch/DispatchQueues.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/Clock.hpp"

#include <functional>
#include <memory>
#include <string_view>

namespace qrv::widget {

struct WidgetDataCacheReaderEnvironment {
    // Null means the shared store (WidgetSettings::defaults()), taken at the moment
    // of use so that the host can choose its container first.
    std::shared_ptr<platform::UserDefaults> store;
    platform::Calendar calendar;
    std::shared_ptr<const platform::Clock> clock;
    platform::DispatchQueues queues;
    // Receives each line the reader prints, without its newline. Null means
    // standard output, one whole line per write.
    std::function<void(std::string_view)> printLine;

    // The shared store, the current calendar, the system clock, the process's
    // main and background queues, standard output.
    static WidgetDataCacheReaderEnvironment defaults();

    std::shared_ptr<platform::UserDefaults> resolvedStore() const;
    platform::Date now() const { return clock->now(); }
    void print(std::string_view line) const;
};

// The process's system clock as a shared pointer that owns nothing.
std::shared_ptr<const platform::Clock> systemClock();

}  // namespace qrv::widget
