#pragma once
// What the cache reader, its strategies, the providers and the fetch analytics
// take from the world: the shared store, the calendar and clock that decide what
// "today" is, the two queues, and where the reader's lines go. Tests and the host
// replace any of them; defaults() is the phone's own.
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

#include "Platform/dispatch/DispatchQueues.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/Clock.hpp"

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
bool isSystemClock(const std::shared_ptr<const platform::Clock>& clock);

// Where a provider's placeholder comes from: the record's process-wide sample
// under the system clock; under any other clock (a test's, the host's --now) a
// sample made once, on first use, dated by that clock.
template <class Entry>
std::function<Entry()> samplePlaceholder(std::shared_ptr<const platform::Clock> clock) {
    if (!clock || isSystemClock(clock)) return [] { return Entry::sample(); };
    struct Made {
        std::once_flag once;
        std::optional<Entry> sample;
    };
    return [clock = std::move(clock), made = std::make_shared<Made>()] {
        std::call_once(made->once, [&] { made->sample = Entry::makeSample(clock->now()); });
        return *made->sample;
    };
}

}  // namespace qrv::widget
